#include "ui/about_dialog.h"

#include <gtest/gtest.h>

#include "build_paths.h"
#include "fakes/memory_files.h"
#include "fakes/memory_registry.h"
#include "fakes/scripted_toolkit.h"

namespace krnqb::ui {
namespace {

class NoPrograms : public ProgramStarter {
 public:
  void Start(const std::string& path) override { started = path; }
  std::string started;
};

struct AboutDialogTest : testing::Test {
  SystemInformation System() const { return {registry, std::make_shared<fakes::MemoryFiles>(), programs}; }

  fakes::ScriptedToolkit toolkit;
  std::shared_ptr<fakes::MemoryRegistry> registry = std::make_shared<fakes::MemoryRegistry>();
  std::shared_ptr<NoPrograms> programs = std::make_shared<NoPrograms>();
};

TEST_F(AboutDialogTest, HasPlaceholderTextsAsDesigned) {
  const Form form = DesignedAboutForm();
  EXPECT_EQ(form.name, "frmAbout");
  EXPECT_EQ(form.caption, "About MyApp");
  EXPECT_EQ(form.At("lblTitle").text, "KRN5_QB2002 Data Exchange component");
  EXPECT_EQ(form.At("lblVersion").text, "Version 1.0");
  EXPECT_EQ(form.At("cmdSysInfo").text, "&System Info...");
}

TEST_F(AboutDialogTest, ShowsTitleAndVersionOfTheApplication) {
  const AboutDialog about(toolkit, std::nullopt);
  const Form& form = about.Shown();
  EXPECT_EQ(form.caption, "About KRN6_QB2002");
  EXPECT_EQ(form.At("lblTitle").text, "KRN6_QB2002");
  EXPECT_EQ(form.At("lblTitle").accessibleName, "KRN6_QB2002");
  EXPECT_EQ(form.At("lblVersion").text, "Version " + tests::ExpectedVersion());
  EXPECT_EQ(form.At("lblVersion").accessibleName, "Version " + tests::ExpectedVersion());
}

TEST_F(AboutDialogTest, KeepsTheOtherTexts) {
  const AboutDialog about(toolkit, std::nullopt);
  EXPECT_EQ(about.Shown().At("lblDescription").text,
            "This component performs data exchabge between Inutuit's QuickBooks 2002 and Korrin Software's "
            "Korrin Planner Pro 2002.");
  EXPECT_EQ(about.Shown().At("lblDisclaimer").text, "");
  EXPECT_EQ(about.Shown().At("picIcon").kind, ControlKind::Picture);
}

TEST_F(AboutDialogTest, OmitsTheToolsButtonWithoutASystem) {
  EXPECT_FALSE(AboutDialog(toolkit, std::nullopt).Shown().Has("cmdSysInfo"));
  EXPECT_TRUE(AboutDialog(toolkit, System()).Shown().Has("cmdSysInfo"));
}

TEST_F(AboutDialogTest, IsClosedByItsButtonAndByEscape) {
  AboutDialog pressed(toolkit, System());
  pressed.Press("cmdOK");
  EXPECT_FALSE(pressed.IsOpen());
  AboutDialog dismissed(toolkit, System());
  dismissed.Dismiss();
  EXPECT_FALSE(dismissed.IsOpen());
}

TEST_F(AboutDialogTest, StartsTheToolAndStaysOpen) {
  registry->values[{"SOFTWARE\\Microsoft\\Shared Tools\\MSINFO", "PATH"}] = "C:\\Tools\\info.exe";
  AboutDialog about(toolkit, System());
  about.Press("cmdSysInfo");
  EXPECT_TRUE(about.IsOpen());
  EXPECT_EQ(programs->started, "C:\\Tools\\info.exe");
  EXPECT_TRUE(toolkit.messages.empty());
}

TEST_F(AboutDialogTest, ReportsAMissingToolAndStaysOpen) {
  AboutDialog about(toolkit, System());
  about.Press("cmdSysInfo");
  EXPECT_TRUE(about.IsOpen());
  EXPECT_EQ(toolkit.messages, std::vector<std::string>{"System Information Is Unavailable At This Time"});
}

}  // namespace
}  // namespace krnqb::ui
