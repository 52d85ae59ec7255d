#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "krnqb/warning.h"
#include "support/money_text.h"

namespace krnqb {
namespace {

constexpr std::size_t findingsNamed = 5;

struct WarningWords {
  WarningCode code;
  std::string_view word;
  std::string_view sentence;  // what follows is the list of findings
};

constexpr std::array warningWords{
    WarningWords{WarningCode::UnsupportedProcessor, "unsupported-processor",
                 "amounts can be read only from a request processor of version 1 or 2, so every amount is 0: "
                 "QuickBooks' has version"},
    WarningWords{WarningCode::EmptyPeriod, "empty-period",
                 "QuickBooks has no amounts in the twelve months from"},
    WarningWords{WarningCode::BalanceSpread, "balance-spread",
                 "accounts without transactions in the period show today's balance, divided evenly over "
                 "months:"},
    WarningWords{WarningCode::RowTwice, "row-twice", "two plan rows contain the amounts of one account:"},
    WarningWords{WarningCode::TwinMisaligned, "twin-misaligned",
                 "actual amounts are in a row of another name:"},
    WarningWords{WarningCode::TwinMissing, "twin-missing", "actual amounts have no row in the plan:"},
    WarningWords{WarningCode::ShortRow, "short-row", "plan rows have too few cells for twelve months:"},
    WarningWords{WarningCode::NoRow, "no-row", "accounts with amounts have no row in the plan:"},
    WarningWords{WarningCode::DepreciationAndOwnRow, "depreciation-and-own-row",
                 "accounts are in a row of their own and in the row Depreciation as well:"},
    WarningWords{WarningCode::TextCut, "text-cut", "numbers could be read only in part:"},
    WarningWords{WarningCode::QuantityAsOne, "quantity-as-one",
                 "quantities that are not numbers counted as 1:"},
    WarningWords{WarningCode::BilledAgain, "billed-again",
                 "more was billed to customers than had been booked as their expenses, and reduces these "
                 "expenses:"},
    WarningWords{WarningCode::TotalColumn, "total-column",
                 "reports of one month have more than one column of amounts, and all were added:"},
    WarningWords{WarningCode::NoStartRow, "no-start-row",
                 "growth formulas refer to the wrong rows because the start row of their block is missing or "
                 "invalid:"},
    WarningWords{WarningCode::NamesDifferInCase, "names-differ-in-case",
                 "top-level accounts have names that differ only in case, which ends an import of amounts; "
                 "rename one of each:"},
    WarningWords{WarningCode::NameWithQuote, "name-with-quote",
                 "accounts cannot be selected because of a character in their name or id; rename them in "
                 "QuickBooks:"},
    WarningWords{WarningCode::EquityNamedFirst, "equity-named-first",
                 "past performance shows all equity as retained earnings because the company's first account "
                 "has that name:"},
    WarningWords{WarningCode::PastFromToday, "past-from-today",
                 "past performance of a company that answers with transactions shows"},
    WarningWords{WarningCode::TablesNotLoaded, "tables-not-loaded", "the plan did not take changed tables:"},
    WarningWords{WarningCode::HalfLoadedTwins, "half-loaded-twins",
                 "only one table of planned and actual values could be changed, so their rows may no longer "
                 "match:"}};

const WarningWords& WordsOf(WarningCode code) noexcept {
  const auto found = std::find_if(warningWords.begin(), warningWords.end(),
                                  [&](const WarningWords& words) { return words.code == code; });
  return found == warningWords.end() ? warningWords.front() : *found;
}

std::string SumText(const std::optional<double>& amount) {
  return MoneyText(amount.value_or(0));
}

// Returns month numbers with their ranges: "month 3", "months 1 to 4 and 7".
std::string MonthsText(const std::vector<std::int16_t>& months) {
  std::vector<std::string> parts;
  for (std::size_t first = 0; first < months.size();) {
    std::size_t last = first;
    while (last + 1 < months.size() && months[last + 1] == months[last] + 1) ++last;
    parts.push_back(first == last ? fmt::format("{}", months[first])
                                  : fmt::format("{} to {}", months[first], months[last]));
    first = last + 1;
  }
  std::string text = months.size() == 1 ? "month " : "months ";
  for (std::size_t part = 0; part < parts.size(); ++part) {
    if (part > 0) text += part + 1 == parts.size() ? " and " : ", ";
    text += parts[part];
  }
  return text;
}

std::string BalanceSpreadText(const Finding& finding) {
  const std::string excluded =
      finding.otherAmount.value_or(0) == 0
          ? std::string()
          : fmt::format(", without {} in its sub-accounts", SumText(finding.otherAmount));
  return fmt::format("{} ({} over {}{})", finding.name, SumText(finding.amount), MonthsText(finding.months),
                     excluded);
}

std::string FindingText(const Finding& finding) {
  switch (finding.code) {
    case WarningCode::EmptyPeriod:
      return finding.text;
    case WarningCode::BalanceSpread:
      return BalanceSpreadText(finding);
    case WarningCode::RowTwice:
      return fmt::format("{} and {} ({} counted twice)", finding.other, finding.name,
                         SumText(finding.amount));
    case WarningCode::TwinMisaligned:
      return fmt::format("{} in the row {} ({})", finding.name, finding.other, SumText(finding.amount));
    case WarningCode::ShortRow:
      return fmt::format("{} ({} missing: {})", finding.name, MonthsText(finding.months),
                         SumText(finding.amount));
    case WarningCode::DepreciationAndOwnRow:
      return fmt::format("{} ({} counted twice)", finding.name, SumText(finding.amount));
    case WarningCode::TextCut:
      return fmt::format("{} \"{}\" as {}", finding.name, finding.text, SumText(finding.amount));
    case WarningCode::QuantityAsOne:
      return fmt::format("{} \"{}\"", finding.name, finding.text);
    case WarningCode::TotalColumn:
      return fmt::format("{} of {} ({} too much)", finding.name, finding.text, SumText(finding.amount));
    case WarningCode::NoStartRow:
      return finding.text.empty() ? finding.name : fmt::format("{} (\"{}\")", finding.name, finding.text);
    case WarningCode::NamesDifferInCase:
      return fmt::format("{} and {}", finding.name, finding.other);
    case WarningCode::HalfLoadedTwins:
      return fmt::format("{} without {}", finding.name, finding.other);
    case WarningCode::TwinMissing:
    case WarningCode::NoRow:
    case WarningCode::BilledAgain:
    case WarningCode::EquityNamedFirst:
      return fmt::format("{} ({})", finding.name, SumText(finding.amount));
    case WarningCode::UnsupportedProcessor:
    case WarningCode::NameWithQuote:
    case WarningCode::PastFromToday:
    case WarningCode::TablesNotLoaded:
      break;
  }
  return finding.name;
}

}  // namespace

std::string_view WarningWord(WarningCode code) noexcept {
  return WordsOf(code).word;
}

std::string WarningText(const Warning& warning) {
  std::string text(WordsOf(warning.code).sentence);
  const std::size_t named = std::min(warning.findings.size(), findingsNamed);
  for (std::size_t index = 0; index < named; ++index) {
    text += (index == 0 ? " " : ", ") + FindingText(warning.findings[index]);
  }
  const std::size_t others = warning.findings.size() - named;
  if (others > 0) text += fmt::format(" and {} more", others);
  return text;
}

}  // namespace krnqb
