#include <gtest/gtest.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <sstream>

#include "cli/workplace.h"
#include "support/characters.h"

namespace krnqb::cli {
namespace {

using tests::ProgramRun;
using tests::RunProgram;
using tests::Workplace;

constexpr std::string_view smallPlan =
    "<plan product=\"bri\" start=\"2003-07\"><tables>"
    "<tableitem id=\"20000000000000000000000000002000\"><lastsavedid>1</lastsavedid><tableblocks>"
    "<block id=\"db_contributionmargin_cat2\" startrow=\"5\"><row><c>Café</c><c>*null*</c></row></block>"
    "</tableblocks></tableitem>"
    "<tableitem id=\"21000000000000000000000000002000\"><lastsavedid>1</lastsavedid><tableblocks>"
    "<block id=\"db_contributionmargin_cat2_actual\" startrow=\"5\"><row><c>a\tb</c></row></block>"
    "</tableblocks></tableitem></tables></plan>";

TEST(PlanNew, CreatesAPlanThatShowsItsTables) {
  const Workplace place;
  const std::string file = place / "new.kpf";
  const ProgramRun made = RunProgram({"plan", "new", file, "--product", "ald", "--start", "2003-01"});
  EXPECT_EQ(made.code, 0);
  EXPECT_EQ(made.err, "");
  EXPECT_EQ(made.out, "Created " + file + ": plan of product ald, from 2003-01.\n");
  const ProgramRun shown = RunProgram({"plan", "show", file});
  EXPECT_EQ(shown.code, 0);
  EXPECT_NE(shown.out.find("Planned sales and costs (20000000000000000000000000000400)\n"),
            std::string::npos);
  EXPECT_NE(shown.out.find("Past performance"), std::string::npos);
}

TEST(PlanNew, DoesNotReplaceAFile) {
  const Workplace place;
  const std::string before = tests::ReadText(place / "ald.kpf");
  const ProgramRun run =
      RunProgram({"plan", "new", place / "ald.kpf", "--product", "ald", "--start", "2003-01"});
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.err.find("krnqb: cannot create "), 0U) << run.err;
  EXPECT_EQ(tests::ReadText(place / "ald.kpf"), before);
}

TEST(PlanShow, PrintsCellByCellInAscii) {
  const Workplace place;
  tests::WriteText(place / "small.kpf", smallPlan);
  EXPECT_EQ(RunProgram({"plan", "show", place / "small.kpf", "--cells"}).out,
            "20000000000000000000000000002000\tdb_contributionmargin_cat2\t0\t0\tCaf\\u00e9\n"
            "20000000000000000000000000002000\tdb_contributionmargin_cat2\t0\t1\t*null*\n"
            "21000000000000000000000000002000\tdb_contributionmargin_cat2_actual\t0\t0\ta\\tb\n");
}

TEST(PlanShow, ShowsOnlyTheTableAskedFor) {
  const Workplace place;
  tests::WriteText(place / "small.kpf", smallPlan);
  const std::string actual = "21000000000000000000000000002000";
  EXPECT_EQ(RunProgram({"plan", "show", place / "small.kpf", "--cells", "--table", actual}).out,
            actual + "\tdb_contributionmargin_cat2_actual\t0\t0\ta\\tb\n");
  const std::string view = RunProgram({"plan", "show", place / "small.kpf", "--table", actual}).out;
  EXPECT_EQ(view.find("Actual contribution margin expenses (" + actual + ")\n"), 0U) << view;
  EXPECT_EQ(view.find("Planned"), std::string::npos) << view;
  const auto json = nlohmann::json::parse(
      RunProgram({"plan", "show", place / "small.kpf", "--json", "--table", actual}).out);
  ASSERT_EQ(json.at("tables").size(), 1U);
  EXPECT_EQ(json.at("tables")[0].at("id"), actual);
}

TEST(PlanShow, PrintsJson) {
  const Workplace place;
  tests::WriteText(place / "small.kpf", smallPlan);
  const ProgramRun run = RunProgram({"plan", "show", place / "small.kpf", "--json"});
  EXPECT_EQ(run.code, 0);
  auto json = nlohmann::json::parse(run.out);
  EXPECT_EQ(json.at("path"), place / "small.kpf");
  json.erase("path");
  EXPECT_EQ(json,
            nlohmann::json::parse(R"({"result": "done", "product": "bri", "start": "2003-07", "tables": [
      {"id": "20000000000000000000000000002000", "title": "Planned contribution margin expenses", "blocks": [
        {"id": "db_contributionmargin_cat2", "start_row": "5", "rows": [["Café", "*null*"]]}]},
      {"id": "21000000000000000000000000002000", "title": "Actual contribution margin expenses", "blocks": [
        {"id": "db_contributionmargin_cat2_actual", "start_row": "5", "rows": [["a\tb"]]}]}]})"));
}

TEST(PlanShow, PrintsMissingAttributesAsNull) {
  const Workplace place;
  tests::WriteText(place / "bare.kpf", "<plan><tables/></plan>");
  const auto json = nlohmann::json::parse(RunProgram({"plan", "show", place / "bare.kpf", "--json"}).out);
  EXPECT_TRUE(json.at("product").is_null());
  EXPECT_TRUE(json.at("start").is_null());
  EXPECT_TRUE(json.at("tables").empty());
}

TEST(PlanShow, ListsThePlansTablesIfTheOneAskedForIsMissing) {
  const Workplace place;
  tests::WriteText(place / "small.kpf", smallPlan);
  const ProgramRun run = RunProgram({"plan", "show", place / "small.kpf", "--table", "20"});
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.err, "krnqb: showing the plan failed: " + (place / "small.kpf") +
                         " has no table \"20\"; did you mean \"20000000000000000000000000002000\" or "
                         "\"21000000000000000000000000002000\"?\n");
  EXPECT_EQ(RunProgram({"plan", "show", place / "small.kpf", "--table", "sales"}).err,
            "krnqb: showing the plan failed: " + (place / "small.kpf") +
                " has no table \"sales\"; its tables are \"Planned contribution margin expenses\", \"Actual "
                "contribution margin expenses\"\n");
  EXPECT_EQ(RunProgram({"plan", "show", place / "ald.kpf", "--table", "planned expense"}).err,
            "krnqb: showing the plan failed: " + (place / "ald.kpf") +
                " has no table \"planned expense\"; did you mean \"Planned expenses\"?\n");
}

TEST(PlanShow, FindsATableByItsTitle) {
  const Workplace place;
  const std::string byId =
      RunProgram({"plan", "show", place / "ald.kpf", "--table", "20000000000000000000000000000600"}).out;
  for (const std::string title : {"Planned expenses", "planned EXPENSES"}) {
    const ProgramRun run = RunProgram({"plan", "show", place / "ald.kpf", "--table", title});
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(run.out, byId);
  }
  const auto json = nlohmann::json::parse(
      RunProgram({"plan", "show", place / "ald.kpf", "--json", "--table", "past performance"}).out);
  ASSERT_EQ(json.at("tables").size(), 1U);
  EXPECT_EQ(json.at("tables")[0].at("title"), "Past performance");
}

TEST(PlanShow, AsksForTheIdIfTwoTablesShareATitle) {
  const Workplace place;
  const std::string blocks = "<tableblocks/></tableitem>";
  tests::WriteText(place / "twice.kpf", "<plan><tables><tableitem id=\"20000000000000000000000000000600\">" +
                                            blocks + "<tableitem id=\"20000000000000000000000000010600\">" +
                                            blocks + "</tables></plan>");
  const ProgramRun run = RunProgram({"plan", "show", place / "twice.kpf", "--table", "planned expenses"});
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.err, "krnqb: showing the plan failed: " + (place / "twice.kpf") +
                         " has several tables \"planned expenses\"; give the id: "
                         "\"20000000000000000000000000000600\" or \"20000000000000000000000000010600\"\n");
}

TEST(PlanShow, ComputesGrowthFormulasWithValues) {
  const Workplace place;
  place.NurseryYear();
  ASSERT_EQ(RunProgram(place.ImportArguments("ald.kpf",
                                             {"--expenses", "--balances", "all", "--growth-expenses", "10"}))
                .code,
            0);
  const auto show = [&](const std::string& table, const std::vector<std::string>& more) {
    std::vector<std::string> arguments{"plan", "show", place / "ald.kpf", "--table", table};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return RunProgram(arguments).out;
  };
  EXPECT_NE(show("planned expenses", {}).find("* (1 + B"), std::string::npos);
  const std::string values = show("planned expenses", {"--values"});
  EXPECT_EQ(values.find("* (1 + B"), std::string::npos) << values;
  EXPECT_NE(values.find("  Rent  "), std::string::npos) << values;
  const std::string actual = show("actual expenses", {"--values"});
  EXPECT_NE(actual.find("  (Rent)  "), std::string::npos) << actual;
}

TEST(PlanShow, HasNoLineWiderThanTheTerminal) {
  const Workplace place;
  for (const std::size_t width : {40U, 80U, 300U}) {
    const ProgramRun run = RunProgram({"plan", "show", place / "cor.kpf"},
                                      {.clock = nullptr, .outputWidth = [width] { return width; }});
    std::istringstream lines(run.out);
    std::size_t longest = 0;
    for (std::string line; std::getline(lines, line);) longest = std::max(longest, CharacterCount(line));
    EXPECT_LE(longest, width);
    EXPECT_GT(longest, std::min<std::size_t>(width, 150) - 20);
  }
}

TEST(PlanShow, RejectsTwoOutputFormats) {
  const Workplace place;
  const ProgramRun run = RunProgram({"plan", "show", place / "ald.kpf", "--cells", "--json"});
  EXPECT_EQ(run.code, 2);
  EXPECT_EQ(run.err, "krnqb: wrong usage: --cells and --json are both given; give one of them\n");
  EXPECT_EQ(nlohmann::json::parse(run.out).at("result"), "wrong-usage");
  EXPECT_EQ(RunProgram({"plan", "show", place / "ald.kpf", "--values", "--json"}).err,
            "krnqb: wrong usage: --values and --json are both given; give one of them\n");
  EXPECT_EQ(RunProgram({"plan", "show", place / "ald.kpf", "--values", "--cells"}).err,
            "krnqb: wrong usage: --values and --cells are both given; give one of them\n");
}

TEST(PlanShow, ReportsWhatIsWrongWithAFileThatIsNotAPlan) {
  const Workplace place;
  tests::WriteText(place / "list.xml", "<list/>");
  const ProgramRun run = RunProgram({"plan", "show", place / "list.xml"});
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(
      run.err,
      "krnqb: cannot open the plan " + (place / "list.xml") +
          ": line 1: the root element is \"list\", not \"plan\"; check that the path is that of a plan\n");
}

}  // namespace
}  // namespace krnqb::cli
