#include <gtest/gtest.h>

#include "cli/console/failure.h"
#include "ui/about_dialog.h"
#include "ui/qt/module_toolkit.h"
#include "ui/qt/person.h"

// What passes between the program and the module that it has loaded.
namespace krnqb::ui::qt {
namespace {

using tests::Click;
using tests::Find;
using tests::ModuleToolkit;
using tests::Person;

// A window of the program's own whose button fails.
class FailingDialog final : public Dialog {
 public:
  explicit FailingDialog(std::function<void()> failure) : failure_(std::move(failure)) {
    form = DesignedAboutForm();
  }

 protected:
  void Pressed(std::string_view /*button*/) override { failure_(); }

 private:
  std::function<void()> failure_;
};

// Presses the button of a dialog that fails.
void ShowFailing(const std::function<void()>& failure) {
  Person person;
  person.At("frmAbout", [](QWidget& window) { Click(Find(window, "cmdOK")); });
  FailingDialog dialog(failure);
  ModuleToolkit()->ShowModal(dialog);
}

TEST(ModuleBoundary, ErrorsOfTheProgramPassThroughTheWindowsUnchanged) {
  try {
    ShowFailing([] { throw Error(error_number::typeMismatch, "no such row"); });
    ADD_FAILURE() << "nothing was thrown";
  } catch (const Error& error) {
    EXPECT_EQ(error.Number(), error_number::typeMismatch);
    EXPECT_EQ(error.Description(), "no such row");
  }
}

TEST(ModuleBoundary, ErrorsKeepTheirDerivedType) {
  EXPECT_THROW(ShowFailing([] { throw cli::WrongUsage("no plan", "give one"); }), cli::Failure);
}

}  // namespace
}  // namespace krnqb::ui::qt
