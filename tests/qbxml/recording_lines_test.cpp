#include "qbxml/recording_lines.h"

#include <gtest/gtest.h>

#include <ios>
#include <new>
#include <sstream>
#include <streambuf>
#include <vector>

#include "thrown_error.h"

namespace krnqb {
namespace {

using tests::ThrownError;

std::vector<std::string> LinesOf(const std::string& text, std::size_t longest = 100) {
  std::istringstream input(text);
  RecordingLines lines(input, "recording", longest);
  std::vector<std::string> all;
  for (std::string line; lines.Next(line);) {
    all.push_back(line);
    EXPECT_EQ(lines.Number(), all.size());
  }
  return all;
}

// Delivers a text, then fails as its argument says.
class FailingBuffer final : public std::streambuf {
 public:
  enum class Failure { ReadError, OutOfMemory };
  FailingBuffer(std::string text, Failure failure) : text_(std::move(text)), failure_(failure) {
    setg(text_.data(), text_.data(), text_.data() + text_.size());
  }

 protected:
  int_type underflow() override {
    if (failure_ == Failure::OutOfMemory) throw std::bad_alloc();
    throw std::ios_base::failure("read", std::make_error_code(std::errc::io_error));
  }

 private:
  std::string text_;
  Failure failure_;
};

TEST(RecordingLines, EndAtLineFeedsAndAtTheEnd) {
  using Lines = std::vector<std::string>;
  EXPECT_EQ(LinesOf(""), Lines{});
  EXPECT_EQ(LinesOf("a"), Lines{"a"});
  EXPECT_EQ(LinesOf("a\n"), Lines{"a"});
  EXPECT_EQ(LinesOf("a\n\nb\r\n"), (Lines{"a", "", "b\r"}));
  EXPECT_EQ(LinesOf("\n"), Lines{""});
}

TEST(RecordingLines, ReachAcrossTheBuffer) {
  const std::string longLine(200'000, 'x');
  EXPECT_EQ(LinesOf("a\n" + longLine + "\n" + longLine, 200'000),
            (std::vector<std::string>{"a", longLine, longLine}));
}

TEST(RecordingLines, BeyondTheLongestAreAnErrorWithTheLine) {
  EXPECT_EQ(LinesOf("123\n1234\n1234", 4).size(), 3U);
  EXPECT_EQ(ThrownError([] { LinesOf("123\n12345\n", 4); }).Description(),
            "recording, line 2: the line is longer than 4 bytes");
  EXPECT_EQ(ThrownError([] { LinesOf("12345", 4); }).Number(), -2147467259);
}

TEST(RecordingLines, EndAtTwoGibibytes) {
  EXPECT_EQ(RecordingLines::longestLine, 2147483648U);
}

TEST(RecordingLines, ThatCannotBeReadAreAnErrorAndNotTheEnd) {
  FailingBuffer buffer("a\nb", FailingBuffer::Failure::ReadError);
  std::istream input(&buffer);
  RecordingLines lines(input, "recording");
  std::string line;
  EXPECT_TRUE(lines.Next(line));
  EXPECT_EQ(ThrownError([&] { lines.Next(line); }).Description(),
            "recording, line 2: cannot be read: Input/output error");
}

TEST(RecordingLines, WithoutMemoryAreAnErrorAndNotTheEnd) {
  FailingBuffer buffer("a\nb", FailingBuffer::Failure::OutOfMemory);
  std::istream input(&buffer);
  RecordingLines lines(input, "recording");
  std::string line;
  EXPECT_TRUE(lines.Next(line));
  EXPECT_THROW(lines.Next(line), std::bad_alloc);
}

}  // namespace
}  // namespace krnqb
