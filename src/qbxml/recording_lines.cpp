#include "qbxml/recording_lines.h"

#include <fmt/format.h>

#include <algorithm>
#include <ios>
#include <utility>

#include "krnqb/error.h"

namespace krnqb {
namespace {

constexpr std::size_t bufferSize = std::size_t{64} * 1024;

}  // namespace

RecordingLines::RecordingLines(std::istream& recording, std::string recordingName, std::size_t longest)
    : recording_(recording),
      recordingName_(std::move(recordingName)),
      longest_(longest),
      buffer_(bufferSize) {}

bool RecordingLines::Next(std::string& line) {
  line.clear();
  if (begin_ == end_ && !Fill(number_ + 1)) return false;
  ++number_;
  do {
    const char* const unread = buffer_.data() + begin_;
    const char* const lineEnd = std::find<const char*>(unread, buffer_.data() + end_, '\n');
    const auto end = static_cast<std::size_t>(lineEnd - buffer_.data());
    Append(line, end);
    if (end < end_) {
      begin_ = end + 1;
      return true;
    }
    begin_ = end_;
  } while (Fill(number_));
  return true;
}

void RecordingLines::Fail(const std::string& fault) const {
  FailAt(number_, fault);
}

void RecordingLines::FailAt(std::size_t line, const std::string& fault) const {
  throw Error(error_number::unspecified, fmt::format("{}, line {}: {}", recordingName_, line, fault));
}

void RecordingLines::Append(std::string& line, std::size_t end) {
  const std::size_t length = end - begin_;
  if (length > longest_ - line.size()) Fail(fmt::format("the line is longer than {} bytes", longest_));
  line.append(buffer_.data() + begin_, length);
}

// Reads through the stream's buffer, because the stream itself turns every exception into an end. Takes only
// what the buffer holds, so that nothing is lost when reading on fails.
bool RecordingLines::Fill(std::size_t lineToRead) {
  begin_ = end_ = 0;
  std::streambuf* const source = recording_.rdbuf();
  if (source == nullptr) return false;
  try {
    if (source->sgetc() == std::char_traits<char>::eof()) return false;
    const auto held = static_cast<std::size_t>(std::max<std::streamsize>(source->in_avail(), 1));
    const auto taken = static_cast<std::streamsize>(std::min(held, bufferSize));
    end_ = static_cast<std::size_t>(source->sgetn(buffer_.data(), taken));
  } catch (const std::ios_base::failure& failure) {
    FailAt(lineToRead, "cannot be read: " + failure.code().message());
  }
  return end_ > 0;
}

}  // namespace krnqb
