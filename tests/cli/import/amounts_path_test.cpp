#include <gtest/gtest.h>

#include <algorithm>

#include "cli/import/recording_editor.h"

namespace krnqb::cli {
namespace {

using tests::ProgramRun;
using tests::ReadText;
using tests::RecordingLines;
using tests::RunProgram;
using tests::With;
using tests::Words;
using tests::Workplace;
using tests::WriteText;

const Words amounts = {"--expenses", "--income", "--balances", "all"};

bool AnyRequest(const std::string& recording, std::string_view part) {
  const auto lines = RecordingLines(recording);
  return std::ranges::any_of(
      lines, [&](const auto& line) { return line.value("request", "").find(part) != std::string::npos; });
}

// Imports into a plan of the same name and returns it without time stamps.
std::string Imported(const Words& more, std::string_view processorVersion) {
  const Workplace place;
  place.NurseryYear(processorVersion);
  const ProgramRun run = RunProgram(place.ImportArguments("ald.kpf", With(amounts, more)));
  EXPECT_EQ(run.code, 0) << run.err;
  return tests::WithoutStamps(ReadText(place / "ald.kpf"));
}

TEST(AmountsFrom, TransactionsAreReadFromACompanyThatAnswersWithReports) {
  EXPECT_EQ(Imported({"--amounts-from", "transactions"}, "2.0"), Imported({}, "1.1"));
  EXPECT_EQ(Imported({"--amounts-from", "reports"}, "2.0"), Imported({}, "2.0"));
}

TEST(AmountsFrom, DecidesWhichRequestsAreSentAndIsKeptInTheRecording) {
  const Workplace place;
  place.NurseryYear("2.0");
  const std::string recording = place / "exchange.jsonl";
  const auto record = [&](const Words& more) {
    const Words words = With(With(amounts, {"--dry-run", "--record", recording}), more);
    EXPECT_EQ(RunProgram(place.ImportArguments("ald.kpf", words)).code, 0);
    return RecordingLines(recording).at(0);
  };
  const auto presented = record({"--amounts-from", "transactions"});
  EXPECT_TRUE(AnyRequest(recording, "<BillQueryRq"));
  EXPECT_FALSE(AnyRequest(recording, "<GeneralSummaryReportQueryRq"));
  EXPECT_EQ(presented.at("major"), 2);
  EXPECT_EQ(presented.at("presented").dump(), R"({"major":1,"minor":1})");
  EXPECT_EQ(presented.at("import").at("amounts"), "transactions");

  const auto own = record({});
  EXPECT_FALSE(AnyRequest(recording, "<BillQueryRq"));
  EXPECT_TRUE(AnyRequest(recording, "<GeneralSummaryReportQueryRq"));
  EXPECT_FALSE(own.contains("presented"));
  EXPECT_EQ(own.at("import").at("amounts"), "reports");
}

TEST(AmountsFrom, ReportsIsRefusedForACompanyThatHasNone) {
  const Workplace place;
  const std::string company = place.NurseryYear("1.1");
  const std::string before = ReadText(place / "ald.kpf");
  const ProgramRun run =
      RunProgram(place.ImportArguments("ald.kpf", With(amounts, {"--amounts-from", "reports"})));
  EXPECT_EQ(run.code, 2);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.err, "krnqb: wrong usage: --amounts-from is reports, but Hollow Creek Nursery (" + company +
                         ") has none: it answers qbXML up to 1.1, and reports need 2.0; give --amounts-from "
                         "transactions, or leave it out\n");
  EXPECT_EQ(ReadText(place / "ald.kpf"), before);
  EXPECT_FALSE(std::filesystem::exists(place / "ald.kpf.lock"));
}

TEST(AmountsFrom, IsIgnoredWithAWarningIfNoAmountsAreAskedFor) {
  const Workplace place;
  place.Nursery("1.1");
  const ProgramRun run =
      RunProgram(place.ImportArguments("ald.kpf", {"--income", "--quiet", "--amounts-from", "reports"}));
  EXPECT_EQ(run.code, 0);
  EXPECT_EQ(run.err, "krnqb: warning: --amounts-from is ignored because --balances is none\n");
}

TEST(AmountsFrom, IsAnnouncedAndDecidesTheWarnings) {
  const Workplace place;
  place.NurseryYear("2.0");
  const auto importing = [&](const Words& more) {
    return RunProgram(place.ImportArguments(
        "ald.kpf", With({"--income", "--past-performance", "--balances", "actual", "--dry-run"}, more)));
  };
  const std::string warning = "--past-performance without --expenses ends";
  const ProgramRun reports = importing({});
  EXPECT_NE(reports.out.find(": actual amounts from reports, dry run.\n"), std::string::npos) << reports.out;
  EXPECT_NE(reports.err.find(warning), std::string::npos) << reports.err;
  const ProgramRun transactions = importing({"--amounts-from", "transactions"});
  EXPECT_NE(transactions.out.find(": actual amounts from transactions, dry run.\n"), std::string::npos)
      << transactions.out;
  EXPECT_EQ(transactions.err.find(warning), std::string::npos) << transactions.err;
}

TEST(AmountsFrom, RefusesAnotherWord) {
  const ProgramRun run = RunProgram({"import", "--plan", "p", "--amounts-from", "balances"});
  EXPECT_EQ(run.code, 2);
  EXPECT_EQ(run.err,
            "krnqb: wrong usage: --amounts-from \"balances\" is not one of the choices; give transactions or "
            "reports\n");
}

class ReplayedAmounts : public testing::Test {
 protected:
  ProgramRun Replay(const std::string& plan, const Words& more) const {
    return RunProgram(With(With({"import", "--plan", place / plan, "--replay", recording}, amounts), more));
  }
  void Record(const std::string& processorVersion, const Words& more) const {
    place.NurseryYear(processorVersion);
    const Words words = With(With(amounts, {"--record", recording}), more);
    ASSERT_EQ(RunProgram(place.ImportArguments("ald.kpf", words)).code, 0);
  }

  const Workplace place;
  const std::string recording = place / "exchange.jsonl";
};

TEST_F(ReplayedAmounts, ComeFromWhereTheRecordedOnesCameFrom) {
  WriteText(place / "again.kpf", ReadText(place / "ald.kpf"));
  Record("2.0", {"--amounts-from", "transactions"});
  const ProgramRun run = Replay("again.kpf", {});
  ASSERT_EQ(run.code, 0) << run.err;
  EXPECT_NE(run.out.find(": all amounts from transactions.\n"), std::string::npos) << run.out;
  EXPECT_EQ(tests::WithoutStamps(ReadText(place / "again.kpf")),
            tests::WithoutStamps(ReadText(place / "ald.kpf")));
}

TEST_F(ReplayedAmounts, CanComeFromTransactionsOfAnUnknownProcessor) {
  WriteText(place / "again.kpf", ReadText(place / "ald.kpf"));
  Record("1.1", {});
  const std::string text = ReadText(recording);
  WriteText(recording, tests::Replaced(text, R"("major":1,"minor":1)", R"("major":16,"minor":1)"));
  const ProgramRun run = Replay("again.kpf", {"--amounts-from", "transactions"});
  ASSERT_EQ(run.code, 0) << run.err;
  EXPECT_EQ(tests::WithoutStamps(ReadText(place / "again.kpf")),
            tests::WithoutStamps(ReadText(place / "ald.kpf")));
}

TEST_F(ReplayedAmounts, FailInOneSentenceIfTheRecordingHasOthers) {
  Record("1.1", {});
  const std::string before = ReadText(place / "ald.kpf");
  const ProgramRun run = Replay("ald.kpf", {"--amounts-from", "reports", "--quiet"});
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(
      run.err,
      "krnqb: import failed: the recording " + recording +
          " has no answer to request 300 (income by month) for 2002-01-01 to 2002-12-31: it holds "
          "expense and income accounts with amounts from transactions (January to December 2002, product "
          "ald), but the import asks for expense and income accounts with amounts from reports (January "
          "to December 2002, product ald); give the options with which it was recorded, or record the "
          "company again; nothing was written\n");
  EXPECT_EQ(ReadText(place / "ald.kpf"), before);
}

}  // namespace
}  // namespace krnqb::cli
