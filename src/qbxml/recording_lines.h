#pragma once

#include <cstddef>
#include <istream>
#include <string>
#include <vector>

namespace krnqb {

/// Reads the lines of a recording. Unlike `std::getline` it distinguishes a failure from the end.
class RecordingLines {
 public:
  /// In bytes: 2 GiB.
  static constexpr std::size_t longestLine = std::size_t{1} << 31;

  /// `recording` must outlive this object; `recordingName` begins the description of errors. A line may have
  /// `longest` bytes, not counting its line feed.
  RecordingLines(std::istream& recording, std::string recordingName, std::size_t longest = longestLine);

  /// Reads the next line, without its line feed. Returns false at the end. Throws Error -2147467259 if the
  /// recording cannot be read or the line is too long, and std::bad_alloc if there is no memory for it.
  bool Next(std::string& line);

  /// Returns the number of the line read last, counted from 1; 0 before the first.
  std::size_t Number() const noexcept { return number_; }

  /// Throws Error -2147467259, naming the recording, the line read last and the fault.
  [[noreturn]] void Fail(const std::string& fault) const;

 private:
  [[noreturn]] void FailAt(std::size_t line, const std::string& fault) const;
  bool Fill(std::size_t lineToRead);
  void Append(std::string& line, std::size_t end);

  std::istream& recording_;
  std::string recordingName_;
  std::size_t longest_;
  std::vector<char> buffer_;
  std::size_t begin_ = 0;  // of what is unread in the buffer
  std::size_t end_ = 0;
  std::size_t number_ = 0;
};

}  // namespace krnqb
