#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdlib>
#include <sstream>

#include "build_paths.h"
#include "cli/program/child_process.h"
#include "cli/workplace.h"
#include "support/characters.h"

namespace krnqb::cli {
namespace {

using tests::ReadText;
using tests::RunShell;
using tests::ShellRun;
using tests::Workplace;

class Program : public testing::Test {
 protected:
  void SetUp() override { place.Nursery(); }

  ShellRun Shell(const std::string& command) const { return RunShell(place.Folder().string(), command); }

  const Workplace place;
};

TEST_F(Program, PrintsARequestThroughAPipeByteForByte) {
  EXPECT_EQ(Shell("krnqb request 10 --from 2002-01-01 --to 2002-01-31 | wc -c").out, "355\n");
  EXPECT_EQ(Shell("krnqb request 4 | tail -c 8 | od -An -tx1").out, " 3c 2f 51 42 58 4d 4c 3e\n");
}

TEST_F(Program, EndsQuietlyIfItsReaderClosesThePipe) {
  std::string rows;
  for (int row = 0; row < 20000; ++row) rows += "<row><c>Account</c><c>0</c></row>";
  tests::WriteText(place / "large.kpf",
                   "<plan><tables><tableitem id='20000000000000000000000000000600'><tableblocks>"
                   "<block id='db_income_range_cat3'>" +
                       rows + "</block></tableblocks></tableitem></tables></plan>");
  const ShellRun run = Shell("krnqb plan show large.kpf --cells | head -n 1");
  EXPECT_EQ(run.out, "20000000000000000000000000000600\tdb_income_range_cat3\t0\t0\tAccount\n");
  EXPECT_EQ(run.err, "");
}

// The shell commands with which a program's output has lost its reader before the program starts.
std::string WithoutReader(const std::string& command) {
  return "mkfifo go; { read line <go; " + command + "; echo $? >code; } | { exec <&-; echo >go; }";
}

TEST_F(Program, ExitsWith141IfItsReaderEndsBeforeItPrints) {
  EXPECT_EQ(Shell(WithoutReader("krnqb plan show ald.kpf")).err, "");
  EXPECT_EQ(ReadText(place / "code"), "141\n");
}

TEST_F(Program, WritesThePlanEvenIfTheReaderOfItsReportEnds) {
  const ShellRun run = Shell(WithoutReader("krnqb import --company nursery.qbw --plan ald.kpf --expenses"));
  EXPECT_EQ(run.err,
            "krnqb: printing the report failed: cannot write to standard output; the command has written its "
            "file and need not be repeated\n");
  EXPECT_EQ(ReadText(place / "code"), "0\n");
  EXPECT_NE(ReadText(place / "ald.kpf").find("<c>Advertising</c>"), std::string::npos);
}

TEST(ProgramWithAYear, SaysSoIfTheReaderOfItsRecordingEnds) {
  const Workplace place;
  place.NurseryYear();
  const std::string before = ReadText(place / "ald.kpf");
  // The recording is larger than the pipe: it is full when its reader ends.
  const ShellRun run = RunShell(
      place.Folder().string(),
      "mkfifo recording; head -c 1 recording >first & krnqb import --company nursery.qbw --plan ald.kpf "
      "--expenses --income --balances all --quiet --record recording");
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(
      run.err.substr(run.err.find("krnqb: recording")),
      "krnqb: recording failed: recording could not be written completely: Broken pipe; let the program "
      "that reads it read to the end, or import without --record\n");
  EXPECT_EQ(ReadText(place / "ald.kpf"), before);
}

TEST_F(Program, SaysSoIfAFileMayNotBeLarger) {
  const std::string before = ReadText(place / "ald.kpf");
  const ShellRun recording = Shell(
      "ulimit -f 1; krnqb import --company nursery.qbw --plan ald.kpf --expenses --quiet --record recording");
  EXPECT_EQ(recording.code, 1);
  EXPECT_EQ(
      recording.err,
      "krnqb: recording failed: recording could not be written completely: File too large; raise the limit "
      "of the size of files (ulimit -f) and try again, or import without --record\n");
  const ShellRun plan =
      Shell("ulimit -f 1; krnqb import --company nursery.qbw --plan ald.kpf --expenses --quiet");
  EXPECT_EQ(plan.code, 1);
  EXPECT_NE(plan.err.find("0001.kpf: writing failed: File too large; the plan is unchanged, raise the limit"),
            std::string::npos)
      << plan.err;
  EXPECT_EQ(ReadText(place / "ald.kpf"), before);
  EXPECT_FALSE(std::filesystem::exists(place / "ald.kpf.tmp"));
  EXPECT_FALSE(std::filesystem::exists(place / "ald.kpf.history"));
}

TEST_F(Program, ReplaysARecordingFromAPipe) {
  const ShellRun run = Shell(
      "krnqb import --company nursery.qbw --plan ald.kpf --expenses --dry-run --quiet --record recording && "
      "cat recording | krnqb import --replay /dev/stdin --plan ald.kpf --expenses --quiet");
  EXPECT_EQ(run.code, 0) << run.err;
  EXPECT_NE(ReadText(place / "ald.kpf").find("<c>Advertising</c>"), std::string::npos);
}

TEST_F(Program, LoadsADocumentFromAPipe) {
  ASSERT_EQ(Shell("krnqb company new other.qbw --name Other --fiscal-month 1 --processor 1.1").code, 0);
  std::filesystem::copy_file(krnqb::tests::SamplesFolder() + "/nursery/accounts.xml", place / "accounts.xml");
  const ShellRun run = Shell("cat accounts.xml | krnqb company load other.qbw /dev/stdin");
  EXPECT_EQ(run.code, 0) << run.err;
  EXPECT_EQ(run.out.find("/dev/stdin: added "), 0U) << run.out;
}

TEST_F(Program, LoadsARecordingFromAPipeAfterADocument) {
  ASSERT_EQ(Shell("krnqb company new other.qbw --name Other --fiscal-month 1 --processor 1.1").code, 0);
  std::filesystem::copy_file(krnqb::tests::SamplesFolder() + "/nursery/accounts.xml", place / "accounts.xml");
  const ShellRun run = Shell(
      "krnqb import --company nursery.qbw --plan ald.kpf --expenses --dry-run --quiet --record recording && "
      "mkfifo pipe && (cat recording >pipe & krnqb company load other.qbw accounts.xml pipe)");
  EXPECT_EQ(run.code, 0) << run.err;
  EXPECT_EQ(run.out.find("accounts.xml: added "), 0U) << run.out;
  EXPECT_NE(run.out.find("\npipe: added "), std::string::npos) << run.out;
}

TEST_F(Program, RefusesADeviceAsADocument) {
  const ShellRun run = Shell("krnqb company load nursery.qbw /dev/zero");
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.err,
            "krnqb: loading failed: /dev/zero: it is a device; check the path and load again (nothing was "
            "loaded)\n");
}

TEST_F(Program, LeavesThePlanWholeIfNobodyReadsItsOutput) {
  const std::string before = ReadText(place / "ald.kpf");
  // The pipe is closed before the program prints. The import may stop or finish; the plan is whole either
  // way.
  Shell("krnqb import --company nursery.qbw --plan ald.kpf --expenses | true");
  const std::string after = ReadText(place / "ald.kpf");
  EXPECT_EQ(Shell("krnqb plan show ald.kpf >shown").code, 0);
  EXPECT_TRUE(after == before || after.find("<c>Advertising</c>") != std::string::npos);
  EXPECT_EQ(Shell("krnqb import --company nursery.qbw --plan ald.kpf --expenses --quiet").code, 0);
}

TEST_F(Program, FailsIfItsResultCannotBePrinted) {
  const ShellRun run = Shell("krnqb plan show ald.kpf >/dev/full");
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.err,
            "krnqb: printing failed: cannot write to standard output; check the disk or the program that "
            "reads it\n");
}

TEST_F(Program, ExitsWithZeroIfOnlyTheReportOfAnImportCannotBePrinted) {
  const ShellRun run = Shell("krnqb import --company nursery.qbw --plan ald.kpf --expenses >/dev/full");
  EXPECT_EQ(run.code, 0);
  EXPECT_EQ(run.err,
            "krnqb: printing the report failed: cannot write to standard output; the command has written its "
            "file and need not be repeated\n");
  EXPECT_NE(ReadText(place / "ald.kpf").find("<c>Advertising</c>"), std::string::npos);
}

TEST_F(Program, ExitsWithZeroIfOnlyTheReportOfALoadCannotBePrinted) {
  const std::string accounts = krnqb::tests::SamplesFolder() + "/nursery/accounts.xml";
  EXPECT_EQ(Shell("krnqb company load nursery.qbw " + accounts + " >/dev/full").code, 0);
}

TEST_F(Program, PrintsErrorsOnlyOnStandardError) {
  const ShellRun run = Shell("krnqb import --company none.qbw --plan ald.kpf --expenses");
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.err.find("krnqb: opening the company failed: "), 0U) << run.err;
}

TEST_F(Program, ShowsNoProgressBarOutsideATerminal) {
  const ShellRun run = Shell("krnqb import --company nursery.qbw --plan ald.kpf --expenses");
  EXPECT_EQ(run.code, 0);
  EXPECT_EQ(run.err, "");
}

// A terminal whose contents can be read after the programs that use it have ended. It holds 4 KiB.
class PseudoTerminal {
 public:
  PseudoTerminal() : master_(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK)) {
    EXPECT_EQ(::grantpt(master_.Number()), 0);
    EXPECT_EQ(::unlockpt(master_.Number()), 0);
    name_ = ::ptsname(master_.Number());
    slave_ = ::open(name_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
  }
  ~PseudoTerminal() { ::close(slave_); }
  PseudoTerminal(const PseudoTerminal&) = delete;
  PseudoTerminal& operator=(const PseudoTerminal&) = delete;

  const std::string& Name() const noexcept { return name_; }

  void SetWidth(unsigned short columns) const {
    const winsize size{.ws_row = 24, .ws_col = columns, .ws_xpixel = 0, .ws_ypixel = 0};
    EXPECT_EQ(::ioctl(slave_, TIOCSWINSZ, &size), 0);
  }

  std::string Text() const {
    std::string text;
    char part[1024] = {};
    for (ssize_t count = 0; (count = ::read(master_.Number(), part, sizeof part)) > 0;) {
      text.append(part, static_cast<std::size_t>(count));
    }
    return text;
  }

 private:
  files::FileDescriptor master_;
  std::string name_;
  int slave_ = -1;
};

TEST_F(Program, ShowsAProgressBarOnATerminal) {
  const PseudoTerminal terminal;
  EXPECT_EQ(Shell("krnqb import --company nursery.qbw --plan ald.kpf --expenses 2>" + terminal.Name()).code,
            0);
  EXPECT_EQ(terminal.Text().find("\r[........................]   0% opening the company"), 0U);
}

TEST_F(Program, FitsItsBarAndItsTablesIntoTheTerminal) {
  const PseudoTerminal terminal;
  terminal.SetWidth(50);
  EXPECT_EQ(Shell("krnqb import --company nursery.qbw --plan ald.kpf --expenses 2>" + terminal.Name()).code,
            0);
  EXPECT_EQ(terminal.Text().find("\r[..............]   0% opening the company"), 0U);
  terminal.SetWidth(19);
  EXPECT_EQ(
      Shell("krnqb import --company nursery.qbw --plan ald.kpf --expenses --dry-run 2>" + terminal.Name())
          .code,
      0);
  terminal.SetWidth(30);
  EXPECT_EQ(Shell("krnqb plan show ald.kpf --table 'actual expenses' >" + terminal.Name()).code, 0);
  std::istringstream lines(terminal.Text());
  std::string line;
  ASSERT_TRUE(std::getline(lines, line));
  EXPECT_EQ(line, "Actual expenses (210000000000…\r") << "the narrow import draws no bar";
  while (std::getline(lines, line)) EXPECT_LE(CharacterCount(line), 30U + 1) << line;
}

TEST_F(Program, RefusesASecondImportIntoThePlan) {
  // The first import has locked the plan, has announced itself, and waits for a reader of its recording.
  ASSERT_EQ(Shell("mkfifo recording").code, 0);
  tests::ChildProcess first(
      place.ImportArguments("ald.kpf", {"--expenses", "--record", place / "recording"}));
  EXPECT_EQ(first.ReadLine().find("Importing expense accounts from "), 0U);
  tests::ChildProcess second(place.ImportArguments("ald.kpf", {"--income"}));
  EXPECT_EQ(second.Wait(), 1);
  EXPECT_EQ(second.Errors(),
            "krnqb: cannot change the plan " + (place / "ald.kpf") +
                ": another import or undo is changing it; wait until that has ended and try again\n");
  EXPECT_EQ(Shell("cat recording >copy").code, 0);
  EXPECT_EQ(first.Wait(), 0);
  EXPECT_NE(ReadText(place / "copy"), "");
  EXPECT_EQ(Shell("krnqb import --company nursery.qbw --plan ald.kpf --income").code, 0);
}

}  // namespace
}  // namespace krnqb::cli
