#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace krnqb {

/// A reference to a text that may be missing, such as an element's. As small as std::string_view, because an
/// answer has millions of them.
class OptionalText {
 public:
  constexpr OptionalText() noexcept = default;
  constexpr OptionalText(std::nullopt_t /*missing*/) noexcept {}  // NOLINT(google-explicit-constructor)
  constexpr OptionalText(std::string_view text) noexcept          // NOLINT(google-explicit-constructor)
      : text_(text.data() == nullptr ? std::string_view("") : text) {}
  OptionalText(const std::string& text) noexcept : text_(text) {}     // NOLINT(google-explicit-constructor)
  constexpr OptionalText(const char* text) noexcept : text_(text) {}  // NOLINT(google-explicit-constructor)

  constexpr explicit operator bool() const noexcept { return text_.data() != nullptr; }
  /// Only if it is not missing.
  constexpr std::string_view operator*() const noexcept { return text_; }
  constexpr const std::string_view* operator->() const noexcept { return &text_; }
  /// Like that of std::optional.
  // NOLINTNEXTLINE(readability-identifier-naming)
  constexpr std::string_view value_or(std::string_view instead) const noexcept {
    return *this ? text_ : instead;
  }

  friend constexpr bool operator==(const OptionalText& one, const OptionalText& other) noexcept {
    return static_cast<bool>(one) == static_cast<bool>(other) && one.text_ == other.text_;
  }

 private:
  std::string_view text_{};
};

}  // namespace krnqb
