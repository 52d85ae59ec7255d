#pragma once

#include <ostream>
#include <streambuf>
#include <string>
#include <string_view>

namespace krnqb::cli {

/// Passes texts on to a stream, with U+FFFD in place of each control character: names and messages from files
/// must not control the user's terminal. Line feeds, tabs and the line ends CR LF pass.
class PrintableBuffer : public std::streambuf {
 public:
  /// Whether a carriage return passes, as a progress bar needs it.
  enum class CarriageReturns { AtLineEnds, Everywhere };

  /// `output` must outlive the buffer.
  PrintableBuffer(std::ostream& output, CarriageReturns carriageReturns) noexcept
      : output_(output), carriageReturns_(carriageReturns) {}

 protected:
  int_type overflow(int_type character) override;
  std::streamsize xsputn(const char* text, std::streamsize length) override;
  int sync() override;

 private:
  void Pass(std::string_view text, bool complete);

  std::ostream& output_;
  CarriageReturns carriageReturns_;
  std::string pending_;  ///< the beginning of a character or of a line end
};

}  // namespace krnqb::cli
