#pragma once

#include <array>
#include <streambuf>

#include "files/input_file.h"

namespace krnqb::files {

/// Reads a file through a std::istream. A failure to read is thrown as Error through the stream's operations
/// if its exception mask has std::ios::badbit, and otherwise sets that bit.
class InputBuffer : public std::streambuf {
 public:
  /// `input` must outlive the buffer.
  explicit InputBuffer(InputFile& input) noexcept : input_(input) {}

 protected:
  int_type underflow() override;

 private:
  InputFile& input_;
  std::array<char, 65536> part_{};
};

}  // namespace krnqb::files
