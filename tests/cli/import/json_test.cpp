#include <gtest/gtest.h>

#include "cli/import/recording_editor.h"

namespace krnqb::cli {
namespace {

using nlohmann::ordered_json;
using tests::ProgramRun;
using tests::RunProgram;
using tests::Workplace;
using Words = std::vector<std::string>;

// Returns the JSON object on standard output, which must have these members and be all that is printed.
ordered_json Object(const ProgramRun& run) {
  ordered_json object = ordered_json::parse(run.out);
  Words members;
  for (const auto& member : object.items()) members.push_back(member.key());
  EXPECT_EQ(members, (Words{"result", "error_number", "error_description", "remedy", "settings", "company",
                            "period", "paths", "backup", "history", "warnings", "events", "tables", "changes",
                            "incomplete", "skipped", "elapsed_ms"}));
  EXPECT_TRUE(object.at("elapsed_ms").is_number_integer());
  EXPECT_GE(object.at("elapsed_ms").get<int>(), 0);
  return object;
}

ordered_json Progress(int percent) {
  return {{"event", "ProgressBarChange"}, {"percent", percent}, {"description", "Processing..."}};
}

TEST(ImportJson, DescribesAnImport) {
  const Workplace place;
  place.Nursery();
  const ProgramRun run = RunProgram(place.ImportArguments("ald.kpf", {"--expenses", "--json"}));
  EXPECT_EQ(run.code, 0);
  EXPECT_EQ(run.err, "");
  const ordered_json object = Object(run);
  EXPECT_EQ(object.at("result"), "imported");
  EXPECT_EQ(object.at("error_number"), 0);
  EXPECT_EQ(object.at("error_description"), "");
  EXPECT_EQ(object.at("events"), (ordered_json{Progress(20),
                                               Progress(40),
                                               Progress(60),
                                               Progress(80),
                                               Progress(100),
                                               {{"event", "AfterImport"}}}));
  EXPECT_EQ(object.at("incomplete"), ordered_json::array());
  std::int64_t rows = 0;
  for (const auto& table : object.at("tables")) {
    const bool expenses = table.at("id").get<std::string>().ends_with("0600");
    EXPECT_EQ(table.at("rows_added").get<int>() > 0, expenses) << table;
    EXPECT_EQ(table.at("cells_changed"), 0) << table;
    EXPECT_EQ(table.at("formulas_cleared").get<int>() > 0, expenses) << table;
    rows += table.at("rows_added").get<int>();
  }
  EXPECT_GT(rows, 0);
}

TEST(ImportJson, SaysWhatWasAskedAndWhere) {
  const Workplace place;
  const std::string company = place.Nursery("2.0");
  const std::string plan = place / "ald.kpf";
  const ordered_json object = Object(RunProgram(
      place.ImportArguments("ald.kpf", {"--expenses", "--balances", "planned", "--growth-expenses", "-5",
                                        "--import-start", "2000-03", "--fiscal-month", "July", "--json",
                                        "--journal", place / "journal", "--record", place / "recording"})));
  EXPECT_EQ(object.at("settings"), (ordered_json{{"product", "ald"},
                                                 {"plan_start", "2003-01"},
                                                 {"import_start", "2000-03"},
                                                 {"fiscal_month", 7},
                                                 {"expenses", true},
                                                 {"income", false},
                                                 {"past_performance", false},
                                                 {"balances", "planned"},
                                                 {"amounts_from", "reports"},
                                                 {"growth_income", nullptr},
                                                 {"growth_cogs", nullptr},
                                                 {"growth_expenses", -5},
                                                 {"select_expenses", ordered_json::array()},
                                                 {"select_all_expenses", false},
                                                 {"accept_incomplete", false},
                                                 {"strict", false},
                                                 {"dry_run", false}}));
  EXPECT_EQ(object.at("company"),
            (ordered_json{{"path", company}, {"name", "Hollow Creek Nursery"}, {"processor", "2.0"}}));
  EXPECT_EQ(object.at("period"), (ordered_json{{"from", "2000-03-01"}, {"to", "2001-02-28"}}));
  EXPECT_EQ(object.at("paths"), (ordered_json{{"plan", plan},
                                              {"journal", place / "journal"},
                                              {"ledger", nullptr},
                                              {"report", nullptr},
                                              {"recording", place / "recording"},
                                              {"replay", nullptr}}));
  EXPECT_EQ(object.at("backup"), plan + ".bak");
  EXPECT_EQ(object.at("history"), 1);
  EXPECT_EQ(object.at("warnings"),
            (ordered_json{{{"code", "empty-period"},
                           {"message", "QuickBooks has no amounts in the twelve months from 2000-03"},
                           {"accounts", ordered_json::array()},
                           {"amounts", ordered_json::array()}}}));
}

TEST(ImportJson, SaysWhatARecordingHolds) {
  const Workplace place;
  place.Nursery();
  const std::string recording = place / "exchange.jsonl";
  RunProgram(place.ImportArguments("ald.kpf", {"--income", "--dry-run", "--record", recording}));
  const ordered_json object = Object(RunProgram(
      {"import", "--replay", recording, "--plan", place / "ald.kpf", "--income", "--dry-run", "--json"}));
  EXPECT_EQ(object.at("company"), (ordered_json{{"path", nullptr}, {"name", nullptr}, {"processor", "1.1"}}));
  EXPECT_EQ(object.at("settings").at("amounts_from"), "transactions");
  EXPECT_EQ(object.at("paths").at("replay"), recording);
  EXPECT_TRUE(object.at("backup").is_null());
}

TEST(ImportJson, HasTheOptionsIfThePlanCannotBeRead) {
  const Workplace place;
  const std::string company = place.Nursery();
  const ordered_json object =
      Object(RunProgram(place.ImportArguments("none.kpf", {"--income", "--growth-income", "7", "--json"})));
  EXPECT_EQ(object.at("settings").at("growth_income"), 7);
  EXPECT_TRUE(object.at("settings").at("product").is_null());
  EXPECT_TRUE(object.at("settings").at("plan_start").is_null());
  EXPECT_EQ(object.at("company").at("path"), company);
  EXPECT_TRUE(object.at("period").is_null());
  EXPECT_EQ(object.at("paths").at("plan"), place / "none.kpf");
  EXPECT_EQ(object.at("remedy"), "check the path");
}

TEST(ImportJson, HasNoPeriodThatEndsAfterTheYear9999) {
  const Workplace place;
  place.Nursery();
  const ProgramRun run = RunProgram(
      place.ImportArguments("ald.kpf", {"--income", "--import-start", "9999-02", "--dry-run", "--json"}));
  EXPECT_EQ(run.code, 0) << run.err;
  const ordered_json object = Object(run);
  EXPECT_TRUE(object.at("period").is_null());
  EXPECT_EQ(object.at("settings").at("import_start"), "9999-02");
}

TEST(ImportJson, ListsTheWarningsThatArePrinted) {
  const Workplace place;
  place.Nursery();
  const ProgramRun run = RunProgram(place.ImportArguments(
      "bri.kpf", {"--expenses", "--growth-expenses", "3", "--past-performance", "--dry-run", "--json"}));
  const ordered_json object = Object(run);
  EXPECT_EQ(run.err,
            "krnqb: warning: --past-performance is ignored because plans of product bri have none\n"
            "krnqb: warning: --growth-expenses is ignored because --balances is none\n");
  const auto warning = [](const char* code, const char* message) {
    return ordered_json{{"code", code},
                        {"message", message},
                        {"accounts", ordered_json::array()},
                        {"amounts", ordered_json::array()}};
  };
  EXPECT_EQ(object.at("warnings"),
            (ordered_json{warning("past-performance-ignored",
                                  "--past-performance is ignored because plans of product bri have none"),
                          warning("growth-expenses-ignored",
                                  "--growth-expenses is ignored because --balances is none")}));
}

TEST(ImportJson, WarnsIfNoExpenseAccountIsSelected) {
  const Workplace place;
  place.Nursery();
  RunProgram({"plan", "new", place / "new.kpf", "--product", "bri", "--start", "2003-01"});
  const ordered_json object =
      Object(RunProgram(place.ImportArguments("new.kpf", {"--expenses", "--dry-run", "--json"})));
  ASSERT_EQ(object.at("warnings").size(), 1U);
  EXPECT_EQ(object.at("warnings")[0].at("code"), "no-expense-selected");
}

TEST(ImportJson, ListsTheChangesByTableRowAndColumn) {
  const Workplace place;
  place.NurseryYear();
  RunProgram(place.ImportArguments("ald.kpf", {"--expenses", "--balances", "all"}));
  const ordered_json object = Object(RunProgram(place.ImportArguments(
      "ald.kpf", {"--expenses", "--balances", "planned", "--growth-expenses", "5", "--json"})));
  ASSERT_EQ(object.at("changes").size(), 1U);
  const ordered_json& table = object.at("changes")[0];
  EXPECT_EQ(table.at("id"), "20000000000000000000000000000600");
  EXPECT_EQ(table.at("title"), "Planned expenses");
  EXPECT_EQ(table.at("added"), ordered_json::array());
  std::size_t rates = 0;
  for (const ordered_json& cell : table.at("changed")) {
    if (cell.at("heading") != "Rate") continue;
    EXPECT_EQ(cell.at("before"), "0");
    EXPECT_EQ(cell.at("after"), "0.05");
    EXPECT_NE(cell.at("name"), "*null*");
    ++rates;
  }
  EXPECT_GT(rates, 5U);
  std::size_t counted = 0;
  for (const ordered_json& counts : object.at("tables"))
    counted += counts.at("cells_changed").get<std::size_t>();
  EXPECT_EQ(table.at("changed").size(), counted);
}

TEST(ImportJson, HasTheCellsOfAddedRows) {
  const Workplace place;
  place.NurseryYear();
  const ordered_json object = Object(RunProgram(
      place.ImportArguments("ald.kpf", {"--expenses", "--balances", "planned", "--dry-run", "--json"})));
  std::map<std::string, std::string> january;
  for (const ordered_json& table : object.at("changes")) {
    for (const ordered_json& row : table.at("added")) {
      const Words headings = row.at("headings");
      const auto column = std::ranges::find(headings, "Jan") - headings.begin();
      ASSERT_EQ(row.at("cells").size(), headings.size());
      january.emplace(row.at("name"), row.at("cells").at(static_cast<std::size_t>(column)));
    }
  }
  EXPECT_TRUE(january["Insurance"].starts_with("=2600* (1 + B")) << object.at("changes");
}

TEST(ImportJson, ReportsThatNothingChanged) {
  const Workplace place;
  place.Nursery();
  const Words arguments = place.ImportArguments("ald.kpf", {"--expenses", "--json"});
  RunProgram(arguments);
  const ordered_json object = Object(RunProgram(arguments));
  EXPECT_EQ(object.at("result"), "unchanged");
  EXPECT_FALSE(object.at("tables").empty());
}

TEST(ImportJson, ReportsADryRun) {
  const Workplace place;
  place.Nursery();
  const ProgramRun run = RunProgram(place.ImportArguments("ald.kpf", {"--expenses", "--json", "--dry-run"}));
  EXPECT_EQ(run.code, 0);
  EXPECT_EQ(Object(run).at("result"), "dry-run");
}

TEST(ImportJson, ReportsWrongUsage) {
  for (const Words& arguments : {Words{"import", "--json"}, Words{"import", "--plan", "--json"},
                                 Words{"import", "--json", "--plan", "p", "--frob"},
                                 Words{"import", "--json", "--plan", "p", "--product", "x"},
                                 Words{"import", "--json", "--plan", "p"}}) {
    const ProgramRun run = RunProgram(arguments);
    EXPECT_EQ(run.code, 2);
    const ordered_json object = Object(run);
    EXPECT_EQ(object.at("result"), "wrong-usage");
    EXPECT_EQ(object.at("error_number"), 5);
    EXPECT_NE(object.at("error_description"), "");
    EXPECT_EQ(object.at("events"), ordered_json::array());
    EXPECT_EQ(object.at("tables"), ordered_json::array());
    EXPECT_EQ(run.err.find("krnqb: wrong usage: "), 0U) << run.err;
    EXPECT_TRUE(run.err.ends_with("; " + object.at("remedy").get<std::string>() + "\n")) << run.err;
  }
}

TEST(ImportJson, ReportsAFailureBeforeTheImport) {
  const Workplace place;
  const ProgramRun run = RunProgram(place.ImportArguments("ald.kpf", {"--expenses", "--json"}));
  EXPECT_EQ(run.code, 1);
  const ordered_json object = Object(run);
  EXPECT_EQ(object.at("result"), "failed");
  EXPECT_EQ(object.at("error_number"), -2147220472);
  EXPECT_EQ(object.at("error_description"), "There is no company file " + (place / "nursery.qbw") + ".");
  EXPECT_NE(object.at("remedy"), "");
  EXPECT_TRUE(run.err.ends_with("; " + object.at("remedy").get<std::string>() + "\n")) << run.err;
  EXPECT_TRUE(object.at("company").is_null());
  EXPECT_EQ(object.at("events"), ordered_json::array());
}

TEST(ImportJson, ReportsAFailureDuringTheImportWithTheEventsBeforeIt) {
  const Workplace place;
  const std::string company = place / "nursery.qbw";
  RunProgram({"company", "new", company, "--name", "Old", "--fiscal-month", "1", "--processor", "1.0"});
  const ProgramRun run = RunProgram(place.ImportArguments("ald.kpf", {"--expenses", "--json"}));
  EXPECT_EQ(run.code, 1);
  const ordered_json object = Object(run);
  EXPECT_EQ(object.at("result"), "failed");
  EXPECT_EQ(object.at("error_number"), -2147221504);
  EXPECT_EQ(object.at("error_description"), "Your QuickBooks must be updated to R2.");
  EXPECT_NE(run.err.find("; use a company whose processor answers qbXML 1.1; "), std::string::npos)
      << run.err;
  EXPECT_EQ(object.at("events"), ordered_json{Progress(20)});
  EXPECT_EQ(object.at("tables"), ordered_json::array());
}

class IncompleteJson : public testing::Test {
 protected:
  void SetUp() override {
    place.Nursery();
    RunProgram(place.ImportArguments("ald.kpf", {"--expenses", "--dry-run", "--record", recording}));
    tests::EditRecording(recording, "requestID=\"4\"", [](auto& line) {
      line["response"] = tests::AccountsAnswer(
          4, R"(statusCode="3260" statusSeverity="Error" statusMessage="No permission")", {"Rent"});
    });
  }

  ProgramRun Import(const std::string& more) const {
    return RunProgram(
        {"import", "--replay", recording, "--plan", place / "ald.kpf", "--expenses", "--json", more});
  }

  static void ExpectOmission(const ordered_json& object) {
    EXPECT_EQ(object.at("incomplete"),
              (ordered_json{{{"kind", "status"},
                             {"text", "request 4 (expense accounts): status 3260 (Error): No permission"},
                             {"number", 3260},
                             {"request", 4}}}));
  }

  const Workplace place;
  const std::string recording = place / "exchange.jsonl";
};

TEST_F(IncompleteJson, ListsOmissionsWhenNothingIsWritten) {
  const ProgramRun run = Import("--quiet");
  EXPECT_EQ(run.code, 1);
  const ordered_json object = Object(run);
  EXPECT_EQ(object.at("result"), "failed");
  ExpectOmission(object);
  EXPECT_EQ(object.at("tables"), ordered_json::array());
  EXPECT_EQ(object.at("events").size(), 6U);
}

TEST_F(IncompleteJson, ListsOmissionsWhenTheyAreAccepted) {
  const ProgramRun run = Import("--accept-incomplete");
  EXPECT_EQ(run.code, 3);
  const ordered_json object = Object(run);
  EXPECT_EQ(object.at("result"), "incomplete");
  EXPECT_EQ(object.at("error_number"), 0);
  ExpectOmission(object);
  EXPECT_FALSE(object.at("tables").empty());
}

TEST(ImportJson, ReplacesInvalidUtf8) {
  const ProgramRun run = RunProgram({"import", "--json", "--plan", "p", "--frob\xFF"});
  EXPECT_EQ(run.code, 2);
  EXPECT_NE(Object(run).at("error_description").get<std::string>().find("\xEF\xBF\xBD"), std::string::npos);
}

TEST(OtherCommandsJson, ReportsWrongUsageIfJsonIsAmongTheArguments) {
  for (const Words& arguments : {Words{"plan", "show", "--json"}, Words{"tables", "--json"}, Words{"--json"},
                                 Words{"accounts", "--json", "both"}}) {
    const ProgramRun run = RunProgram(arguments);
    EXPECT_EQ(run.code, 2);
    const auto object = ordered_json::parse(run.out);
    EXPECT_EQ(object.size(), 4U);
    EXPECT_EQ(object.at("result"), "wrong-usage");
    EXPECT_NE(object.at("remedy"), "");
  }
}

}  // namespace
}  // namespace krnqb::cli
