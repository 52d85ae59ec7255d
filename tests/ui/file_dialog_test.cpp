#include "ui/file_dialog.h"

#include <gtest/gtest.h>

namespace krnqb::ui {
namespace {

TEST(FileDialog, AsksForACompany) {
  const auto settings = SettingsOf(dlg_SelectQBcompany);
  ASSERT_TRUE(settings);
  EXPECT_EQ(settings->title, "Select QuickBooks Company");
  EXPECT_EQ(settings->defaultExtension, "qbw");
  EXPECT_EQ(settings->initialFileName, "*.qbw");
  EXPECT_EQ(settings->filterIndex, 1);
  ASSERT_EQ(settings->filters.size(), 1U);
  EXPECT_EQ(settings->filters[0].description, "QuickBooks Company (*.qbw)");
  EXPECT_EQ(settings->filters[0].pattern, "*.qbw");
}

TEST(FileDialog, AsksForAPlan) {
  const auto settings = SettingsOf(dlg_SelectKRNplan);
  ASSERT_TRUE(settings);
  EXPECT_EQ(settings->title, "Select Business Plan");
  EXPECT_EQ(settings->defaultExtension, "kpf");
  EXPECT_EQ(settings->initialFileName, "*.kpf");
  EXPECT_EQ(settings->filterIndex, 1);
  ASSERT_EQ(settings->filters.size(), 1U);
  EXPECT_EQ(settings->filters[0].description, "Business Plan (*.kpf)");
  EXPECT_EQ(settings->filters[0].pattern, "*.kpf");
}

TEST(FileDialog, HasNoSettingsForOtherDialogs) {
  EXPECT_FALSE(SettingsOf(dlg_KRNtoQB));
  EXPECT_FALSE(SettingsOf(dlg_QBtoKRN));
  EXPECT_FALSE(SettingsOf(static_cast<QBKRN_Dialogs>(0)));
}

TEST(FileFilters, ArePairsOfDescriptionAndPattern) {
  const auto filters = ReadFilters("Plans|*.kpf|All files|*.*");
  ASSERT_EQ(filters.size(), 2U);
  EXPECT_EQ(filters[0].description, "Plans");
  EXPECT_EQ(filters[0].pattern, "*.kpf");
  EXPECT_EQ(filters[1].description, "All files");
  EXPECT_EQ(filters[1].pattern, "*.*");
}

TEST(FileFilters, NeedAPattern) {
  EXPECT_TRUE(ReadFilters("").empty());
  EXPECT_TRUE(ReadFilters("Plans").empty());
  EXPECT_EQ(ReadFilters("Plans|*.kpf|All files").size(), 1U);
}

}  // namespace
}  // namespace krnqb::ui
