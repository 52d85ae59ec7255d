#pragma once

#include <array>
#include <streambuf>
#include <string_view>

#include "files/input_file.h"

namespace krnqb::files {

/// Reads a file through a std::istream, whose position can be read and set if the file is a regular one. A
/// failure to read is thrown as Error through the stream's operations if its exception mask has
/// std::ios::badbit, and otherwise sets that bit.
class InputBuffer : public std::streambuf {
 public:
  /// `input` must outlive the buffer.
  explicit InputBuffer(InputFile& input) noexcept : input_(input) {}

  /// Returns the bytes that have been read and are not taken yet; empty before the first is asked for.
  std::string_view Held() const noexcept { return {gptr(), static_cast<std::size_t>(egptr() - gptr())}; }

 protected:
  int_type underflow() override;
  pos_type seekoff(off_type offset, std::ios_base::seekdir from, std::ios_base::openmode which) override;
  pos_type seekpos(pos_type position, std::ios_base::openmode which) override;

 private:
  InputFile& input_;
  std::array<char, 65536> part_{};
};

}  // namespace krnqb::files
