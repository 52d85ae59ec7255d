#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "cli/workplace.h"

namespace krnqb::cli {
namespace {

namespace fs = std::filesystem;

using tests::ProgramRun;
using tests::ReadText;
using tests::RunProgram;
using tests::Workplace;
using tests::WriteText;

mode_t ModeOf(const std::string& file) {
  struct stat status {};
  EXPECT_EQ(::stat(file.c_str(), &status), 0) << file;
  return status.st_mode & 0777;
}

TEST(PlanExport, WritesASpreadsheetThatOnlyItsOwnerCanRead) {
  const Workplace place;
  const ProgramRun run = RunProgram({"plan", "export", place / "ald.kpf", "--xlsx", place / "out.xlsx"});
  EXPECT_EQ(run.code, 0);
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.out.find("Wrote " + (place / "out.xlsx") + ": a summary and "), 0U) << run.out;
  EXPECT_TRUE(ReadText(place / "out.xlsx").starts_with("PK"));
  EXPECT_EQ(ModeOf(place / "out.xlsx"), 0600U);
  EXPECT_FALSE(fs::exists(place / "out.xlsx.tmp"));
}

TEST(PlanExport, ReplacesASpreadsheetWithTheSameBytes) {
  const Workplace place;
  const std::vector<std::string> command{"plan", "export", place / "bri.kpf", "--xlsx", place / "out.xlsx"};
  RunProgram(command);
  const std::string first = ReadText(place / "out.xlsx");
  EXPECT_EQ(RunProgram(command).code, 0);
  EXPECT_EQ(ReadText(place / "out.xlsx"), first);
  EXPECT_FALSE(fs::exists(place / "out.xlsx.previous"));
}

TEST(PlanExport, RefusesToReplaceAnythingElse) {
  const Workplace place;
  WriteText(place / "notes.txt", "mine");
  fs::create_directory(place / "folder");
  const std::string plan = ReadText(place / "ald.kpf");
  for (const std::string& output : {place / "notes.txt", place / "folder", place / "ald.kpf",
                                    place / "ald.kpf.bak", place / "ald.kpf.lock"}) {
    const ProgramRun run = RunProgram({"plan", "export", place / "ald.kpf", "--xlsx", output});
    EXPECT_EQ(run.code, 2) << output;
    EXPECT_EQ(run.out, "");
    EXPECT_NE(run.err.find(output.substr(output.rfind('/') + 1)), std::string::npos) << run.err;
  }
  EXPECT_EQ(ReadText(place / "notes.txt"), "mine");
  EXPECT_EQ(ReadText(place / "ald.kpf"), plan);
}

TEST(PlanExport, RefusesTheHistoryAndTheTemporaryNamesOfThePlan) {
  const Workplace place;
  place.NurseryYear();
  RunProgram(place.ImportArguments("ald.kpf", {"--expenses"}));
  const ProgramRun inside =
      RunProgram({"plan", "export", place / "ald.kpf", "--xlsx", place / "ald.kpf.history/out.xlsx"});
  EXPECT_EQ(inside.code, 2) << inside.err;
  fs::copy_file(place / "ald.kpf", place / "out.xlsx.tmp");
  const ProgramRun temporary =
      RunProgram({"plan", "export", place / "out.xlsx.tmp", "--xlsx", place / "out.xlsx"});
  EXPECT_EQ(temporary.code, 2) << temporary.err;
  EXPECT_TRUE(fs::exists(place / "out.xlsx.tmp"));
}

TEST(PlanExport, WritesCsvFilesIntoAFolder) {
  const Workplace place;
  const std::vector<std::string> command{"plan", "export", place / "ald.kpf", "--csv", place / "csv"};
  EXPECT_EQ(RunProgram(command).code, 0);
  EXPECT_EQ(ModeOf(place / "csv"), 0700U);
  EXPECT_EQ(ModeOf(place / "csv/summary.csv"), 0600U);
  EXPECT_EQ(ReadText(place / "csv/02-planned-sales.csv").find("Name,Rate,Jan,"), 0U);
  const ProgramRun again = RunProgram(command);
  EXPECT_EQ(again.code, 0) << again.err;
  WriteText(place / "file", "");
  const ProgramRun file = RunProgram({"plan", "export", place / "ald.kpf", "--csv", place / "file"});
  EXPECT_EQ(file.code, 1);
  EXPECT_EQ(file.err.find("krnqb: cannot create the folder "), 0U) << file.err;
}

TEST(PlanExport, ListsWhatTheJournalOfAnImportHas) {
  const Workplace place;
  place.NurseryYear();
  RunProgram(place.ImportArguments("ald.kpf",
                                   {"--expenses", "--balances", "all", "--journal", place / "left.jsonl"}));
  const ProgramRun run = RunProgram(
      {"plan", "export", place / "ald.kpf", "--csv", place / "csv", "--journal", place / "left.jsonl"});
  EXPECT_EQ(run.code, 0) << run.err;
  const std::string warnings = ReadText(place / "csv/warnings.csv");
  EXPECT_NE(warnings.find("Imported,2003-01-15 12:00:00"), std::string::npos) << warnings;
  EXPECT_NE(warnings.find("Date,Transaction,Account or item,Customer,Reason,Meaning,Period,Amount"),
            std::string::npos);
  EXPECT_NE(warnings.find(",not imported,2002-"), std::string::npos) << warnings;
}

TEST(PlanExport, RefusesAFileThatIsNoJournal) {
  const Workplace place;
  WriteText(place / "left.jsonl", "{\"kind\":\"past-performance-ended\",\"name\":\"x\"}\n{\"kind\":5}\n");
  const ProgramRun run = RunProgram(
      {"plan", "export", place / "ald.kpf", "--csv", place / "csv", "--journal", place / "left.jsonl"});
  EXPECT_EQ(run.code, 1);
  EXPECT_NE(run.err.find("left.jsonl line 2 is not a line of an import's journal; give the file"),
            std::string::npos)
      << run.err;
  EXPECT_FALSE(fs::exists(place / "csv"));
}

TEST(PlanExport, NeedsSomethingToWrite) {
  const Workplace place;
  const ProgramRun run = RunProgram({"plan", "export", place / "ald.kpf"});
  EXPECT_EQ(run.code, 2);
  EXPECT_NE(run.err.find("neither --xlsx nor --csv is given; give --xlsx FILE, --csv DIR or both"),
            std::string::npos)
      << run.err;
}

TEST(PlanExport, FollowsALinkToTheFile) {
  const Workplace place;
  fs::create_symlink(place / "real.xlsx", place / "link.xlsx");
  EXPECT_EQ(RunProgram({"plan", "export", place / "ald.kpf", "--xlsx", place / "link.xlsx"}).code, 0);
  EXPECT_TRUE(fs::is_symlink(place / "link.xlsx"));
  EXPECT_TRUE(ReadText(place / "real.xlsx").starts_with("PK"));
}

}  // namespace
}  // namespace krnqb::cli
