#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "profit_and_loss/report.h"
#include "support/exact_amount.h"

namespace krnqb::profit_and_loss {

/// Reads the amounts of one document, all in the same notation: "1,234.56", "(5.00)", "-5.00", "5.00-",
/// "$5.00", or with points and commas exchanged if the document may have that notation.
class AmountTexts {
 public:
  explicit AmountTexts(AmountNotation notation) noexcept : notation_(notation) {}

  /// Takes note of the text of an amount at a place, before any is read. Throws Error 13 if it is not an
  /// amount or has another notation than the texts before.
  void Note(std::string_view text, std::string_view place);
  /// Reads a text that was noted. Throws Error 13 if it is out of range, or if nothing in the document says
  /// whether its point or comma separates decimals or thousands.
  ExactAmount Read(std::string_view text, std::string_view place) const;

  /// Returns whether a text looks like an amount in some notation.
  static bool IsAmount(std::string_view text);

 private:
  AmountNotation notation_;
  std::optional<char> decimalMark_;
};

}  // namespace krnqb::profit_and_loss
