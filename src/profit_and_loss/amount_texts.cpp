#include "profit_and_loss/amount_texts.h"

#include <fmt/format.h>

#include <string>

#include "profit_and_loss/messages.h"
#include "profit_and_loss/words.h"

namespace krnqb::profit_and_loss {
namespace {

constexpr std::size_t groupLength = 3;

struct SignedDigits {
  bool negative = false;
  std::string_view digits;  // with points and commas
};

bool TakeFront(std::string_view& text, std::string_view mark) noexcept {
  if (!text.starts_with(mark)) return false;
  text.remove_prefix(mark.size());
  text = Trimmed(text);
  return true;
}

bool TakeMinus(std::string_view& text) noexcept {
  constexpr std::string_view minusSign = "\u2212";
  return TakeFront(text, "-") || TakeFront(text, minusSign);
}

// Removes sign, parentheses and "$". Returns nothing if what remains has other characters than digits, points
// and commas.
std::optional<SignedDigits> WithoutMarks(std::string_view text) {
  text = Trimmed(text);
  SignedDigits result;
  const bool parentheses = text.starts_with('(') && text.ends_with(')');
  if (parentheses) {
    result.negative = true;
    text = Trimmed(text.substr(1, text.size() - 2));
  }
  bool minus = TakeMinus(text);
  const bool currency = TakeFront(text, "$");
  if (currency && !minus) minus = TakeMinus(text);
  if (!minus && text.ends_with('-')) {
    minus = true;
    text = Trimmed(text.substr(0, text.size() - 1));
  }
  if (minus && parentheses) return std::nullopt;
  result.negative = result.negative || minus;
  result.digits = text;
  const bool any = text.find_first_of("0123456789") != std::string_view::npos;
  return any && text.find_first_not_of("0123456789.,") == std::string_view::npos ? std::optional(result)
                                                                                 : std::nullopt;
}

// Returns the digits with "." as the decimal mark, or nothing if they are not well-formed with this mark: the
// other one must be between groups of three.
std::optional<std::string> PlainDigits(std::string_view digits, char decimalMark) {
  const char groupMark = decimalMark == '.' ? ',' : '.';
  const std::size_t mark = digits.find(decimalMark);
  std::string_view whole = digits.substr(0, mark);
  const std::string_view decimals = mark == std::string_view::npos ? "" : digits.substr(mark + 1);
  if (decimals.find_first_of(".,") != std::string_view::npos) return std::nullopt;
  std::string plain;
  for (bool first = true;; first = false) {
    const std::size_t end = whole.find(groupMark);
    const std::string_view group = whole.substr(0, end);
    const bool grouped = !first || end != std::string_view::npos;
    const bool fits =
        !grouped || (first ? !group.empty() && group.size() <= groupLength : group.size() == groupLength);
    if (!fits) return std::nullopt;
    plain += group;
    if (end == std::string_view::npos) break;
    whole.remove_prefix(end + 1);
  }
  if (mark != std::string_view::npos) plain.append(1, '.').append(decimals);
  return plain;
}

// Both readings of the same digits; they are equal if the digits contain neither mark.
struct Readings {
  std::optional<std::string> point;
  std::optional<std::string> comma;
};

std::optional<Readings> ReadingsOf(std::string_view text) {
  const std::optional<SignedDigits> digits = WithoutMarks(text);
  if (!digits) return std::nullopt;
  Readings readings{PlainDigits(digits->digits, '.'), PlainDigits(digits->digits, ',')};
  if (!readings.point && !readings.comma) return std::nullopt;
  // "0.085" is not 85 with a thousands separator.
  const bool leadingZero = digits->digits.size() > 1 && digits->digits.front() == '0';
  if (leadingZero && digits->digits[1] == '.') readings.comma.reset();
  if (leadingZero && digits->digits[1] == ',') readings.point.reset();
  return readings;
}

}  // namespace

bool AmountTexts::IsAmount(std::string_view text) {
  return ReadingsOf(text).has_value();
}

void AmountTexts::Note(std::string_view text, std::string_view place) {
  const std::optional<Readings> readings = ReadingsOf(text);
  if (!readings) {
    Refuse(place, Quoted(text) + " is not an amount",
           "write it like 1,234.56, -5.00 or (5.00), or leave it empty");
  }
  if (readings->point && readings->comma) return;
  const char mark = readings->point ? '.' : ',';
  if (mark == ',' && notation_ == AmountNotation::Point) {
    Refuse(place, Quoted(text) + R"( does not use "." for decimals and "," for thousands)",
           "write it like 1,234.56, or separate the columns with \";\"");
  }
  if (decimalMark_ && *decimalMark_ != mark) {
    Refuse(place, Quoted(text) + " uses another decimal mark than the amounts above it",
           "write all amounts in the same way");
  }
  decimalMark_ = mark;
}

ExactAmount AmountTexts::Read(std::string_view text, std::string_view place) const {
  const std::optional<SignedDigits> digits = WithoutMarks(text);
  const std::optional<Readings> readings = ReadingsOf(text);
  if (!digits || !readings) Refuse(place, Quoted(text) + " is not an amount", "write it like 1,234.56");
  // Between commas only "." separates decimals, but three of them may still be thousands.
  const bool thousands = digits->digits.find(',') != std::string_view::npos;
  const bool clear =
      decimalMark_ || readings->point == readings->comma || (notation_ == AmountNotation::Point && thousands);
  if (!clear) {
    Refuse(place, Quoted(text) + " is ambiguous: its point or comma may separate decimals or thousands",
           "write amounts with two decimals");
  }
  const std::optional<std::string>& plain =
      decimalMark_.value_or('.') == '.' ? readings->point : readings->comma;
  const std::optional<ExactAmount> amount =
      plain ? ExactAmount::FromText((digits->negative ? "-" : "") + *plain) : std::nullopt;
  if (!amount) {
    Refuse(place, Quoted(text) + " is out of range or has more than six decimals",
           "correct the amount in the document");
  }
  return *amount;
}

}  // namespace krnqb::profit_and_loss
