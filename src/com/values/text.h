#pragma once

#include <ole2.h>

#include <string>
#include <string_view>
#include <utility>

#include "support/windows_text.h"

namespace krnqb::com {

using krnqb::Utf8;
using krnqb::Wide;

/// The text of a BSTR; a null BSTR is the empty text.
std::wstring_view TextOf(BSTR text) noexcept;

/// Owns a BSTR.
class Bstr {
 public:
  /// Error 7 when there is no memory.
  explicit Bstr(std::wstring_view text);
  explicit Bstr(std::string_view text) : Bstr(std::wstring_view(Wide(text))) {}
  Bstr() noexcept = default;
  /// Takes over a BSTR that the caller owns.
  static Bstr Adopt(BSTR owned) noexcept {
    Bstr adopted;
    adopted.value = owned;
    return adopted;
  }
  Bstr(Bstr&& other) noexcept : value(std::exchange(other.value, nullptr)) {}
  Bstr& operator=(Bstr&& other) noexcept {
    std::swap(value, other.value);
    return *this;
  }
  ~Bstr() { SysFreeString(value); }

  BSTR get() const noexcept { return value; }
  /// Where a call puts a text that the caller is to free.
  BSTR* Receive() noexcept {
    SysFreeString(std::exchange(value, nullptr));
    return &value;
  }
  [[nodiscard]] BSTR Detach() noexcept { return std::exchange(value, nullptr); }

 private:
  BSTR value = nullptr;
};

}  // namespace krnqb::com
