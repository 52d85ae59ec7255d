#pragma once

#include <ole2.h>

#include <string>
#include <string_view>
#include <utility>

#include "support/windows_text.h"

namespace krnqb::com {

using krnqb::Utf8;
using krnqb::Wide;

/// Returns the text of a BSTR; null is the empty text.
std::wstring_view TextOf(BSTR text) noexcept;

/// Owns a BSTR.
class Bstr {
 public:
  /// Throws Error 7 if out of memory.
  explicit Bstr(std::wstring_view text);
  explicit Bstr(std::string_view text) : Bstr(std::wstring_view(Wide(text))) {}
  Bstr() noexcept = default;
  /// Takes ownership of a BSTR held by the caller.
  static Bstr Adopt(BSTR owned) noexcept {
    Bstr adopted;
    adopted.value_ = owned;
    return adopted;
  }
  Bstr(Bstr&& other) noexcept : value_(std::exchange(other.value_, nullptr)) {}
  Bstr& operator=(Bstr&& other) noexcept {
    std::swap(value_, other.value_);
    return *this;
  }
  ~Bstr() { SysFreeString(value_); }

  BSTR get() const noexcept { return value_; }
  /// Frees the text and returns where a call stores a new one.
  BSTR* Receive() noexcept {
    SysFreeString(std::exchange(value_, nullptr));
    return &value_;
  }
  [[nodiscard]] BSTR Detach() noexcept { return std::exchange(value_, nullptr); }

 private:
  BSTR value_ = nullptr;
};

}  // namespace krnqb::com
