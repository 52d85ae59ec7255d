#include <gtest/gtest.h>

#include <QLineEdit>

#include "ui/qt/module_toolkit.h"
#include "ui/qt/person.h"
#include "ui/qt/text.h"

namespace krnqb::ui::qt {
namespace {

using cli::tests::ProgramRun;
using cli::tests::Workplace;
using tests::Find;
using tests::Person;
using tests::Press;

ProgramRun Show(const std::string& dialog) {
  return tests::RunWithModule({"dialog", dialog});
}

struct DialogCommand : testing::Test {
  ~DialogCommand() override {
    EXPECT_TRUE(person.Done());
    EXPECT_EQ(person.Trouble(), "");
  }
  Person person;
};

TEST_F(DialogCommand, PrintsTheChosenPath) {
  const Workplace place;
  const std::string path = place / "ald.kpf";
  person.At("CommonDialog1", [&](QWidget& window) {
    auto& name = Find<QLineEdit>(window, "fileNameEdit");
    name.setText(ToQt(path));
    Press(name, Qt::Key_Return);
  });
  const ProgramRun run = Show("plan");
  EXPECT_EQ(run.code, 0);
  EXPECT_EQ(run.out, path + "\n");
}

TEST_F(DialogCommand, PrintsNothingAndExitsWithOneWhenCancelled) {
  for (const char* dialog : {"company", "plan"}) {
    person.At("CommonDialog1", [](QWidget& window) { Press(window, Qt::Key_Escape); });
    const ProgramRun run = Show(dialog);
    EXPECT_EQ(run.code, 1) << dialog;
    EXPECT_EQ(run.out + run.err, "") << dialog;
  }
}

TEST_F(DialogCommand, ExitsWithZeroAfterAWindowWithoutAQuestion) {
  person.At("frmAbout", [](QWidget& window) { Press(window, Qt::Key_Return); });
  EXPECT_EQ(Show("about").code, 0);
  person.At("frmOptions", [](QWidget& window) { Press(window, Qt::Key_Escape); });
  EXPECT_EQ(Show("export").code, 0);
}

}  // namespace
}  // namespace krnqb::ui::qt
