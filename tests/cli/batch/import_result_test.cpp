#include "cli/batch/import_result.h"

#include <gtest/gtest.h>

#include <chrono>

#include "cli/batch/overview.h"
#include "cli/import/json_output.h"

namespace krnqb::cli {
namespace {

ImportOutcome Outcome(ImportResult result) {
  ImportOutcome outcome;
  outcome.result = result;
  return outcome;
}

plan_file::TableChange Table(std::int64_t rows, std::int64_t cells, std::int64_t formulas) {
  plan_file::TableChange table;
  table.rowsAdded = rows;
  table.cellsChanged = cells;
  table.formulasCleared = formulas;
  return table;
}

TEST(ReadImportResult, KnowsEveryResultOfAnImport) {
  for (int number = 0; number <= static_cast<int>(ImportResult::Interrupted); ++number) {
    const auto result = static_cast<ImportResult>(number);
    const ImportResultFile file = ReadImportResult(ImportOutcomeJson(Outcome(result)));
    EXPECT_EQ(file.result, ResultWord(result));
    EXPECT_EQ(file.done, ExitCodeOf(Outcome(result)) == ExitCode::Done) << file.result;
  }
}

TEST(ReadImportResult, TakesCountsSumsAndNames) {
  ImportOutcome outcome = Outcome(ImportResult::Imported);
  outcome.tables = {Table(3, 40, 5), Table(2, 1, 0)};
  outcome.elapsedMilliseconds = 1234;
  outcome.basis =
      ImportBasis{.options = {},
                  .product = {},
                  .planStart = {},
                  .importStart = YearMonth{.year = 2002, .month = 1},
                  .company = ImportCompany{.path = "a.qbw", .name = "Garden", .processorVersion = "1.1"}};
  outcome.basis->options.planFile = "a.kpf";
  for (const char* const name : {"Rent", "Fuel"}) {
    Notice warned{.kind = NoticeKind::Warning};
    warned.finding = Finding{.code = WarningCode::NoRow, .name = name, .amount = 5};
    outcome.report.Notify(warned);
  }
  outcome.report.Notify({.kind = NoticeKind::AmountSkipped,
                         .meaning = NoticeMeaning::LeftOut,
                         .skipped = Skipped{.reason = SkipReason::NoAccount, .kind = {}, .amount = "12.50"}});
  const ImportResultFile file = ReadImportResult(ImportOutcomeJson(outcome));
  EXPECT_EQ(file.companyName, "Garden");
  EXPECT_EQ(file.companyPath, "a.qbw");
  EXPECT_EQ(file.plan, "a.kpf");
  EXPECT_EQ(file.periodFrom, "2002-01-01");
  EXPECT_EQ(file.rowsAdded, 5);
  EXPECT_EQ(file.cellsChanged, 41);
  EXPECT_EQ(file.formulasCleared, 5);
  EXPECT_EQ(file.amountsLeftOut, 1);
  ASSERT_TRUE(file.sumLeftOut);
  EXPECT_EQ(file.sumLeftOut->Text(), "12.50");
  EXPECT_EQ(file.milliseconds, 1234);
  ASSERT_EQ(file.warnings.size(), 1U);
  EXPECT_EQ(file.warnings[0].code, "no-row");
  EXPECT_EQ(file.warnings[0].accounts, 2U);
}

TEST(ReadImportResult, GivesTheReasonOnceWithWhatIsMissingAndWithoutItsRemedy) {
  ImportOutcome outcome = Outcome(ImportResult::Failed);
  outcome.errorDescription = "cannot open the plan a.kpf: it is a folder; check the path";
  outcome.remedy = "check the path";
  EXPECT_EQ(ReadImportResult(ImportOutcomeJson(outcome)).reason,
            "cannot open the plan a.kpf: it is a folder");
  outcome.errorDescription = "There is no company file.";
  EXPECT_EQ(ReadImportResult(ImportOutcomeJson(outcome)).reason, "There is no company file");
  EXPECT_EQ(ReadImportResult(ImportOutcomeJson(outcome)).remedy, "check the path");
  outcome.errorDescription = "nothing was written";
  for (const int request : {10, 11, 12}) {
    outcome.report.Notify({.kind = NoticeKind::AnswerStatus,
                           .meaning = NoticeMeaning::Incomplete,
                           .place = {.request = request},
                           .number = 3260});
  }
  const std::string reason = ReadImportResult(ImportOutcomeJson(outcome)).reason;
  EXPECT_EQ(reason.find("nothing was written: "), 0U) << reason;
  EXPECT_TRUE(reason.ends_with(" and 2 more")) << reason;
}

TEST(ReadImportResult, SaysWhatIsWrongWithOtherFiles) {
  const std::string whole = ImportOutcomeJson(Outcome(ImportResult::Imported));
  const std::vector<std::pair<std::string, std::string>> cases{
      {"", "the file is empty"},
      {" \r\n", "the file is empty"},
      {whole.substr(0, whole.size() / 2), "the file is cut off or is not JSON"},
      {whole + "}", "the file is cut off or is not JSON"},
      {"krnqb: no such command", "the file is cut off or is not JSON"},
      {"[1, 2]", "the file is not the result of krnqb import --json"},
      {"null", "the file is not the result of krnqb import --json"},
      {R"({"result": "done"})", "the file is not the result of krnqb import --json"},
      {R"({"result": "agrees", "tables": [], "skipped": {}})",
       "the file is not the result of krnqb import --json"},
      {R"({"result": 7, "tables": [], "skipped": {}})", "the file is not the result of krnqb import --json"},
  };
  for (const auto& [text, reason] : cases) {
    const ImportResultFile file = ReadImportResult(text);
    EXPECT_EQ(file.result, "unreadable") << text;
    EXPECT_FALSE(file.done);
    EXPECT_EQ(file.reason.substr(0, reason.size()), reason) << text;
    EXPECT_FALSE(file.remedy.empty());
  }
}

// Every member may be of another type, in a file of another program or of another version.
TEST(ReadImportResult, AcceptsMembersOfAnyType) {
  for (const std::string value :
       {"null", "7", "-7", "1e99", "\"x\"", "[]", "[1]", "{}", "[{\"code\": 1}]", "true"}) {
    std::string text =
        R"({"result": "imported", "tables": [VALUE, {"rows_added": VALUE}], "skipped": {"sum": VALUE,
        "count": VALUE}, "warnings": VALUE, "incomplete": VALUE, "company": VALUE, "paths": VALUE, "period": VALUE,
        "elapsed_ms": VALUE, "events": VALUE, "changes": VALUE, "error_description": VALUE, "remedy": VALUE})";
    for (std::size_t place = 0; (place = text.find("VALUE")) != std::string::npos;)
      text.replace(place, 5, value);
    const ImportResultFile file = ReadImportResult(text);
    EXPECT_EQ(file.result, "imported") << value;
    EXPECT_GE(file.rowsAdded, 0);
    EXPECT_GE(file.amountsLeftOut, 0);
  }
}

TEST(ReadImportResult, LeavesOutTheCellsOfLargePlans) {
  std::string cells = "[";
  for (int cell = 0; cell < 200'000; ++cell) cells += R"({"before": "1", "after": "2"},)";
  cells += "{}]";
  const std::string text =
      R"({"result": "imported", "tables": [{"rows_added": 2}], "skipped": {"count": 0}, "changes": )" +
      cells + R"(, "elapsed_ms": 5})";
  const auto begun = std::chrono::steady_clock::now();
  const ImportResultFile file = ReadImportResult(text);
  EXPECT_EQ(file.rowsAdded, 2);
  EXPECT_EQ(file.milliseconds, 5);
  EXPECT_LT(std::chrono::steady_clock::now() - begun, std::chrono::seconds(10));
}

ImportResultFile Done(std::string name, std::int64_t leftOut, std::optional<ExactAmount> sum) {
  ImportResultFile file;
  file.name = std::move(name);
  file.result = "imported";
  file.done = true;
  file.amountsLeftOut = leftOut;
  file.sumLeftOut = sum;
  return file;
}

TEST(OverviewOf, AddsUpSumsExactlyUnlessOneIsUnknown) {
  const auto cents = [](std::int64_t hundredths) { return ExactAmount::FromHundredths(hundredths); };
  EXPECT_EQ(OverviewOf("d", {Done("a", 1, cents(10)), Done("b", 2, cents(20))}).sumLeftOut, cents(30));
  EXPECT_EQ(OverviewOf("d", {Done("a", 0, std::nullopt), Done("b", 2, cents(20))}).sumLeftOut, cents(20));
  EXPECT_EQ(OverviewOf("d", {Done("a", 1, std::nullopt), Done("b", 2, cents(20))}).sumLeftOut, std::nullopt);
  const ExactAmount large = cents(900'000'000'000'000);
  EXPECT_EQ(OverviewOf("d", {Done("a", 1, large), Done("b", 2, large)}).sumLeftOut, std::nullopt);
}

TEST(OverviewOf, CountsResultsAndWarnings) {
  ImportResultFile one = Done("a", 0, {});
  one.warnings = {{"row-twice", 2}, {"no-row", 1}};
  ImportResultFile two = UnreadableResult("x", "y");
  ImportResultFile three = Done("c", 0, {});
  three.warnings = {{"no-row", 4}};
  const BatchOverview overview = OverviewOf("d", {one, two, three});
  EXPECT_EQ(overview.done, 2U);
  EXPECT_EQ(overview.NotDone(), 1U);
  const std::vector<std::pair<std::string, std::size_t>> results{{"imported", 2}, {"unreadable", 1}};
  EXPECT_EQ(overview.byResult, results);
  ASSERT_EQ(overview.warnings.size(), 2U);
  EXPECT_EQ(overview.warnings[0].code, "no-row");
  EXPECT_EQ(overview.warnings[0].imports, 2U);
  EXPECT_EQ(overview.warnings[0].accounts, 5U);
  EXPECT_EQ(overview.warnings[1].code, "row-twice");
}

TEST(TimeText, IsInUniversalTime) {
  EXPECT_EQ(TimeText({.seconds = 0}), "1970-01-01 00:00:00");
  EXPECT_EQ(TimeText({.seconds = 1'042'632'309, .nanoseconds = 999'999'999}), "2003-01-15 12:05:09");
  EXPECT_EQ(TimeText({.seconds = -1}), "1969-12-31 23:59:59");
}

}  // namespace
}  // namespace krnqb::cli
