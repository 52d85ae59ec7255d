#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace krnqb {

/// An amount in whole millionths, so that sums are exact. Its range is about 9.2 trillion on either side of
/// 0.
class ExactAmount {
 public:
  constexpr ExactAmount() noexcept = default;

  static constexpr ExactAmount FromMillionths(std::int64_t millionths) noexcept {
    ExactAmount amount;
    amount.millionths_ = millionths;
    return amount;
  }
  /// Throws Error 6 if the amount is out of range.
  static ExactAmount FromHundredths(std::int64_t hundredths);
  /// Rounds to the nearest millionth, halves to even. Throws Error 6 if the result is out of range or
  /// `amount` is not a number.
  static ExactAmount From(double amount);
  /// Reads a plain decimal number: an optional sign, digits with at most one ".", and at most six decimals
  /// other than trailing zeros. Returns nothing for any other text and for a number out of range.
  static std::optional<ExactAmount> FromText(std::string_view text) noexcept;

  constexpr std::int64_t Millionths() const noexcept { return millionths_; }
  constexpr bool IsZero() const noexcept { return millionths_ == 0; }
  /// Returns the double nearest to the amount.
  double AsDouble() const noexcept;

  /// Adds, subtracts and negates. Throws Error 6 if the result is out of range.
  ExactAmount& operator+=(const ExactAmount& other);
  ExactAmount& operator-=(const ExactAmount& other);
  ExactAmount operator-() const;
  friend ExactAmount operator+(ExactAmount left, const ExactAmount& right) { return left += right; }
  friend ExactAmount operator-(ExactAmount left, const ExactAmount& right) { return left -= right; }

  constexpr auto operator<=>(const ExactAmount&) const noexcept = default;

  /// Formats for people, with two to six decimals and "," between thousands: "-1,234.50", "0.085".
  std::string Text() const;
  /// Formats like `Text`, but without ",".
  std::string PlainText() const;

 private:
  std::int64_t millionths_ = 0;
};

}  // namespace krnqb
