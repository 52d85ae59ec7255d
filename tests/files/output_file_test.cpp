#include "files/output_file.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "temporary_folder.h"
#include "thrown_error.h"

namespace krnqb::files {
namespace {

using tests::ReadText;
using tests::TemporaryFolder;
using tests::ThrownError;
using tests::WriteText;

namespace fs = std::filesystem;

// Writes one byte at a time until the given call, counted from 1, which fails.
class FailingWrites : public SystemFileOperations {
 public:
  FailingWrites(int failingCall, std::errc failure) : failingCall_(failingCall), failure_(failure) {}

  std::error_code WritePart(const FileDescriptor& file, std::string_view contents,
                            std::size_t& length) override {
    if (++calls_ == failingCall_) return std::make_error_code(failure_);
    return SystemFileOperations::WritePart(file, contents.substr(0, 1), length);
  }

 private:
  const int failingCall_;
  const std::errc failure_;
  int calls_ = 0;
};

class FailingClose : public SystemFileOperations {
 public:
  std::error_code Close(FileDescriptor& file) override {
    SystemFileOperations::Close(file);
    return std::make_error_code(std::errc::io_error);
  }
};

class WrittenFiles : public testing::Test {
 protected:
  WrittenFiles() { EXPECT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0); }

  const TemporaryFolder folder;
  const fs::path file = folder / "file";
  SystemFileOperations system;
};

TEST_F(WrittenFiles, ReplaceWhatTheFileHeld) {
  WriteText(file, "a longer text than the new one");
  OutputFile output(file, {}, system);
  output.Stream() << "new " << 7;
  EXPECT_FALSE(output.Finish());
  EXPECT_EQ(ReadText(file), "new 7");
}

TEST_F(WrittenFiles, AreReadableByTheirOwnerAloneWhenNew) {
  const mode_t before = ::umask(0);
  OutputFile output(file, {}, system);
  ::umask(before);
  EXPECT_EQ(fs::status(file).permissions(), fs::perms(0600));
}

TEST_F(WrittenFiles, KeepThePermissionsThatTheyHad) {
  WriteText(file, "shared");
  fs::permissions(file, fs::perms(0644));
  OutputFile output(file, {}, system);
  output.Stream() << "new";
  EXPECT_FALSE(output.Finish());
  EXPECT_EQ(fs::status(file).permissions(), fs::perms(0644));
}

TEST_F(WrittenFiles, ReportEveryReasonForWhichAWriteFails) {
  for (const std::errc reason : {std::errc::no_space_on_device, std::errc::io_error,
                                 std::errc::file_too_large, std::errc::broken_pipe}) {
    for (int call = 1; call <= 3; ++call) {
      FailingWrites failing(call, reason);
      OutputFile output(file, {}, failing);
      output.Stream() << "abc";
      EXPECT_EQ(output.Finish(), reason) << call;
      EXPECT_EQ(ReadText(file), std::string("abc").substr(0, static_cast<std::size_t>(call) - 1));
    }
  }
}

TEST_F(WrittenFiles, ContinueAfterAnInterruptedWrite) {
  for (const std::errc reason : {std::errc::interrupted, std::errc::resource_unavailable_try_again}) {
    FailingWrites failing(2, reason);
    OutputFile output(file, {}, failing);
    output.Stream() << "abc";
    EXPECT_FALSE(output.Finish());
    EXPECT_EQ(ReadText(file), "abc");
  }
}

TEST_F(WrittenFiles, ReportThatClosingFails) {
  FailingClose failing;
  OutputFile output(file, {}, failing);
  output.Stream() << "abc";
  EXPECT_EQ(output.Finish(), std::errc::io_error);
}

TEST_F(WrittenFiles, ReportAFileThatCannotBeOpened) {
  EXPECT_EQ(ThrownError([&] { OutputFile(folder.Path(), {}, system); }).Description(),
            folder.Path().string() + ": Is a directory");
  EXPECT_EQ(ThrownError([&] { OutputFile(folder / "none/file", {}, system); }).Description(),
            (folder / "none/file").string() + ": No such file or directory");
}

TEST_F(WrittenFiles, StopWaitingForAReaderOfAPipeIfInterrupted) {
  int asked = 0;
  EXPECT_EQ(ThrownError([&] {
              OutputFile(
                  folder / "pipe", [&] { return ++asked == 2; }, system);
            }).Description(),
            "interrupted");
  EXPECT_EQ(asked, 2);
}

TEST_F(WrittenFiles, StopWaitingForAFullPipeIfInterrupted) {
  const FileDescriptor reader = FileDescriptor::Open(folder / "pipe", O_RDONLY | O_NONBLOCK);
  OutputFile output(
      folder / "pipe", [] { return true; }, system);
  // A pipe holds 64 KiB.
  output.Stream() << std::string(65536, 'x') << std::flush;
  EXPECT_TRUE(output.Stream()) << "what the pipe takes is written";
  output.Stream() << 'y';
  EXPECT_EQ(output.Finish(), std::errc::interrupted);
}

}  // namespace
}  // namespace krnqb::files
