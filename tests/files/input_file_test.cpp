#include "files/input_file.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <array>
#include <istream>

#include "files/input_buffer.h"
#include "temporary_folder.h"
#include "thrown_error.h"

namespace krnqb::files {
namespace {

using tests::ErrorOf;
using tests::TemporaryFolder;
using tests::ThrownError;
using tests::WriteText;

namespace fs = std::filesystem;

// Reads that fail once at the given call, counted from 1.
class FailingReads : public SystemFileOperations {
 public:
  FailingReads(int failingCall, std::errc failure) : failingCall_(failingCall), failure_(failure) {}

  std::error_code Read(const FileDescriptor& file, std::span<char> part, std::size_t& length) override {
    if (++calls_ == failingCall_) return std::make_error_code(failure_);
    // Small parts, so that a small file takes several reads.
    return SystemFileOperations::Read(file, part.first(std::min<std::size_t>(part.size(), 4)), length);
  }

 private:
  const int failingCall_;
  const std::errc failure_;
  int calls_ = 0;
};

class ReadFiles : public testing::Test {
 protected:
  ReadFiles() {
    WriteText(folder / "file", "first line\nsecond line\n");
    EXPECT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
  }

  std::string Description(const fs::path& file, ReadingRules rules = {}) {
    return ThrownError([&] { InputFile(file, std::move(rules), system).ReadAll(documentLimit); })
        .Description();
  }

  const TemporaryFolder folder;
  SystemFileOperations system;
};

TEST_F(ReadFiles, ReportAnErrorAtEveryReadAsAnError) {
  for (int call = 1; call <= 7; ++call) {
    FailingReads failing(call, std::errc::io_error);
    const auto error = ErrorOf([&] { InputFile(folder / "file", {}, failing).ReadAll(documentLimit); });
    ASSERT_TRUE(error) << call;
    EXPECT_EQ(error->Description(), (folder / "file").string() + ": Input/output error") << call;
  }
}

TEST_F(ReadFiles, ContinueAfterAnInterruptedRead) {
  FailingReads interrupted(2, std::errc::interrupted);
  EXPECT_EQ(InputFile(folder / "file", {}, interrupted).ReadAll(documentLimit), "first line\nsecond line\n");
}

TEST_F(ReadFiles, OfPlansReportAnErrorAsAnError) {
  FailingReads failing(3, std::errc::io_error);
  EXPECT_EQ(ThrownError([&] { ReadFile(folder / "file", "cannot open the plan", failing); }).Description(),
            "cannot open the plan " + (folder / "file").string() +
                ": Input/output error; check the disk and try again");
}

TEST_F(ReadFiles, ThroughAStreamThrowTheErrorInsteadOfEnding) {
  FailingReads failing(4, std::errc::io_error);
  InputFile input(folder / "file", {}, failing);
  InputBuffer buffer(input);
  std::istream lines(&buffer);
  lines.exceptions(std::ios::badbit);
  std::string line;
  EXPECT_TRUE(std::getline(lines, line));
  EXPECT_EQ(line, "first line");
  EXPECT_EQ(ThrownError([&] { std::getline(lines, line); }).Description(),
            (folder / "file").string() + ": Input/output error");
}

TEST_F(ReadFiles, ThroughAStreamEndAtTheEnd) {
  InputFile input(folder / "file", {}, system);
  InputBuffer buffer(input);
  std::istream lines(&buffer);
  lines.exceptions(std::ios::badbit);
  std::string line;
  int count = 0;
  while (std::getline(lines, line)) ++count;
  EXPECT_EQ(count, 2);
  EXPECT_TRUE(lines.eof());
}

TEST_F(ReadFiles, ThroughAStreamCanBeReadAgainFromAnyPosition) {
  const fs::path file = folder / "long";
  std::string text;
  for (int line = 10'000; line < 30'000; ++line) text += std::to_string(line) + "\n";
  WriteText(file, text);
  InputFile input(file, {}, system);
  InputBuffer buffer(input);
  std::istream lines(&buffer);
  lines.exceptions(std::ios::badbit);
  std::string line;
  EXPECT_EQ(lines.tellg(), 0);
  while (std::getline(lines, line)) {
  }
  lines.clear();
  EXPECT_EQ(lines.tellg(), static_cast<std::streamoff>(text.size()));
  for (const int again : {29'999, 10'000, 20'000, 20'001, 13'000}) {
    lines.seekg(std::streamoff{6} * (again - 10'000));
    std::getline(lines, line);
    EXPECT_EQ(line, std::to_string(again));
    EXPECT_EQ(lines.tellg(), std::streamoff{6} * (again - 9'999));
  }
  lines.seekg(-6, std::ios::cur);
  std::getline(lines, line);
  EXPECT_EQ(line, "13000");
}

TEST_F(ReadFiles, ThroughAStreamHaveNoPositionIfTheyArePipes) {
  const FileDescriptor writer = FileDescriptor::Open(folder / "pipe", O_RDWR);
  InputFile input(folder / "pipe", {.pipes = true}, system);
  InputBuffer buffer(input);
  EXPECT_EQ(buffer.pubseekoff(0, std::ios::cur), std::streampos(-1));
  EXPECT_EQ(buffer.pubseekpos(0), std::streampos(-1));
}

TEST_F(ReadFiles, RefuseFoldersDevicesAndOtherFiles) {
  EXPECT_EQ(Description(folder.Path()), folder.Path().string() + ": Is a directory");
  EXPECT_EQ(Description("/dev/zero"), "/dev/zero: it is a device");
  EXPECT_EQ(Description("/dev/null", {.pipes = true}), "/dev/null: it is a device");
  EXPECT_EQ(Description(folder / "pipe"), (folder / "pipe").string() + ": it is not a regular file");
  EXPECT_EQ(Description(folder / "none"), (folder / "none").string() + ": No such file or directory");
  EXPECT_EQ(Description("/dev/zero", {.failure = "cannot open the plan"}),
            "cannot open the plan /dev/zero: it is a device; give the path of a file");
}

TEST_F(ReadFiles, EndBelowTwoGibibytes) {
  const fs::path file = folder / "sparse";
  WriteText(file, "");
  fs::resize_file(file, documentLimit);
  EXPECT_EQ(Description(file), file.string() + ": it holds 2 GiB or more");
  EXPECT_EQ(ThrownError([&] { ReadDocument(file, {}); }).Description(),
            file.string() + ": it holds 2 GiB or more");
}

TEST_F(ReadFiles, ThatGrowMeanwhileEndAtTheLimit) {
  constexpr std::uint64_t limit = 65536;
  const FileDescriptor writer = FileDescriptor::Open(folder / "pipe", O_RDWR);
  const std::string contents(limit - 1, 'x');
  ASSERT_EQ(::write(writer.Number(), contents.data(), contents.size()),
            static_cast<ssize_t>(contents.size()));
  InputFile input(folder / "pipe", {.pipes = true}, system);
  ASSERT_EQ(::write(writer.Number(), "y", 1), 1);
  EXPECT_EQ(ThrownError([&] { input.ReadAll(limit); }).Description(),
            (folder / "pipe").string() + ": it holds 64 KiB or more");
}

TEST_F(ReadFiles, ReachALimitWhileTheyAreReadPartByPart) {
  InputFile input(folder / "file", {}, system);
  input.Limit(24);  // the file has 23 bytes
  std::array<char, 10> part{};
  while (input.Read(part) > 0) continue;
  InputFile larger(folder / "file", {}, system);
  EXPECT_EQ(ThrownError([&] { larger.Limit(23); }).Description(),
            (folder / "file").string() + ": it holds 0 KiB or more");
}

TEST_F(ReadFiles, ShowTheBytesThatABufferHolds) {
  InputFile input(folder / "file", {}, system);
  InputBuffer buffer(input);
  EXPECT_EQ(buffer.Held(), "");
  EXPECT_EQ(buffer.sgetc(), 'f');
  EXPECT_EQ(buffer.Held(), "first line\nsecond line\n");
  EXPECT_EQ(buffer.sbumpc(), 'f');
  EXPECT_EQ(buffer.Held(), "irst line\nsecond line\n");
}

TEST_F(ReadFiles, MayBePipesAndEndWhenTheWriterCloses) {
  InputFile input(folder / "pipe", {.pipes = true}, system);
  {
    const FileDescriptor writer = FileDescriptor::Open(folder / "pipe", O_WRONLY);
    ASSERT_EQ(::write(writer.Number(), "from a pipe", 11), 11);
  }
  EXPECT_EQ(input.ReadAll(documentLimit), "from a pipe");
}

TEST_F(ReadFiles, StopWaitingForAPipeIfInterrupted) {
  for (const bool hasWriter : {false, true}) {
    const FileDescriptor writer =
        hasWriter ? FileDescriptor::Open(folder / "pipe", O_RDWR) : FileDescriptor();
    int asked = 0;
    // Asked before the first wait and after each: the third time it has waited.
    const InterruptQuery interrupted = [&] { return ++asked == 3; };
    EXPECT_EQ(Description(folder / "pipe", {.pipes = true, .interrupted = interrupted}), "interrupted");
    EXPECT_EQ(asked, 3) << hasWriter;
  }
}

TEST_F(ReadFiles, StopBetweenReadsIfInterrupted) {
  EXPECT_EQ(Description(folder / "file", {.interrupted = [] { return true; }}), "interrupted");
}

}  // namespace
}  // namespace krnqb::files
