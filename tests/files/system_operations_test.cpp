#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <optional>
#include <string>
#include <vector>

#include "files/operations.h"
#include "files/reading.h"
#include "temporary_folder.h"

namespace krnqb::files {
namespace {

using tests::TemporaryFolder;
using tests::WriteText;

constexpr std::size_t mostInAPipe = std::size_t{1} << 20;

// A pipe takes part of a large text at once, as an almost full disk does.
class WritingToAPipe : public testing::Test {
 protected:
  void Open(int flags) {
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe2(ends.data(), flags | O_CLOEXEC), 0);
    reader = FileDescriptor(ends[0]);
    writer = FileDescriptor(ends[1]);
  }

  FileDescriptor reader;
  FileDescriptor writer;
  SystemFileOperations operations;
};

TEST_F(WritingToAPipe, FailsIfOnlyAPartIsTaken) {
  ASSERT_NO_FATAL_FAILURE(Open(O_NONBLOCK));
  const std::error_code failure = operations.Write(writer, std::string(2 * mostInAPipe, 'x'));
  EXPECT_EQ(failure, std::errc::resource_unavailable_try_again) << failure.message();
}

int emptiedPipe = -1;

void EmptyThePipe(int /*signal*/) {
  static std::array<char, 65536> part;
  static_cast<void>(::read(emptiedPipe, part.data(), part.size()) == 0);
}

TEST_F(WritingToAPipe, GoesOnAfterASignal) {
  ASSERT_NO_FATAL_FAILURE(Open(0));
  const int taken =
      ::fcntl(writer.Number(), F_SETPIPE_SZ, 4096);  // NOLINT(cppcoreguidelines-pro-type-vararg)
  ASSERT_GT(taken, 0);
  ASSERT_FALSE(operations.Write(writer, std::string(static_cast<std::size_t>(taken), 'x')));

  // The next write waits until the signal's handler has emptied the pipe.
  emptiedPipe = reader.Number();
  struct sigaction emptying {};
  emptying.sa_handler = EmptyThePipe;
  struct sigaction previous {};
  ASSERT_EQ(::sigaction(SIGALRM, &emptying, &previous), 0);
  const itimerval once{{0, 0}, {0, 50'000}};
  ASSERT_EQ(::setitimer(ITIMER_REAL, &once, nullptr), 0);
  const std::error_code failure = operations.Write(writer, "more");
  EXPECT_EQ(::sigaction(SIGALRM, &previous, nullptr), 0);
  EXPECT_FALSE(failure) << failure.message();
}

TEST(KeptMode, IncludesTheBitThatMakesAFileItsGroups) {
  const TemporaryFolder folder;
  WriteText(folder / "pattern", "");
  WriteText(folder / "kept", "");
  ASSERT_EQ(::chmod((folder / "pattern").c_str(), 02750), 0);
  SystemFileOperations operations;
  ASSERT_FALSE(
      operations.KeepOwnerAndMode(FileDescriptor::Open(folder / "kept", O_RDWR), folder / "pattern"));
  struct stat status {};
  ASSERT_EQ(::stat((folder / "kept").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777U, 02750U);
}

TEST(SyncedFolder, MayBeInAFileSystemThatNeedsNoFlushing) {
  SystemFileOperations operations;
  EXPECT_FALSE(operations.SyncFolder("/proc"));
}

TEST(Folders, AreCreatedListedAndRemoved) {
  const TemporaryFolder folder;
  SystemFileOperations operations;
  const auto listed = folder / "listed";
  ASSERT_FALSE(operations.CreateFolder(listed, 0700));
  struct stat status {};
  ASSERT_EQ(::stat(listed.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777U, 0700U);
  EXPECT_EQ(operations.CreateFolder(listed, 0700), std::errc::file_exists);

  std::vector<std::string> names;
  EXPECT_FALSE(operations.ListFolder(listed, names));
  EXPECT_TRUE(names.empty());
  for (const char* name : {"a", ".b"}) WriteText(listed / name, "");
  EXPECT_FALSE(operations.ListFolder(listed, names));
  std::ranges::sort(names);
  EXPECT_EQ(names, (std::vector<std::string>{".b", "a"}));

  operations.RemoveFolder(listed);
  EXPECT_TRUE(std::filesystem::exists(listed / "a")) << "it was not empty";
  for (const char* name : {"a", ".b"}) operations.Remove(listed / name);
  operations.RemoveFolder(listed);
  EXPECT_FALSE(std::filesystem::exists(listed));
}

TEST(Folders, AreNotListedThroughLinks) {
  const TemporaryFolder folder;
  SystemFileOperations operations;
  std::vector<std::string> names;
  std::filesystem::create_directory_symlink(folder.Path(), folder / "link");
  WriteText(folder / "file", "");
  EXPECT_TRUE(operations.ListFolder(folder / "link", names));
  EXPECT_EQ(operations.ListFolder(folder / "file", names), std::errc::not_a_directory);
  EXPECT_EQ(operations.ListFolder(folder / "none", names), std::errc::no_such_file_or_directory);
  EXPECT_TRUE(names.empty());
}

TEST(FileStamp, DiffersAfterAnotherWriteWithinTheSecond) {
  const TemporaryFolder folder;
  WriteText(folder / "plan", "same size");
  std::array<timespec, 2> times{{{0, UTIME_OMIT}, {1'000'000'000, 250'000'000}}};
  ASSERT_EQ(::utimensat(AT_FDCWD, (folder / "plan").c_str(), times.data(), 0), 0);
  const std::optional<FileStamp> stamp = StampOf(folder / "plan");
  ASSERT_TRUE(stamp);
  EXPECT_EQ(StampOf(folder / "plan"), stamp);
  times[1].tv_nsec = 750'000'000;
  ASSERT_EQ(::utimensat(AT_FDCWD, (folder / "plan").c_str(), times.data(), 0), 0);
  EXPECT_NE(StampOf(folder / "plan"), stamp);
}

}  // namespace
}  // namespace krnqb::files
