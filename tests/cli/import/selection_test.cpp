#include <gtest/gtest.h>

#include "cli/import/recording_editor.h"
#include "qbxml/request_catalogue.h"

namespace krnqb::cli {
namespace {

using tests::ProgramRun;
using tests::ReadText;
using tests::RunProgram;
using tests::Workplace;
using Words = std::vector<std::string>;

class ExpenseSelection : public testing::Test {
 protected:
  void SetUp() override { place.Nursery(); }

  ProgramRun Import(const Words& more) const { return RunProgram(place.ImportArguments("bri.kpf", more)); }

  std::string NewRows(const Words& more) const {
    const std::string out = Import(more).out;
    const std::string mark = "  Expenses: ";
    const auto start = out.find(mark);
    return start == std::string::npos
               ? ""
               : out.substr(start + mark.size(), out.find('\n', start) - start - mark.size());
  }

  const Workplace place;
};

TEST_F(ExpenseSelection, KeepsThePlansAccountsAndAddsNoOthers) {
  EXPECT_EQ(NewRows({"--expenses", "--dry-run"}), "Rent");
}

TEST_F(ExpenseSelection, AddsTheNamedAccounts) {
  EXPECT_EQ(NewRows({"--expenses", "--dry-run", "--select-expense", "Insurance", "--select-expense",
                     "Advertising"}),
            "Advertising, Insurance, Rent");
}

TEST_F(ExpenseSelection, IgnoresCaseInNames) {
  EXPECT_EQ(NewRows({"--expenses", "--dry-run", "--select-expense", "iNSURANCE"}), "Insurance, Rent");
}

TEST_F(ExpenseSelection, AddsAllAccounts) {
  const std::string out = Import({"--expenses", "--dry-run", "--select-all-expenses"}).out;
  EXPECT_NE(
      out.find(
          "Advertising, Automobile, Depreciation, Insurance, Job Expenses,\n    Office Supplies, Rent\n"),
      std::string::npos)
      << out;
}

TEST_F(ExpenseSelection, ReportsNamesThatAreNotTopLevelExpenseAccounts) {
  const std::string before = ReadText(place / "bri.kpf");
  // A sub-account, an income account, and a typing error.
  const ProgramRun run =
      Import({"--expenses", "--quiet", "--select-expense", "Wages", "--select-expense", "Landscaping",
              "--select-expense", "Advertsing", "--select-expense", "Rent"});
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(
      run.err,
      "krnqb: selecting expense accounts failed: the company has no top-level expense account \"Wages\", "
      "\"Landscaping\" or \"Advertsing\"; did you mean \"Advertising\"?\n");
  EXPECT_EQ(ReadText(place / "bri.kpf"), before);
}

TEST_F(ExpenseSelection, SaysWhereNamesAreListedWhenNoneIsSimilar) {
  EXPECT_EQ(Import({"--expenses", "--quiet", "--select-expense", "Zymurgy"}).err,
            "krnqb: selecting expense accounts failed: the company has no top-level expense account "
            "\"Zymurgy\"; krnqb accounts expense lists the company's accounts\n");
}

TEST_F(ExpenseSelection, ChecksNamesEvenWhenAllAreSelected) {
  EXPECT_EQ(Import({"--expenses", "--quiet", "--select-all-expenses", "--select-expense", "Zymurgy"}).code,
            1);
}

TEST_F(ExpenseSelection, WarnsWhenNothingIsSelected) {
  tests::WriteText(
      place / "bri.kpf",
      "<plan product='bri' start='2003-01'><tables>"
      "<tableitem id='20000000000000000000000000002000'><tableblocks>"
      "<block id='db_contributionmargin_cat2'><row><c>Other</c></row></block></tableblocks></tableitem>"
      "<tableitem id='21000000000000000000000000002000'><tableblocks>"
      "<block "
      "id='db_contributionmargin_cat2_actual'><row><c>Other</c></row></block></tableblocks></tableitem>"
      "</tables></plan>");
  const ProgramRun run = Import({"--expenses"});
  EXPECT_EQ(run.code, 0);
  EXPECT_EQ(run.err,
            "krnqb: warning: no expense account is selected: give --select-expense NAME or "
            "--select-all-expenses\n");
  EXPECT_NE(run.out.find("Nothing in the plan changes."), std::string::npos);
}

TEST_F(ExpenseSelection, FailsTheImportIfItCannotBeRead) {
  tests::WriteText(
      place / "company.xml",
      "<QBXML><QBXMLMsgsRs><CompanyQueryRs><CompanyRet><CompanyName>N</CompanyName><FirstMonthFiscalYear>"
      "Januar</FirstMonthFiscalYear></CompanyRet></CompanyQueryRs></QBXMLMsgsRs></QBXML>");
  ASSERT_EQ(RunProgram({"company", "load", place / "nursery.qbw", place / "company.xml"}).code, 0);
  const ProgramRun run = Import({"--expenses", "--json", "--select-all-expenses"});
  EXPECT_EQ(run.code, 1);
  const auto object = nlohmann::json::parse(run.out);
  EXPECT_EQ(object.at("error_number"), -2147221504);
  // The import itself did not start.
  EXPECT_TRUE(object.at("events").empty());
  EXPECT_NE(run.err.find(
                "; give the first month of the company's fiscal year, for example --fiscal-month January; "),
            std::string::npos)
      << run.err;
}

TEST_F(ExpenseSelection, FailsWhenThePlanHasNoTableForIt) {
  const std::string plan = place / "ald.kpf";
  tests::WriteText(plan, tests::Replaced(tests::ReadText(plan), " product=\"ald\"", ""));
  const ProgramRun run =
      RunProgram(place.ImportArguments("ald.kpf", {"--expenses", "--product", "bri", "--quiet"}));
  EXPECT_EQ(run.code, 1);
  EXPECT_TRUE(run.err.ends_with(
      "krnqb: selecting expense accounts failed: the accounts or the plan's contribution "
      "margin table cannot be read; fix the cause and run the import again; nothing was written\n"))
      << run.err;
  EXPECT_NE(run.err.find("the plan has no table 20000000000000000000000000002000"), std::string::npos)
      << run.err;
}

TEST_F(ExpenseSelection, FailsForNamesThatCannotBeCheckedEvenIfIncompleteIsAccepted) {
  const std::string recording = place / "exchange.jsonl";
  ASSERT_EQ(Import({"--expenses", "--dry-run", "--record", recording}).code, 0);
  tests::EditRecording(recording, "requestID=\"4\"", [](auto& line) { line["response"] = "<QBXML>"; });
  const Words replaying = {"import",          "--replay",   recording, "--plan",
                           place / "bri.kpf", "--expenses", "--quiet", "--accept-incomplete"};
  Words naming = replaying;
  naming.insert(naming.end(), {"--select-expense", "Rent"});
  const ProgramRun run = RunProgram(naming);
  EXPECT_EQ(run.code, 1);
  EXPECT_NE(run.err.find("selecting expense accounts failed: the accounts"), std::string::npos) << run.err;
  EXPECT_EQ(RunProgram(replaying).code, 3) << "without a name there is nothing to check";
}

TEST_F(ExpenseSelection, IsReadBeforeTheImportOnlyForItsProduct) {
  const auto requestsOf = [&](const std::string& plan, const Words& contents) {
    Words more = contents;
    more.insert(more.end(), {"--dry-run", "--record", place / "exchange.jsonl"});
    RunProgram(place.ImportArguments(plan, more));
    Words requests;
    for (const auto& line : tests::RecordingLines(place / "exchange.jsonl"))
      requests.push_back(line.value("request", ""));
    requests.erase(requests.begin());
    return requests;
  };
  const std::string company = BuildRequest(101, {}, {});
  const std::string host = BuildRequest(100, {}, {});
  const std::string expenses = BuildRequest(4, {}, {});
  const std::string income = BuildRequest(1, {}, {});
  EXPECT_EQ(requestsOf("bri.kpf", {"--expenses"}), (Words{company, expenses, host, host, expenses}));
  EXPECT_EQ(requestsOf("ald.kpf", {"--expenses"}), (Words{company, host, host, expenses}));
  EXPECT_EQ(requestsOf("bri.kpf", {"--income"}), (Words{company, host, host, income}));
}

}  // namespace
}  // namespace krnqb::cli
