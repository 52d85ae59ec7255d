#include "cli/import/notices/skipped_amounts.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "cli/import/json_output.h"

namespace krnqb::cli {
namespace {

Notice LeftOut(SkipReason reason, const std::string& amount) {
  return {.kind = NoticeKind::AmountSkipped,
          .meaning = NoticeMeaning::LeftOut,
          .skipped = Skipped{.reason = reason, .kind = SkipKind::Lost, .amount = amount}};
}

void Fill(ImportReport& report, const std::vector<Notice>& notices) {
  for (const Notice& notice : notices) report.Notify(notice);
}

TEST(SkippedReport, IsEmptyWhenNothingWasLeftOut) {
  EXPECT_EQ(SkippedReport(ImportReport()), "");
}

TEST(SkippedReport, HasALinePerReason) {
  ImportReport report;
  Fill(report, {LeftOut(SkipReason::NoItem, "-2.5"), LeftOut(SkipReason::NoAccount, "1234.5"),
                LeftOut(SkipReason::NoAccount, "1")});
  EXPECT_EQ(SkippedReport(report),
            "Lost amounts (--journal FILE lists each of them):\n"
            "       2       1,235.50  the line names no account\n"
            "       1          -2.50  the line names no item\n");
}

TEST(SkippedReport, SeparatesWhatTheRulesLeaveOutFromWhatWasNotRequested) {
  ImportReport report;
  const auto notImported = [](const char* name) {
    Notice notice = LeftOut(SkipReason::AccountInNoList, "10");
    notice.skipped->kind = SkipKind::NotImported;
    notice.skipped->account = "8000-1";
    notice.skipped->accountName = name;
    return notice;
  };
  for (const char* name : {"A", "B", "C", "D", "E", "F", "G", "A"}) report.Notify(notImported(name));
  Notice notRequested = LeftOut(SkipReason::AccountInNoList, "10");
  notRequested.skipped->kind = SkipKind::NotRequested;
  Fill(report, {notRequested, notRequested});
  EXPECT_EQ(
      SkippedReport(report),
      "Amounts that an import does not bring into a plan (--journal FILE lists them):\n"
      "       8          80.00  the account is of a type that is not imported: A, B, C, D, E and 2 more\n"
      "Not requested: 2 lines of accounts of other kinds.\n");
}

TEST(SkippedReport, SaysThatASumIsOutOfRange) {
  ImportReport report;
  Fill(report, {LeftOut(SkipReason::NoAccount, "1.7E308"), LeftOut(SkipReason::NoAccount, "1.7E308")});
  EXPECT_NE(SkippedReport(report).find("\n       2   out of range  the line names no account\n"),
            std::string::npos)
      << SkippedReport(report);
}

TEST(SkippedReport, NamesRepeatedAccountsAndTheEndOfPastPerformance) {
  ImportReport report;
  Fill(report, {{.kind = NoticeKind::AccountInSeveralRows, .description = "Rent"},
                {.kind = NoticeKind::PastPerformanceEnded, .description = "CostOfGoodsSold"}});
  const std::string text = SkippedReport(report);
  EXPECT_NE(text.find("Rent"), std::string::npos) << text;
  EXPECT_NE(text.find("no top-level account of type CostOfGoodsSold."), std::string::npos) << text;
}

TEST(SkippedJson, HasNoSumWhereItIsOutOfRange) {
  ImportOutcome outcome;
  Fill(outcome.report, {LeftOut(SkipReason::NoAccount, "-1.7E308"),
                        LeftOut(SkipReason::NoAccount, "-1.7E308"), LeftOut(SkipReason::NoItem, "2.5")});
  const std::string text = ImportOutcomeJson(outcome);
  const auto skipped = nlohmann::json::parse(text).at("skipped");
  EXPECT_EQ(skipped.at("count"), 3);
  EXPECT_TRUE(skipped.at("sum").is_null());
  EXPECT_EQ(skipped.at("reasons").at("no-account").at("count"), 2);
  EXPECT_TRUE(skipped.at("reasons").at("no-account").at("sum").is_null());
  EXPECT_EQ(skipped.at("reasons").at("no-item").at("sum"), "2.50");
}

}  // namespace
}  // namespace krnqb::cli
