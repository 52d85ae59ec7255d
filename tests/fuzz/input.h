#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace krnqb::fuzz {

/// Reads an input from its beginning: first numbers, one byte each, then texts. An input that is used up
/// continues with zeros and empty texts.
class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size) : rest_(reinterpret_cast<const char*>(data), size) {}

  bool Empty() const noexcept { return rest_.empty(); }

  /// Returns the next byte.
  std::uint8_t Byte() {
    if (rest_.empty()) return 0;
    const auto byte = static_cast<std::uint8_t>(rest_.front());
    rest_.remove_prefix(1);
    return byte;
  }
  /// Returns a number from 0 to `count` - 1. `count` is 1 to 256.
  std::size_t Below(std::size_t count) { return Byte() % count; }
  bool Flag() { return Below(2) == 1; }
  /// Returns a number of 16 bits.
  std::int16_t Short() {
    const std::size_t low = Byte();
    return static_cast<std::int16_t>(low | static_cast<std::size_t>(Byte()) << 8U);
  }

  /// Returns the text up to the next NUL, which is skipped.
  std::string Text() {
    const std::size_t end = std::min(rest_.find('\0'), rest_.size());
    std::string text(rest_.substr(0, end));
    rest_.remove_prefix(std::min(end + 1, rest_.size()));
    return text;
  }
  /// Returns all that is left.
  std::string Rest() {
    std::string text(rest_);
    rest_ = {};
    return text;
  }

 private:
  std::string_view rest_;
};

}  // namespace krnqb::fuzz
