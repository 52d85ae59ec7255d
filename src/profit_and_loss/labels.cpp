#include "profit_and_loss/labels.h"

#include <array>
#include <cstddef>

#include "profit_and_loss/words.h"

namespace krnqb::profit_and_loss {
namespace {

constexpr std::string_view otherEnding = " - Other";
constexpr std::string_view hyphen = " - ";

struct SectionLabel {
  std::string_view label;
  Section section;
};

constexpr std::array sectionLabels{
    SectionLabel{"Income", Section::Income},
    SectionLabel{"Revenue", Section::Income},
    SectionLabel{"Cost of Goods Sold", Section::CostOfGoods},
    SectionLabel{"Cost of Sales", Section::CostOfGoods},
    SectionLabel{"COGS", Section::CostOfGoods},
    SectionLabel{"Expense", Section::Expense},
    SectionLabel{"Expenses", Section::Expense},
    SectionLabel{"Other Income", Section::OtherIncome},
    SectionLabel{"Other Expense", Section::OtherExpense},
    SectionLabel{"Other Expenses", Section::OtherExpense},
};

struct ClosingLabel {
  std::string_view label;
  ClosingLine line;
};

constexpr std::array closingLabels{
    ClosingLabel{"Gross Profit", ClosingLine::GrossProfit},
    ClosingLabel{"Net Ordinary Income", ClosingLine::NetOrdinaryIncome},
    ClosingLabel{"Net Operating Income", ClosingLine::NetOrdinaryIncome},
    ClosingLabel{"Net Other Income", ClosingLine::NetOtherIncome},
    ClosingLabel{"Net Income", ClosingLine::NetIncome},
    ClosingLabel{"Net Profit", ClosingLine::NetIncome},
    ClosingLabel{"Net Income (Loss)", ClosingLine::NetIncome},
    ClosingLabel{"Total", ClosingLine::Total},
    ClosingLabel{"Totals", ClosingLine::Total},
    ClosingLabel{"Grand Total", ClosingLine::Total},
};

bool IsDigit(char character) noexcept {
  return character >= '0' && character <= '9';
}

}  // namespace

std::optional<Section> SectionOfHeading(std::string_view label) {
  for (const SectionLabel& known : sectionLabels) {
    if (SameText(label, known.label)) return known.section;
  }
  return std::nullopt;
}

bool IsTopHeading(std::string_view label) {
  return SameText(label, "Ordinary Income/Expense") || SameText(label, "Other Income/Expense");
}

std::optional<ClosingLine> ClosingLineOf(std::string_view label) {
  for (const ClosingLabel& known : closingLabels) {
    if (SameText(label, known.label)) return known.line;
  }
  return std::nullopt;
}

std::optional<std::string_view> TotalledLabel(std::string_view label) {
  for (const std::string_view beginning : {"Total for ", "Total "}) {
    if (!BeginsWith(label, beginning)) continue;
    const std::string_view totalled = Trimmed(label.substr(beginning.size()));
    if (!totalled.empty()) return totalled;
  }
  return std::nullopt;
}

std::optional<std::string_view> OtherOfLabel(std::string_view label) {
  if (label.size() <= otherEnding.size()) return std::nullopt;
  const std::size_t length = label.size() - otherEnding.size();
  return SameText(label.substr(length), otherEnding) ? std::optional(label.substr(0, length)) : std::nullopt;
}

bool IsOtherOf(std::string_view label, std::string_view heading) {
  const std::optional<std::string_view> parent = OtherOfLabel(label);
  return parent && SameText(*parent, heading);
}

NumberedName SeparateNumber(std::string_view label, bool hyphens) {
  constexpr std::string_view dot = " \u00B7 ";
  const std::string_view separator = hyphens && HasHyphenNumber(label) ? hyphen : dot;
  const std::size_t at = label.find(separator);
  const std::string_view number = label.substr(0, at);
  const bool numbered = at != std::string_view::npos && !number.empty() && IsDigit(number.front()) &&
                        number.find(' ') == std::string_view::npos;
  const std::string_view name = numbered ? Trimmed(label.substr(at + separator.size())) : label;
  if (!numbered || name.empty()) return {.number = "", .name = std::string(label)};
  return {.number = std::string(number), .name = std::string(name)};
}

bool HasHyphenNumber(std::string_view label) {
  constexpr std::size_t fewestDigits = 3;
  constexpr std::size_t mostDigits = 7;
  std::size_t digits = 0;
  while (digits < label.size() && IsDigit(label[digits])) ++digits;
  const std::string_view rest = label.substr(digits);
  return digits >= fewestDigits && digits <= mostDigits && rest.starts_with(hyphen) &&
         !Trimmed(rest.substr(hyphen.size())).empty();
}

}  // namespace krnqb::profit_and_loss
