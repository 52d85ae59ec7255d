#include <gtest/gtest.h>

#include "cli/import/recording_editor.h"

namespace krnqb::cli {
namespace {

using tests::EditRecording;
using tests::ProgramRun;
using tests::ReadText;
using tests::RunProgram;
using tests::Workplace;

constexpr const char* expenseRequest = "requestID=\"4\"";
constexpr const char* incomeRequest = "requestID=\"1\"";
constexpr const char* nothingWritten =
    "krnqb: import failed: some data could not be read; nothing was written; fix the cause and run the "
    "import again, or add --accept-incomplete to write what was read\n";

// A recorded exchange whose answers a test changes.
class IncompleteImport : public testing::Test {
 protected:
  void SetUp() override {
    place.Nursery();
    const ProgramRun run = RunProgram(
        place.ImportArguments("ald.kpf", {"--expenses", "--income", "--dry-run", "--record", recording}));
    ASSERT_EQ(run.code, 0) << run.err;
    before = ReadText(plan);
  }

  ProgramRun Import(const std::vector<std::string>& more) const {
    std::vector<std::string> arguments{"import", "--replay",   recording, "--plan",
                                       plan,     "--expenses", "--income"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return RunProgram(arguments);
  }

  void Answer(const std::string& request, const std::string& answer) const {
    EditRecording(recording, request, [&](auto& line) { line["response"] = answer; });
  }

  // Expects that the import reports `omission`, and `warning` unless it is empty, and writes nothing, and
  // that with --accept-incomplete it writes the plan and returns 3.
  void ExpectIncomplete(const std::string& omission, const std::string& warning = {}) const {
    const std::string reported = "krnqb: incomplete: " + omission + "\n" +
                                 (warning.empty() ? "" : "krnqb: warning: " + warning + "\n");
    const ProgramRun refused = Import({"--quiet"});
    EXPECT_EQ(refused.code, 1);
    EXPECT_EQ(refused.out, "");
    EXPECT_EQ(refused.err, reported + nothingWritten);
    EXPECT_EQ(ReadText(plan), before);
    EXPECT_FALSE(std::filesystem::exists(plan + ".bak"));

    const ProgramRun dry = Import({"--accept-incomplete", "--dry-run"});
    EXPECT_EQ(dry.code, 0);
    EXPECT_EQ(dry.err, reported);
    EXPECT_EQ(ReadText(plan), before);

    const ProgramRun accepted = Import({"--accept-incomplete"});
    EXPECT_EQ(accepted.code, 3);
    EXPECT_EQ(accepted.err, reported);
    EXPECT_NE(accepted.out.find("Wrote " + plan), std::string::npos);
    EXPECT_NE(ReadText(plan), before);
    EXPECT_EQ(ReadText(plan + ".bak"), before);
  }

  const Workplace place;
  const std::string recording = place / "exchange.jsonl";
  const std::string plan = place / "ald.kpf";
  std::string before;
};

TEST_F(IncompleteImport, ReportsAnAnswerWithAnError) {
  Answer(expenseRequest,
         tests::AccountsAnswer(4, R"(statusCode="3260" statusSeverity="Error" statusMessage="No permission")",
                               {}));
  ExpectIncomplete("request 4 (expense accounts): status 3260 (Error): No permission");
}

TEST_F(IncompleteImport, ReportsAnAnswerWithAWarning) {
  Answer(
      expenseRequest,
      tests::AccountsAnswer(
          4, R"(statusCode="500" statusSeverity="Warn" statusMessage="One object was not found")", {"Rent"}));
  ExpectIncomplete("request 4 (expense accounts): status 500 (Warn): One object was not found");
}

TEST_F(IncompleteImport, ReportsAnAnswerThatIsNotWellFormed) {
  Answer(expenseRequest, "<QBXML><QBXMLMsgsRs>");
  ExpectIncomplete("request 4 (expense accounts): the answer is not well-formed XML");
}

TEST_F(IncompleteImport, ReportsEveryOmission) {
  Answer(expenseRequest, "<QBXML><QBXMLMsgsRs>");
  Answer(incomeRequest,
         tests::AccountsAnswer(
             1, R"(statusCode="1000" statusSeverity="Error" statusMessage="Internal error")", {}));
  const ProgramRun run = Import({"--quiet"});
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(
      run.err,
      std::string("krnqb: incomplete: request 4 (expense accounts): the answer is not well-formed XML\n"
                  "krnqb: incomplete: request 1 (income accounts): status 1000 (Error): Internal error\n") +
          nothingWritten);
}

TEST_F(IncompleteImport, AcceptsAnAnswerWithoutRecordsAsComplete) {
  Answer(expenseRequest,
         tests::AccountsAnswer(4, R"(statusCode="1" statusSeverity="Info" statusMessage="No match")", {}));
  const ProgramRun run = Import({"--quiet"});
  EXPECT_EQ(run.code, 0);
  EXPECT_EQ(run.err, "");
}

TEST_F(IncompleteImport, ReportsAPlanTableWithoutBlocks) {
  const std::string table = "20000000000000000000000000000600";
  const auto tableAt = before.find(table);
  ASSERT_NE(tableAt, std::string::npos);
  const auto blocks = before.find("<tableblocks>", tableAt);
  const auto end = before.find("</tableblocks>", blocks);
  before.replace(blocks, end + 14 - blocks, "");
  tests::WriteText(plan, before);
  ExpectIncomplete(
      "plan table " + table + " (Planned expenses) cannot be read",
      "only one table of planned and actual values could be changed, so their rows may no longer "
      "match: actual expenses without planned expenses");
}

TEST_F(IncompleteImport, ReportsAPlanWithoutATable) {
  const std::string table = "20000000000000000000000000000600";
  before = tests::Replaced(before, table, "20000000000000000000000000000601");
  tests::WriteText(plan, before);
  ExpectIncomplete("KRNDeserialize ended early: Subscript out of range: the plan has no table " + table);
}

// New rows are copies of the first one, so its id occurs twice.
TEST_F(IncompleteImport, AcceptsIdentifiersThatOccurTwice) {
  const auto tableAt = before.find("20000000000000000000000000000600");
  for (int row = 0; row < 2; ++row) {
    before.replace(before.find("<row>", tableAt), 5, "<row xml:id=\"first\">");
  }
  tests::WriteText(plan, before);
  const ProgramRun run = Import({"--quiet"});
  EXPECT_EQ(run.code, 0) << run.err;
  EXPECT_NE(ReadText(plan).find("<row xml:id=\"first\">"), std::string::npos);
}

TEST_F(IncompleteImport, AcceptsAPlanWhoseRootDeclaresItsTablesPrefixes) {
  before = tests::Replaced(before, "<plan ", "<plan xmlns:dt=\"urn:types\" ");
  const auto tableAt = before.find("20000000000000000000000000000600");
  before.replace(before.find("<c>", tableAt), 3, "<c dt:type=\"text\">");
  tests::WriteText(plan, before);
  const ProgramRun run = Import({"--quiet"});
  EXPECT_EQ(run.code, 0);
  EXPECT_EQ(run.err, "");
  EXPECT_NE(ReadText(plan).find("<c dt:type=\"text\">Rent</c>"), std::string::npos);
  EXPECT_EQ(Import({"--quiet"}).code, 0) << "the plan can be read again";
}

TEST_F(IncompleteImport, FailsOnARefusedRequestEvenWithAcceptIncomplete) {
  EditRecording(recording, expenseRequest, [](auto& line) {
    line.erase("response");
    line["error"] = {{"number", -2147220446}, {"description", "The user refused access."}};
  });
  for (const std::vector<std::string>& more :
       {std::vector<std::string>{"--quiet"}, {"--quiet", "--accept-incomplete"}}) {
    const ProgramRun run = Import(more);
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(
        run.err,
        "krnqb: incomplete: request 4 (expense accounts): refused: The user refused access.\n"
        "krnqb: import failed: The user refused access; fix the cause and run the import again; nothing "
        "was written\n");
    EXPECT_EQ(ReadText(plan), before);
  }
}

TEST_F(IncompleteImport, WritesTheJournalOfAFailedImport) {
  EditRecording(recording, expenseRequest, [](auto& line) {
    line.erase("response");
    line["error"] = {{"number", -2147220446}, {"description", "The user refused access."}};
  });
  const std::string journal = place / "journal.jsonl";
  tests::WriteText(journal, "from an earlier import\n");
  EXPECT_EQ(Import({"--quiet", "--journal", journal}).code, 1);
  EXPECT_EQ(ReadText(journal), "");
}

TEST_F(IncompleteImport, ReportsARefusedCompanyCheckAndTheMissingFiscalMonth) {
  EditRecording(recording, "requestID=\"101\"", [](auto& line) {
    line.erase("response");
    line["error"] = {{"number", -2147220480}, {"description", "Cannot be parsed."}};
  });
  const ProgramRun run = Import({"--quiet"});
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.err,
            "krnqb: incomplete: request 101 (company): refused: Cannot be parsed.\n"
            "krnqb: import failed: To perform the import you need to provide the QuickBooks fiscal year "
            "start month; give the first month of the company's fiscal year, for example --fiscal-month "
            "January; nothing was "
            "written\n");
  EXPECT_EQ(Import({"--quiet", "--fiscal-month", "1"}).code, 0);
}

TEST_F(IncompleteImport, AcceptsAnIncompleteImportThatChangesNothing) {
  Answer(expenseRequest, "<QBXML><QBXMLMsgsRs>");
  Answer(incomeRequest, "<QBXML><QBXMLMsgsRs>");
  const ProgramRun run = Import({"--accept-incomplete"});
  EXPECT_EQ(run.code, 3);
  EXPECT_NE(run.out.find("Nothing in the plan changes.\n"), std::string::npos);
  EXPECT_EQ(ReadText(plan), before);
}

}  // namespace
}  // namespace krnqb::cli
