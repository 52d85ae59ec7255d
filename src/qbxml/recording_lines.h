#pragma once

#include <cstddef>
#include <istream>
#include <optional>
#include <string>
#include <vector>

namespace krnqb {

/// Where a line is in a recording.
struct LinePlace {
  std::streamoff begin = 0;
  std::size_t length = 0;
};

/// Reads the lines of a recording. Unlike `std::getline` it distinguishes a failure from the end.
class RecordingLines {
 public:
  /// In bytes: 2 GiB.
  static constexpr std::size_t longestLine = std::size_t{1} << 31;

  /// `recording`, which is read from its position on, must outlive this object; `recordingName` begins the
  /// description of errors. A line may have `longest` bytes, not counting its line feed.
  RecordingLines(std::istream& recording, std::string recordingName, std::size_t longest = longestLine);

  /// Reads the next line, without its line feed. Returns false at the end. Throws Error -2147467259 if the
  /// recording cannot be read or the line is too long, and std::bad_alloc if there is no memory for it.
  bool Next(std::string& line);

  /// Returns where the line read last is; nullopt if the recording, such as a pipe, cannot be read again.
  std::optional<LinePlace> Place() const noexcept;

  /// Reads a line again. `Next` must not be called afterwards. Throws what it throws, and Error -2147467259
  /// if the recording has become shorter.
  void ReadAgain(const LinePlace& place, std::string& line);

  /// Returns the number of the line read last, counted from 1; 0 before the first.
  std::size_t Number() const noexcept { return number_; }

  /// Throws Error -2147467259, naming the recording, the line read last and the fault.
  [[noreturn]] void Fail(const std::string& fault) const;

 private:
  [[noreturn]] void FailAt(std::size_t line, const std::string& fault) const;
  bool Fill(std::size_t lineToRead);
  void Append(std::string& line, std::size_t length);

  std::istream& recording_;
  std::string recordingName_;
  std::size_t longest_;
  std::vector<char> buffer_;
  std::size_t begin_ = 0;  // of what is unread in the buffer
  std::size_t end_ = 0;
  std::size_t number_ = 0;
  std::streamoff read_ = -1;  // where the buffer ends in the recording; -1 if it cannot be read again
  LinePlace place_;
};

}  // namespace krnqb
