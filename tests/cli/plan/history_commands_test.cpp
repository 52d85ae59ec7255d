#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>

#include "cli/workplace.h"
#include "fakes/fixed_clock.h"

namespace krnqb::cli {
namespace {

namespace fs = std::filesystem;

using nlohmann::json;
using tests::ProgramRun;
using tests::ReadText;
using tests::RunProgram;
using tests::Workplace;
using tests::WriteText;

// A plan into which three imports were made: account rows, actual amounts, planned amounts.
class HistoryCommands : public testing::Test {
 protected:
  void SetUp() override {
    place.NurseryYear();
    texts.push_back(ReadText(plan));
    Import({"--expenses", "--income"});
    Import({"--expenses", "--income", "--balances", "actual"});
    Import({"--expenses", "--income", "--balances", "all", "--growth-income", "5"});
  }

  ProgramRun Import(const std::vector<std::string>& options) {
    ProgramRun run = RunProgram(place.ImportArguments("ald.kpf", options));
    EXPECT_EQ(run.code, 0) << run.err;
    texts.push_back(ReadText(plan));
    return run;
  }
  ProgramRun Undo(const std::vector<std::string>& options = {}) const {
    std::vector<std::string> arguments{"plan", "undo", plan};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return RunProgram(arguments);
  }
  std::string Kept(std::string_view name) const { return plan + ".history/" + std::string(name); }

  const Workplace place;
  const std::string plan = place / "ald.kpf";
  std::vector<std::string> texts;
};

TEST_F(HistoryCommands, UndoThreeImportsByteForByte) {
  EXPECT_EQ(Undo().out, plan + " is version 3 (before the import of 2003-01-15 12:00) again.\n" +
                            "The version that it replaces is kept as version 4: krnqb plan undo " + plan +
                            " --to 4\n");
  EXPECT_EQ(ReadText(plan), texts[2]);
  EXPECT_EQ(Undo().code, 0);
  EXPECT_EQ(ReadText(plan), texts[1]);
  EXPECT_EQ(Undo().code, 0);
  EXPECT_EQ(ReadText(plan), texts[0]);
  const ProgramRun further = Undo();
  EXPECT_EQ(further.code, 1);
  EXPECT_EQ(
      further.err,
      "krnqb: no import is left to undo in " + plan +
          ": it is the version before the first one; list the versions with krnqb plan history and give the "
          "number of one\n");
  EXPECT_EQ(Undo({"--to", "4"}).code, 0);
  EXPECT_EQ(ReadText(plan), texts[3]);
  EXPECT_EQ(Undo({"--to", "4"}).out,
            plan + " is version 4 (before the undo of 2003-01-15 12:00) already and was not written.\n");
}

TEST_F(HistoryCommands, TakesTheMomentFromTheClock) {
  const auto clock = std::make_shared<fakes::FixedClock>(
      LocalDateTime{.year = 2003, .month = 2, .day = 3, .hour = 4, .minute = 5, .second = 6});
  EXPECT_EQ(RunProgram({"plan", "undo", plan}, {.clock = clock, .errorIsTerminal = false}).code, 0);
  EXPECT_EQ(json::parse(ReadText(Kept("0003.json"))).at("when"), "2003-01-15T12:00:00");
  EXPECT_EQ(json::parse(ReadText(Kept("0004.json"))).at("when"), "2003-02-03T04:05:06");
}

TEST_F(HistoryCommands, DescribeTheImport) {
  const json described = json::parse(ReadText(Kept("0003.json")));
  EXPECT_EQ(described.at("settings"), (json{{"product", "ald"},
                                            {"plan_start", "2003-01"},
                                            {"options",
                                             {"--company " + (place / "nursery.qbw"), "--expenses",
                                              "--income", "--balances all", "--growth-income 5"}}}));
  EXPECT_EQ(described.at("period"), (json{{"from", "2002-01"}, {"to", "2002-12"}}));
  EXPECT_GT(described.at("cells_changed"), 0);
  EXPECT_EQ(described.at("rows_added"), 0);
  EXPECT_GT(json::parse(ReadText(Kept("0001.json"))).at("rows_added"), 0);
}

TEST_F(HistoryCommands, ListTheVersions) {
  EXPECT_EQ(Undo().code, 0);
  WriteText(plan, ReadText(plan) + "<!-- edited -->");
  const ProgramRun run = RunProgram({"plan", "history", plan});
  EXPECT_EQ(run.code, 0) << run.err;
  EXPECT_EQ(run.err, "");
  const auto count = [&](const char* name, const char* member) {
    return json::parse(ReadText(Kept(name))).at(member).get<std::int64_t>();
  };
  const auto line = [](int number, const char* by, const char* from, const std::string& rows,
                       const std::string& cells, const char* origin) {
    return fmt::format("{:>7}  2003-01-15 12:00  {:<9}  {:<11}  {:>4}  {:>5}  {}\n", number, by, from, rows,
                       cells, origin);
  };
  const auto importLine = [&](int number, const char* file, const char* origin) {
    return line(number, "import", "2002-01", fmt::format("{}", count(file, "rows_added")),
                fmt::format("{}", count(file, "cells_changed")), origin);
  };
  EXPECT_EQ(
      run.out,
      "Version  Replaced          By         Months from  Rows  Cells  Holds the plan\n" +
          importLine(1, "0001.json", "before any import") + importLine(2, "0002.json", "after import 1") +
          importLine(3, "0003.json", "after import 2") + line(4, "undo to 3", "", "", "", "after import 3") +
          "The plan is the result of import 2, and another program has changed it since.\n"
          "To bring back version 2: krnqb plan undo " +
          plan + " --force\n" + "To bring back another one: krnqb plan undo " + plan + " --force --to N\n");
}

TEST_F(HistoryCommands, ListTheVersionsAsJson) {
  const json listed = json::parse(RunProgram({"plan", "history", plan, "--json"}).out);
  EXPECT_EQ(listed.at("result"), "done");
  EXPECT_EQ(listed.at("path"), plan);
  EXPECT_EQ(listed.at("history"), plan + ".history");
  EXPECT_EQ(listed.at("plan").at("import"), 3);
  EXPECT_EQ(listed.at("plan").at("as_written"), true);
  ASSERT_EQ(listed.at("versions").size(), 3U);
  json first = listed.at("versions")[0];
  EXPECT_EQ(first.at("file"), Kept("0001.kpf"));
  EXPECT_TRUE(first.at("fault").is_null());
  first.erase("file");
  first.erase("fault");
  EXPECT_EQ(first, json::parse(ReadText(Kept("0001.json"))));
}

TEST_F(HistoryCommands, NameWhatIsDamaged) {
  WriteText(Kept("0002.kpf"), "changed");
  WriteText(Kept("notes.txt"), "mine");
  const ProgramRun run = RunProgram({"plan", "history", plan, "--json"});
  EXPECT_EQ(run.code, 3);
  EXPECT_EQ(run.err, "krnqb: warning: cannot use version 2 of the history: another program has changed " +
                         Kept("0002.kpf") +
                         "; choose another version, or copy the file over the plan yourself\n"
                         "krnqb: warning: " +
                         Kept("notes.txt") + " is not part of the history and is left alone\n");
  const json listed = json::parse(run.out);
  EXPECT_EQ(listed.at("result"), "incomplete");
  EXPECT_FALSE(listed.at("versions")[1].at("fault").is_null());
  EXPECT_EQ(listed.at("foreign_files"), json::array({"notes.txt"}));
}

TEST_F(HistoryCommands, ShowWhatTheLastImportHasChanged) {
  const ProgramRun run = RunProgram({"plan", "diff", plan});
  EXPECT_EQ(run.code, 0) << run.err;
  EXPECT_EQ(run.out.find("From version 3 (before the import of 2003-01-15 12:00) to " + plan +
                         ":\n\nPlanned sales and costs\n"),
            0U)
      << run.out;
  EXPECT_NE(run.out.find("  Block          Row                 Column      Before                 After\n"
                         "  Sales          Plant Sales         Rate             0                  0.05\n"
                         "  Sales          Plant Sales         Jan            900     =434.4 * (1 + B6)\n"),
            std::string::npos)
      << run.out;
  EXPECT_EQ(run.out.find("Actual"), std::string::npos) << "the actual amounts were there already";
}

TEST_F(HistoryCommands, CompareTwoVersionsAsJson) {
  const ProgramRun run = RunProgram({"plan", "diff", plan, "1", "2", "--json"});
  EXPECT_EQ(run.code, 0) << run.err;
  const json differences = json::parse(run.out);
  EXPECT_EQ(differences.at("before"), (json{{"version", 1}, {"path", Kept("0001.kpf")}}));
  EXPECT_EQ(differences.at("after"), (json{{"version", 2}, {"path", Kept("0002.kpf")}}));
  std::size_t added = 0;
  for (const json& table : differences.at("changes")) added += table.at("added").size();
  EXPECT_EQ(added, json::parse(ReadText(Kept("0001.json"))).at("rows_added").get<std::size_t>());
  const json toPlan = json::parse(RunProgram({"plan", "diff", plan, "1", "--json"}).out);
  EXPECT_TRUE(toPlan.at("after").at("version").is_null());
  EXPECT_EQ(toPlan.at("after").at("path"), plan);
}

TEST_F(HistoryCommands, ShowEqualNeighboursInOneLine) {
  const ProgramRun run = RunProgram({"plan", "diff", plan, "1", "2"});
  EXPECT_NE(
      run.out.find("  Sales                           Landscaping         Rate to Dec    (no row)      0\n"),
      std::string::npos)
      << run.out;
  EXPECT_NE(
      run.out.find("  Sales                           Total Sales         Jan to Dec   (formulas)      ·\n"),
      std::string::npos)
      << run.out;
}

TEST_F(HistoryCommands, SayThatVersionsAreEqual) {
  const std::string version = "version 2 (before the import of 2003-01-15 12:00)";
  EXPECT_EQ(RunProgram({"plan", "diff", plan, "2", "2"}).out,
            "No cell differs between " + version + " and " + version + ".\n");
}

TEST_F(HistoryCommands, KeepNothingWithoutAChange) {
  const ProgramRun again = RunProgram(place.ImportArguments(
      "ald.kpf", {"--expenses", "--income", "--balances", "all", "--growth-income", "5"}));
  EXPECT_EQ(again.code, 0);
  EXPECT_EQ(again.out.find("plan undo"), std::string::npos);
  EXPECT_EQ(
      RunProgram(place.ImportArguments("ald.kpf", {"--expenses", "--balances", "none", "--dry-run"})).code,
      0);
  EXPECT_FALSE(fs::exists(Kept("0004.kpf")));
  EXPECT_FALSE(fs::exists(Kept("0004.json")));
}

TEST_F(HistoryCommands, KeepAsManyVersionsAsAskedFor) {
  Import({"--expenses", "--income", "--balances", "all", "--growth-income", "6", "--keep", "1"});
  EXPECT_TRUE(fs::exists(Kept("0001.kpf")));
  EXPECT_FALSE(fs::exists(Kept("0002.kpf")));
  EXPECT_FALSE(fs::exists(Kept("0003.json")));
  EXPECT_EQ(ReadText(Kept("0004.kpf")), texts[3]);
  EXPECT_EQ(RunProgram(place.ImportArguments("ald.kpf", {"--expenses", "--keep", "0"})).err,
            "krnqb: wrong usage: --keep \"0\" is not a whole number of 1 or more; give a number such as 3\n");
}

TEST_F(HistoryCommands, ReplaceAChangedPlanOnlyByForce) {
  WriteText(plan, "<plan><tables/></plan>");
  const ProgramRun refused = Undo();
  EXPECT_EQ(refused.code, 1);
  EXPECT_EQ(refused.err,
            "krnqb: cannot bring back an earlier version of " + plan +
                ": another program has changed it since krnqb last wrote it; add --force to replace it "
                "all the same; the present version is kept as well\n");
  EXPECT_EQ(ReadText(plan), "<plan><tables/></plan>");
  EXPECT_EQ(Undo({"--force"}).code, 0);
  EXPECT_EQ(ReadText(plan), texts[2]);
  EXPECT_EQ(ReadText(Kept("0004.kpf")), "<plan><tables/></plan>");
}

TEST_F(HistoryCommands, TellHowToUndoTheImport) {
  const ProgramRun run = Import({"--expenses", "--income", "--balances", "all", "--growth-income", "7"});
  EXPECT_NE(run.out.find("Wrote " + plan + ". Its previous version is kept as " + plan +
                         ".bak.\nTo bring it back: krnqb plan undo " + plan + "\n"),
            std::string::npos)
      << run.out;
}

TEST(PlanHistory, SaysThatThereIsNone) {
  const Workplace place;
  const std::string plan = place / "ald.kpf";
  const ProgramRun run = RunProgram({"plan", "history", plan});
  EXPECT_EQ(run.code, 0);
  EXPECT_EQ(run.out, plan + " has no history: no import has written it yet.\n");
  const std::string none = "krnqb: there is no earlier version of " + plan +
                           ": no import has written it yet; import into it first\n";
  EXPECT_EQ(RunProgram({"plan", "diff", plan}).err, none);
  EXPECT_EQ(RunProgram({"plan", "undo", plan}).err, none);
  EXPECT_FALSE(fs::exists(plan + ".lock"));
  EXPECT_FALSE(fs::exists(plan + ".history"));
}

TEST(PlanHistory, NamesAMissingPlan) {
  const Workplace place;
  for (const char* command : {"history", "diff", "undo"}) {
    const ProgramRun run = RunProgram({"plan", command, place / "none.kpf"});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.err, "krnqb: cannot open the plan " + (place / "none.kpf") +
                           ": No such file or directory; check the path\n");
  }
}

TEST(HistoryThatCannotBeKept, KeepsThePlanFromBeingWritten) {
  const Workplace place;
  place.Nursery();
  const std::string plan = place / "ald.kpf";
  const std::string before = ReadText(plan);
  WriteText(plan + ".history", "notes");
  const ProgramRun run = RunProgram(place.ImportArguments("ald.kpf", {"--expenses", "--json"}));
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.err, "krnqb: cannot keep the plan's version in " + plan +
                         ".history: it is not a folder; the plan is unchanged, move it away and try again\n");
  EXPECT_EQ(json::parse(run.out).at("result"), "failed");
  EXPECT_EQ(ReadText(plan), before);
}

}  // namespace
}  // namespace krnqb::cli
