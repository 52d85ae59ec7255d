#include "qbxml/recording_lines.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstring>
#include <ios>
#include <utility>

#include "krnqb/error.h"
#include "qbxml/recorded_values.h"

namespace krnqb {
namespace {

constexpr std::size_t bufferSize = std::size_t{64} * 1024;

std::streamoff PositionOf(std::istream& recording) {
  std::streambuf* const source = recording.rdbuf();
  return source == nullptr ? -1
                           : std::streamoff(source->pubseekoff(0, std::ios_base::cur, std::ios_base::in));
}

}  // namespace

RecordingLines::RecordingLines(std::istream& recording, std::string recordingName, std::size_t longest)
    : recording_(recording),
      recordingName_(std::move(recordingName)),
      longest_(longest),
      buffer_(bufferSize),
      read_(PositionOf(recording)) {}

bool RecordingLines::Next(std::string& line) {
  line.clear();
  if (begin_ == end_ && !Fill(number_ + 1)) return false;
  ++number_;
  place_.begin = read_ - static_cast<std::streamoff>(end_ - begin_);
  for (bool ended = false; !ended;) {
    const char* const unread = buffer_.data() + begin_;
    const void* const lineEnd = std::memchr(unread, '\n', end_ - begin_);
    ended = lineEnd != nullptr;
    const std::size_t length =
        ended ? static_cast<std::size_t>(static_cast<const char*>(lineEnd) - unread) : end_ - begin_;
    Append(line, length);
    begin_ += length + (ended ? 1 : 0);
    if (!ended && !Fill(number_)) break;
  }
  place_.length = line.size();
  line.reserve(line.size() + recordedLinePadding);
  return true;
}

std::optional<LinePlace> RecordingLines::Place() const noexcept {
  return read_ < 0 ? std::nullopt : std::optional(place_);
}

void RecordingLines::ReadAgain(const LinePlace& place, std::string& line) {
  line.reserve(place.length + recordedLinePadding);
  line.resize(place.length);
  std::streambuf* const source = recording_.rdbuf();
  try {
    const bool found = std::streamoff(source->pubseekpos(place.begin, std::ios_base::in)) == place.begin;
    const auto length = static_cast<std::streamsize>(place.length);
    if (found && source->sgetn(line.data(), length) == length) return;
  } catch (const std::ios_base::failure& failure) {
    throw Error(error_number::unspecified,
                fmt::format("{} cannot be read: {}", recordingName_, failure.code().message()));
  }
  throw Error(error_number::unspecified,
              fmt::format("{} has become shorter since it was opened", recordingName_));
}

void RecordingLines::Fail(const std::string& fault) const {
  FailAt(number_, fault);
}

void RecordingLines::FailAt(std::size_t line, const std::string& fault) const {
  throw Error(error_number::unspecified, fmt::format("{}, line {}: {}", recordingName_, line, fault));
}

void RecordingLines::Append(std::string& line, std::size_t length) {
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
  if (read_ >= 0) read_ += static_cast<std::streamoff>(end_);
  return end_ > 0;
}

}  // namespace krnqb
