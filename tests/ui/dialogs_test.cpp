#include "ui/dialogs.h"

#include <gtest/gtest.h>

#include "fakes/scripted_toolkit.h"
#include "fakes/test_host.h"

namespace krnqb::ui {
namespace {

using fakes::ScriptedToolkit;
using fakes::TestHost;
using fakes::TextOf;

struct DialogsTest : testing::Test {
  DialogsTest() : component(World()) {}

  OutsideWorld World() const {
    OutsideWorld world = host.World();
    world.userInterface = std::make_shared<Dialogs>(toolkit);
    return world;
  }

  // Without a session this is the stored path, which the next session opens.
  std::string StoredCompany() {
    host.journal->Fail("create processor", Error(error_number::cannotCreateObject));
    std::string path = component.QBCompany();
    host.journal->Heal();
    return path;
  }

  std::shared_ptr<ScriptedToolkit> toolkit = std::make_shared<ScriptedToolkit>();
  TestHost host;
  QBDataExchange component;
};

TEST_F(DialogsTest, ShowTheImportPageForDialogTwo) {
  EXPECT_TRUE(component.ShowDialog(dlg_QBtoKRN).IsEmpty());
  ASSERT_EQ(toolkit->shown.size(), 1U);
  EXPECT_EQ(toolkit->shown[0].caption, "Import From Quickbooks");
  EXPECT_TRUE(toolkit->shown[0].At("OptionsQBtoKRN1").visible);
}

TEST_F(DialogsTest, ShowTheExportPageForDialogOne) {
  EXPECT_TRUE(component.ShowDialog(dlg_KRNtoQB).IsEmpty());
  ASSERT_EQ(toolkit->shown.size(), 1U);
  EXPECT_EQ(toolkit->shown[0].caption, "Export Into Quickbooks");
  EXPECT_TRUE(toolkit->shown[0].At("OptionsKRNtoQB1").visible);
}

TEST_F(DialogsTest, DoNothingForAnyOtherNumber) {
  for (const int number : {0, 5, -1, 32000}) {
    EXPECT_TRUE(component.ShowDialog(static_cast<QBKRN_Dialogs>(number)).IsEmpty()) << number;
  }
  EXPECT_TRUE(toolkit->shown.empty());
  EXPECT_TRUE(toolkit->asked.empty());
  EXPECT_TRUE(host.observer->notices.empty());
}

TEST_F(DialogsTest, StoreAndReturnTheChosenCompanyFile) {
  component.QBCompany("C:\\Companies\\Before.qbw");
  toolkit->chosenPath = "C:\\Companies\\Nursery.qbw";
  EXPECT_EQ(TextOf(component.ShowDialog(dlg_SelectQBcompany)), "C:\\Companies\\Nursery.qbw");
  EXPECT_EQ(StoredCompany(), "C:\\Companies\\Nursery.qbw");
  ASSERT_EQ(toolkit->asked.size(), 1U);
  EXPECT_EQ(toolkit->asked[0].title, "Select QuickBooks Company");
}

TEST_F(DialogsTest, ReturnTheChosenPlanAndKeepTheCompany) {
  component.QBCompany("C:\\Companies\\Before.qbw");
  toolkit->chosenPath = "C:\\Plans\\Nursery.kpf";
  EXPECT_EQ(TextOf(component.ShowDialog(dlg_SelectKRNplan)), "C:\\Plans\\Nursery.kpf");
  EXPECT_EQ(StoredCompany(), "C:\\Companies\\Before.qbw");
  ASSERT_EQ(toolkit->asked.size(), 1U);
  EXPECT_EQ(toolkit->asked[0].title, "Select Business Plan");
}

TEST_F(DialogsTest, ReturnEmptyAndKeepTheCompanyWhenCancelled) {
  component.QBCompany("C:\\Companies\\Before.qbw");
  for (const QBKRN_Dialogs dialog : {dlg_SelectQBcompany, dlg_SelectKRNplan}) {
    EXPECT_TRUE(component.ShowDialog(dialog).IsEmpty());
    EXPECT_TRUE(host.observer->Reported(NoticeKind::OperationEnded, 32755));
    EXPECT_EQ(StoredCompany(), "C:\\Companies\\Before.qbw");
  }
}

TEST_F(DialogsTest, ShowTheComponentsMessage) {
  component.SubmitCustomRequest("<QBXML/>");
  EXPECT_EQ(toolkit->messages, std::vector<std::string>{"future implementation"});
}

TEST_F(DialogsTest, CanBeShownAgainAfterTheToolkitFails) {
  toolkit->person = [](Dialog& /*dialog*/) { throw Error(error_number::outOfMemory); };
  EXPECT_TRUE(component.ShowDialog(dlg_QBtoKRN).IsEmpty());
  EXPECT_TRUE(host.observer->Reported(NoticeKind::OperationEnded, 7));
  toolkit->person = [](Dialog& dialog) { dialog.Dismiss(); };
  component.ShowDialog(dlg_QBtoKRN);
  EXPECT_EQ(toolkit->shown.size(), 2U);
  EXPECT_FALSE(host.observer->Reported(NoticeKind::OperationEnded, 400));
}

TEST(Dialogs, ShowTheAboutBox) {
  const auto toolkit = std::make_shared<ScriptedToolkit>();
  Dialogs(toolkit).ShowAbout();
  ASSERT_EQ(toolkit->shown.size(), 1U);
  EXPECT_EQ(toolkit->shown[0].caption, "About KRN6_QB2002");
  EXPECT_FALSE(toolkit->shown[0].Has("cmdSysInfo"));
}

}  // namespace
}  // namespace krnqb::ui
