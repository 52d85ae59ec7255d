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
  EXPECT_EQ(members, (Words{"result", "error_number", "error_description", "events", "tables", "incomplete",
                            "skipped", "elapsed_ms"}));
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
    EXPECT_EQ(object.size(), 3U);
    EXPECT_EQ(object.at("result"), "wrong-usage");
  }
}

}  // namespace
}  // namespace krnqb::cli
