#include <gtest/gtest.h>

#include <QLabel>
#include <QMessageBox>
#include <QPushButton>

#include "ui/dialogs.h"
#include "ui/qt/person.h"
#include "ui/qt/text.h"
#include "ui/qt/toolkit.h"

namespace krnqb::ui::qt {
namespace {

using tests::Click;
using tests::Find;
using tests::Person;
using tests::Press;

struct AboutWindow : testing::Test {
  ~AboutWindow() override {
    EXPECT_TRUE(person.Done());
    EXPECT_EQ(person.Trouble(), "");
  }
  Person person;
};

TEST_F(AboutWindow, ShowsItsTextsAndAnIcon) {
  person.At("frmAbout", [](QWidget& window) {
    EXPECT_EQ(FromQt(window.windowTitle()), "About KRN6_QB2002");
    EXPECT_EQ(FromQt(Find<QLabel>(window, "lblTitle").text()), "KRN6_QB2002");
    EXPECT_EQ(FromQt(Find<QLabel>(window, "lblVersion").text()).rfind("Version ", 0), 0U);
    auto& description = Find<QLabel>(window, "lblDescription");
    EXPECT_TRUE(description.isVisible());
    EXPECT_GE(description.height(), description.heightForWidth(description.width()));
    EXPECT_TRUE(Find(window, "picIcon").isVisible());
    EXPECT_EQ(window.findChild<QWidget*>("cmdSysInfo"), nullptr);
    Click(Find(window, "cmdOK"));
  });
  Dialogs(QtToolkit()).ShowAbout();
}

TEST_F(AboutWindow, IsClosedByEscapeAndEnter) {
  for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Return}) {
    person.At("frmAbout", [key](QWidget& window) { Press(window, key); });
    Dialogs(QtToolkit()).ShowAbout();
  }
}

TEST_F(AboutWindow, RethrowsFailures) {
  struct Failing : Dialog {
    Failing() {
      form.name = "failing";
      form.controls.push_back(MakeControl(ControlKind::Button, {"cmdFail", 1}, "&Fail"));
    }
    void Pressed(std::string_view /*button*/) override { throw Error(error_number::overflow); }
  } dialog;
  person.At("failing", [](QWidget& window) { Click(Find(window, "cmdFail")); });
  try {
    QtToolkit()->ShowModal(dialog);
    FAIL() << "nothing was thrown";
  } catch (const Error& error) {
    EXPECT_EQ(error.Number(), 6);
  }
}

TEST_F(AboutWindow, HasAMessageBoxBesideIt) {
  person.At("", [](QWidget& window) {
    auto& box = dynamic_cast<QMessageBox&>(window);
    EXPECT_EQ(FromQt(box.text()), "<b>future</b> implementation");
    EXPECT_EQ(box.textFormat(), Qt::PlainText);
    EXPECT_EQ(box.buttons().size(), 1);
    Click(*box.button(QMessageBox::Ok));
  });
  Dialogs(QtToolkit()).ShowMessage("<b>future</b> implementation");
}

}  // namespace
}  // namespace krnqb::ui::qt
