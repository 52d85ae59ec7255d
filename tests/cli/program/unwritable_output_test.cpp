#include <gtest/gtest.h>

#include "build_paths.h"
#include "cli/import/recording_editor.h"
#include "cli/program/child_process.h"
#include "cli/workplace.h"

namespace krnqb::cli {
namespace {

using tests::ReadText;
using tests::RunShell;
using tests::ShellRun;
using tests::Workplace;
using Words = std::vector<std::string>;
namespace fs = std::filesystem;

constexpr const char* notPrinted =
    "krnqb: printing failed: cannot write to standard output; check the disk or the program that reads it\n";
constexpr const char* reportNotPrinted =
    "krnqb: printing the report failed: cannot write to standard output; the command has written its file "
    "and "
    "need not be repeated\n";

// Commands that change nothing, among them imports that write no plan. Each of them prints something.
const std::vector<Words> questions{
    {"--help"},
    {"--version"},
    {"import", "--help"},
    {"tables", "--product", "ald"},
    {"request", "4"},
    {"supports", "1.1", "--company", "nursery.qbw"},
    {"accounts", "income", "--company", "nursery.qbw"},
    {"accounts", "income", "--company", "nursery.qbw", "--json"},
    {"companies", "--quickbooks-folder", "."},
    {"companies", "--quickbooks-folder", ".", "--json"},
    {"company", "info", "nursery.qbw"},
    {"company", "info", "nursery.qbw", "--json"},
    {"company", "check", "nursery.qbw"},
    {"company", "check", "nursery.qbw", "--json"},
    {"company", "check", "--fix", "nursery.qbw"},
    {"company", "check", "--fix", "nursery.qbw", "--json"},
    {"plan", "show", "ald.kpf"},
    {"plan", "show", "ald.kpf", "--cells"},
    {"plan", "show", "ald.kpf", "--json"},
    {"plan", "history", "done.kpf"},
    {"plan", "history", "done.kpf", "--json"},
    {"plan", "diff", "done.kpf"},
    {"plan", "diff", "done.kpf", "--json"},
    {"import", "--company", "nursery.qbw", "--plan", "ald.kpf", "--expenses", "--dry-run"},
    {"import", "--company", "nursery.qbw", "--plan", "ald.kpf", "--expenses", "--dry-run", "--json"},
    {"import", "--company", "nursery.qbw", "--plan", "done.kpf", "--expenses"},
    {"import", "--company", "nursery.qbw", "--plan", "done.kpf", "--expenses", "--json"}};

struct Changing {
  Words words;
  std::string file;  ///< the file that it writes
  int code = 0;
};

// Commands that write a file; they run in this order.
const std::vector<Changing> changing{
    {{"import", "--company", "nursery.qbw", "--plan", "ald.kpf", "--expenses"}, "ald.kpf"},
    {{"import", "--company", "nursery.qbw", "--plan", "ald.kpf", "--income", "--json"}, "ald.kpf"},
    {{"import", "--replay", "partial.jsonl", "--plan", "cor.kpf", "--expenses", "--accept-incomplete"},
     "cor.kpf",
     3},
    {{"plan", "undo", "done.kpf"}, "done.kpf"},
    {{"plan", "new", "new.kpf", "--product", "ald", "--start", "2003-01"}, "new.kpf"},
    {{"company", "new", "new.qbw", "--name", "New", "--fiscal-month", "1", "--processor", "1.1"}, "new.qbw"},
    {{"company", "load", "new.qbw", "accounts.xml"}, "new.qbw"},
    {{"company", "load", "nursery.qbw", "accounts.xml", "faulty.xml"}, "nursery.qbw", 3},
    {{"company", "generate", "made.qbw", "--transactions", "20"}, "made.qbw"}};

std::string Joined(const Words& words) {
  std::string line = "krnqb";
  for (const std::string& word : words) line += " " + word;
  return line;
}

class UnwritableOutput : public testing::Test {
 protected:
  void SetUp() override {
    place.Nursery();
    fs::copy_file(place / "ald.kpf", place / "done.kpf");
    fs::copy_file(krnqb::tests::SamplesFolder() + "/nursery/accounts.xml", place / "accounts.xml");
    tests::WriteText(place / "faulty.xml", "<QBXML>");
    ASSERT_EQ(Shell("krnqb import --company nursery.qbw --plan done.kpf --expenses --quiet").code, 0);
    const std::string recording = place / "partial.jsonl";
    ASSERT_EQ(Shell("krnqb import --company nursery.qbw --plan cor.kpf --expenses --quiet --dry-run --record "
                    "partial.jsonl")
                  .code,
              0);
    tests::EditRecording(recording, "requestID=\"4\"", [](auto& line) {
      line["response"] = tests::AccountsAnswer(
          4, R"(statusCode="3260" statusSeverity="Error" statusMessage="No permission")", {"Rent"});
    });
  }

  ShellRun Shell(const std::string& command) const { return RunShell(place.Folder().string(), command); }

  // Runs a command whose standard output is a pipe that is closed before the command can print.
  ShellRun RunWithoutReader(const Words& words) const {
    const ShellRun run = Shell("mkfifo go 2>/dev/null; { read line <go; " + Joined(words) +
                               "; echo $? >code; } | { exec <&-; echo >go; }");
    return {std::stoi(ReadText(place / "code")), run.out, run.err};
  }

  const Workplace place;
};

TEST_F(UnwritableOutput, OfACommandThatChangesNothingIsAFailure) {
  for (const Words& words : questions) {
    const ShellRun run = Shell(Joined(words) + " >/dev/full");
    EXPECT_EQ(run.code, 1) << Joined(words);
    EXPECT_EQ(run.err, notPrinted) << Joined(words);
  }
}

TEST_F(UnwritableOutput, BecauseItsReaderHasEndedIsQuiet) {
  for (const Words& words : questions) {
    const ShellRun run = RunWithoutReader(words);
    EXPECT_EQ(run.code, 141) << Joined(words);
    EXPECT_EQ(run.err, "") << Joined(words);
  }
}

TEST_F(UnwritableOutput, OfACommandThatHasWrittenItsFileIsReportedAndChangesNoExitStatus) {
  for (const auto& [words, file, code] : changing) {
    const std::string before = fs::exists(place / file) ? ReadText(place / file) : "";
    const ShellRun run = Shell(Joined(words) + " >/dev/full");
    EXPECT_EQ(run.code, code) << Joined(words) << "\n" << run.err;
    EXPECT_TRUE(run.err.ends_with(reportNotPrinted)) << Joined(words) << "\n" << run.err;
    EXPECT_NE(ReadText(place / file), before) << Joined(words);
  }
}

TEST_F(UnwritableOutput, OfACommandThatHasWrittenItsFileIsReportedEvenIfItsReaderHasEnded) {
  for (const auto& [words, file, code] : changing) {
    const std::string before = fs::exists(place / file) ? ReadText(place / file) : "";
    const ShellRun run = RunWithoutReader(words);
    EXPECT_EQ(run.code, code) << Joined(words) << "\n" << run.err;
    EXPECT_TRUE(run.err.ends_with(reportNotPrinted)) << Joined(words) << "\n" << run.err;
    EXPECT_NE(ReadText(place / file), before) << Joined(words);
  }
}

TEST_F(UnwritableOutput, LeavesTheExitStatusOfACommandThatFails) {
  struct Failing {
    std::string command;
    int code;
    std::string firstWords;
  };
  for (const auto& [command, code, firstWords] :
       {Failing{"krnqb import --json", 2, "krnqb: wrong usage: "},
        Failing{"krnqb import --company none.qbw --plan ald.kpf --expenses --json", 1,
                "krnqb: opening the company"},
        Failing{"krnqb plan show none.kpf --json", 1, "krnqb: cannot open the plan"},
        Failing{"krnqb plan show --json", 2, "krnqb: wrong usage: "}}) {
    const ShellRun run = Shell(command + " >/dev/full");
    EXPECT_EQ(run.code, code) << command;
    EXPECT_EQ(run.err.find(firstWords), 0U) << run.err;
    EXPECT_TRUE(run.err.ends_with(notPrinted)) << run.err;
  }
}

TEST_F(UnwritableOutput, DoesNotMatterToAQuietImport) {
  const ShellRun run =
      Shell("krnqb import --company nursery.qbw --plan ald.kpf --expenses --quiet --dry-run >/dev/full");
  EXPECT_EQ(run.code, 0);
  EXPECT_EQ(run.err, "");
}

}  // namespace
}  // namespace krnqb::cli
