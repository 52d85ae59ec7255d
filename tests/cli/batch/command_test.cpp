#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <sstream>

#include "cli/import/json_output.h"
#include "cli/workplace.h"

namespace krnqb::cli {
namespace {

namespace fs = std::filesystem;

using nlohmann::json;
using tests::ProgramRun;
using tests::ReadText;
using tests::RunProgram;
using tests::Words;
using tests::WriteText;

// A folder with results of imports, written at given seconds after 2003-01-15 12:00 UTC.
class Summary : public testing::Test {
 protected:
  Summary() { fs::create_directory(results); }

  void Write(const std::string& name, const std::string& text, int second) const {
    const std::string file = results + '/' + name + ".json";
    WriteText(file, text);
    const std::chrono::sys_seconds time{std::chrono::seconds(1'042'632'000 + second)};
    fs::last_write_time(file, std::chrono::file_clock::from_sys(time));
  }

  void WriteImported(const std::string& name, int second) const {
    ImportOutcome outcome;
    outcome.result = ImportResult::Imported;
    plan_file::TableChange& table = outcome.tables.emplace_back();
    table.rowsAdded = 3;
    table.cellsChanged = 40;
    table.formulasCleared = 5;
    outcome.basis =
        ImportBasis{.options = {},
                    .product = {},
                    .planStart = {},
                    .importStart = YearMonth{.year = 2002, .month = 1},
                    .company = ImportCompany{
                        .path = name + ".qbw", .name = "Garden of " + name, .processorVersion = "1.1"}};
    outcome.basis->options.planFile = name + ".kpf";
    Write(name, ImportOutcomeJson(outcome), second);
  }

  void WriteFailed(const std::string& name, const std::string& reason, int second) const {
    ImportOutcome outcome;
    outcome.errorDescription = reason;
    outcome.remedy = "mend it";
    outcome.basis =
        ImportBasis{.options = {}, .product = {}, .planStart = {}, .importStart = {}, .company = {}};
    outcome.basis->options.planFile = name + ".kpf";
    Write(name, ImportOutcomeJson(outcome), second);
  }

  ProgramRun Run(const Words& more = {}) const { return RunProgram(tests::With({"summary", results}, more)); }

  krnqb::tests::TemporaryFolder folder;
  const std::string results = (folder / "results").string();
};

TEST_F(Summary, NamesWhoIsNotDoneAndWhyTheNewestFirst) {
  WriteImported("ann", 5);
  WriteFailed("bob", "the plan is missing", 3);
  Write("cut", "{\"result\"", 4);
  WriteImported("dan", 6);
  const ProgramRun run = Run();
  EXPECT_EQ(run.code, 3);
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.out,
            "4 imports in " + results +
                ": 2 done, 2 not done (2 imported, 1 failed, 1 unreadable).\n"
                "\n"
                "Not done, the newest first\n"
                "  Name  Written (UTC)        Result      Company  Plan     Why; what to do\n"
                "  cut   2003-01-15 12:00:04  unreadable  ?        ?        the file is cut off or is "
                "not JSON; run the import again\n"
                "  bob   2003-01-15 12:00:03  failed      ?        bob.kpf  the plan is missing; mend it\n"
                "\n"
                "Done, the newest first\n"
                "  Name  Written (UTC)        Result    Company        Plan     Rows  Cells  Left out  "
                "Warnings\n"
                "  dan   2003-01-15 12:00:06  imported  Garden of dan  dan.kpf     3     40         0\n"
                "  ann   2003-01-15 12:00:05  imported  Garden of ann  ann.kpf     3     40         0\n"
                "\n"
                "Totals\n"
                "  Rows added           6\n"
                "  Cells changed       80\n"
                "  Formulas cleared    10\n"
                "  Amounts left out     0\n"
                "  Their sum         0.00\n"
                "  Seconds of work    0.0\n");
}

TEST_F(Summary, SucceedsIfAllAreDone) {
  WriteImported("ann", 5);
  WriteImported("dan", 5);
  const ProgramRun run = Run({"--json"});
  EXPECT_EQ(run.code, 0) << run.err;
  const json summary = json::parse(run.out);
  EXPECT_EQ(summary.at("result"), "done");
  EXPECT_EQ(summary.at("imports").at(0).at("name"), "ann");
  EXPECT_EQ(summary.at("imports").at(0).at("written"), "2003-01-15T12:00:05Z");
  EXPECT_EQ(summary.at("totals").at("rows_added"), 6);
}

TEST_F(Summary, ReadsWhatAnImportPrints) {
  const tests::Workplace place;
  place.NurseryYear();
  const ProgramRun import =
      RunProgram(place.ImportArguments("ald.kpf", {"--expenses", "--income", "--balances", "all", "--json"}));
  ASSERT_EQ(import.code, 0) << import.err;
  Write("nursery", import.out, 0);
  const json summary = json::parse(Run({"--json"}).out);
  const json printed = json::parse(import.out);
  const json& line = summary.at("imports").at(0);
  EXPECT_EQ(line.at("company"), "Hollow Creek Nursery");
  EXPECT_EQ(line.at("plan"), place / "ald.kpf");
  EXPECT_EQ(line.at("left_out"), printed.at("skipped").at("count"));
  EXPECT_EQ(line.at("sum_left_out"), printed.at("skipped").at("sum"));
  std::int64_t cells = 0;
  for (const json& table : printed.at("tables")) cells += table.at("cells_changed").get<std::int64_t>();
  EXPECT_GT(cells, 50);
  EXPECT_EQ(summary.at("totals").at("cells_changed"), cells);
  std::size_t names = 0;
  for (const json& warning : printed.at("warnings")) names += warning.at("accounts").size();
  std::size_t counted = 0;
  for (const json& warning : summary.at("warnings")) counted += warning.at("names").get<std::size_t>();
  EXPECT_GT(names, 0U);
  EXPECT_EQ(counted, names);
}

TEST_F(Summary, ListsWhatIsNoFileAndGoesOn) {
  fs::create_directory(results + "/folder.json");
  fs::create_symlink("nowhere", results + "/link.json");
  WriteText(results + "/ann.err", "other files are not read");
  WriteImported("ann", 1);
  const json summary = json::parse(Run({"--json"}).out);
  ASSERT_EQ(summary.at("imports").size(), 3U);
  EXPECT_EQ(summary.at("totals").at("done"), 1);
  for (const json& line : summary.at("imports")) {
    if (line.at("name") == "ann") continue;
    EXPECT_EQ(line.at("result"), "unreadable");
    EXPECT_NE(line.at("reason").get<std::string>().find(line.at("name").get<std::string>() + ".json"),
              std::string::npos)
        << line;
  }
}

TEST_F(Summary, WritesAPageAndALineForEachImportForTheirOwnerAlone) {
  WriteImported("=ann <&>", 5);
  WriteFailed("bob", "say \"why\",\nplease", 3);
  const std::string page = (folder / "imports.html").string();
  const std::string lines = (folder / "imports.csv").string();
  const ProgramRun run = Run({"--html", page, "--csv", lines});
  EXPECT_EQ(run.code, 3);
  EXPECT_EQ(run.out,
            "2 imports in " + results + ": 1 done, 1 not done. Wrote " + page + " and " + lines + ".\n");
  for (const std::string& file : {page, lines})
    EXPECT_EQ(fs::status(file).permissions(), fs::perms::owner_read | fs::perms::owner_write);
  const std::string html = ReadText(page);
  EXPECT_NE(html.find("Content-Security-Policy"), std::string::npos);
  EXPECT_NE(html.find("=ann &lt;&amp;&gt;"), std::string::npos);
  EXPECT_EQ(html.find("<&>"), std::string::npos);
  EXPECT_NE(html.find("1 of 2 imports are done, 1 are not."), std::string::npos);
  const std::string csv = ReadText(lines);
  EXPECT_NE(csv.find("\r\n'=ann <&>,2003-01-15 12:00:05,imported,yes,Garden of =ann <&>,'=ann <&>.qbw,"),
            std::string::npos)
      << csv;
  EXPECT_NE(
      csv.find(
          "\r\nbob,2003-01-15 12:00:03,failed,no,,,bob.kpf,,0,0,0,0,0.00,0,,\"say \"\"why\"\",\nplease\","
          "mend it\r\n"),
      std::string::npos)
      << csv;
  EXPECT_EQ(fs::directory_iterator(folder.Path())->path().string().find(".tmp"), std::string::npos);
}

TEST_F(Summary, ReplacesAnEarlierPageAndKeepsItIfTheOtherFileCannotBeWritten) {
  WriteImported("ann", 5);
  const std::string page = (folder / "imports.html").string();
  WriteText(page, "earlier");
  const ProgramRun run = Run({"--html", page, "--csv", (folder / "none" / "imports.csv").string()});
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(ReadText(page), "earlier");
  EXPECT_EQ(Run({"--html", page}).code, 0);
  EXPECT_NE(ReadText(page).find("<!DOCTYPE html>"), std::string::npos);
}

TEST_F(Summary, WritesOverNeitherAResultNorItsOtherFile) {
  WriteImported("ann", 5);
  const std::string result = results + "/ann.json";
  const std::string before = ReadText(result);
  fs::create_hard_link(result, folder / "link");
  const std::string same = (folder / "same").string();
  const std::vector<std::pair<Words, std::string>> cases{
      {{"--csv", result}, "--csv " + result + " and the result " + result + " are the same file"},
      {{"--html", (folder / "link").string()},
       "--html " + (folder / "link").string() + " and the result " + result + " are the same file"},
      {{"--html", same, "--csv", same}, "--csv " + same + " and --html " + same + " are the same file"},
      {{"--csv", folder.Path().string()}, "--csv " + folder.Path().string() + " is not a regular file"}};
  for (const auto& [words, why] : cases) {
    const ProgramRun run = Run(words);
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(run.err, "krnqb: wrong usage: " + why + "; give another file\n");
  }
  EXPECT_EQ(ReadText(result), before);
  EXPECT_FALSE(fs::exists(same));
}

TEST_F(Summary, FailsWithoutResults) {
  EXPECT_EQ(Run().err,
            "krnqb: summarizing failed: the folder " + results +
                " has no files *.json; write the output of each krnqb import --json into a file there\n");
  const ProgramRun run = RunProgram({"summary", results + "/none", "--json"});
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.err, "krnqb: summarizing failed: cannot read the folder " + results +
                         "/none: No such file or directory; give the folder with the results of krnqb import "
                         "--json\n");
}

TEST_F(Summary, ReadsTenThousandResults) {
  const char* const nightly = std::getenv("KRNQB_NIGHTLY");
  const int count = nightly != nullptr && std::string_view(nightly) == "1" ? 10'000 : 500;
  for (int number = 0; number < count; ++number) WriteImported("c" + std::to_string(number), number);
  const std::string lines = (folder / "imports.csv").string();
  EXPECT_EQ(Run({"--csv", lines}).code, 0);
  std::istringstream csv(ReadText(lines));
  int found = -1;
  for (std::string line; std::getline(csv, line);) ++found;
  EXPECT_EQ(found, count);
}

}  // namespace
}  // namespace krnqb::cli
