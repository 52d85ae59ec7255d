#include <gtest/gtest.h>

#include <set>
#include <string>
#include <utility>
#include <vector>

#include "krnqb/warning.h"

namespace krnqb {
namespace {

struct SentenceCase {
  Finding finding;
  const char* word;
  const char* sentence;
};

const std::vector<SentenceCase>& SentenceCases() {
  using Code = WarningCode;
  static const std::vector<SentenceCase> cases = {
      {{.code = Code::UnsupportedProcessor, .name = "16"},
       "unsupported-processor",
       "amounts can be read only from a request processor of version 1 or 2, so every amount is 0: "
       "QuickBooks' has version 16"},
      {{.code = Code::EmptyPeriod, .text = "1999-01"},
       "empty-period",
       "QuickBooks has no amounts in the twelve months from 1999-01"},
      {{.code = Code::BalanceSpread,
        .name = "Payroll",
        .amount = 2214.8,
        .otherAmount = 26200,
        .months = {1, 2, 3}},
       "balance-spread",
       "accounts without transactions in the period show today's balance, divided evenly over months: "
       "Payroll (2,214.80 over months 1 to 3, without 26,200.00 in its sub-accounts)"},
      {{.code = Code::RowTwice, .name = "Rent", .other = "RENT", .amount = 11610},
       "row-twice",
       "two plan rows contain the amounts of one account: RENT and Rent (11,610.00 counted twice)"},
      {{.code = Code::TwinMisaligned, .name = "Rent", .other = "Travel", .amount = 5},
       "twin-misaligned",
       "actual amounts are in a row of another name: Rent in the row Travel (5.00)"},
      {{.code = Code::TwinMissing, .name = "Rent", .amount = 5},
       "twin-missing",
       "actual amounts have no row in the plan: Rent (5.00)"},
      {{.code = Code::ShortRow, .name = "Rent", .amount = 5, .months = {4, 5}},
       "short-row",
       "plan rows have too few cells for twelve months: Rent (months 4 to 5 missing: 5.00)"},
      {{.code = Code::NoRow, .name = "Rent", .amount = 5},
       "no-row",
       "accounts with amounts have no row in the plan: Rent (5.00)"},
      {{.code = Code::DepreciationAndOwnRow, .name = "Dep", .amount = 5},
       "depreciation-and-own-row",
       "accounts are in a row of their own and in the row Depreciation as well: Dep (5.00 counted twice)"},
      {{.code = Code::TextCut, .name = "Rent", .text = "1,234.56", .amount = 1},
       "text-cut",
       "numbers could be read only in part: Rent \"1,234.56\" as 1.00"},
      {{.code = Code::QuantityAsOne, .name = "Bulbs", .text = "two"},
       "quantity-as-one",
       "quantities that are not numbers counted as 1: Bulbs \"two\""},
      {{.code = Code::BilledAgain, .name = "Ms Wood", .amount = 150},
       "billed-again",
       "more was billed to customers than had been booked as their expenses, and reduces these expenses: Ms "
       "Wood (150.00)"},
      {{.code = Code::TotalColumn, .name = "sales", .text = "2002-01", .amount = 105},
       "total-column",
       "reports of one month have more than one column of amounts, and all were added: sales of 2002-01 "
       "(105.00 too much)"},
      {{.code = Code::NoStartRow, .name = "expenses", .text = "x"},
       "no-start-row",
       "growth formulas refer to the wrong rows because the start row of their block is missing or invalid: "
       "expenses (\"x\")"},
      {{.code = Code::NamesDifferInCase, .name = "Rent", .other = "RENT"},
       "names-differ-in-case",
       "top-level accounts have names that differ only in case, which ends an import of amounts; rename one "
       "of each: Rent and RENT"},
      {{.code = Code::NameWithQuote, .name = "3\" pots"},
       "name-with-quote",
       "accounts cannot be selected because of a character in their name or id; rename them in QuickBooks: "
       "3\" pots"},
      {{.code = Code::EquityNamedFirst, .name = "Owner", .amount = -5},
       "equity-named-first",
       "past performance shows all equity as retained earnings because the company's first account has that "
       "name: Owner (-5.00)"},
      {{.code = Code::PastFromToday, .name = "today's balances"},
       "past-from-today",
       "past performance of a company that answers with transactions shows today's balances"},
      {{.code = Code::TablesNotLoaded, .name = "line 3: no root"},
       "tables-not-loaded",
       "the plan did not take changed tables: line 3: no root"},
      {{.code = Code::HalfLoadedTwins, .name = "planned expenses", .other = "actual expenses"},
       "half-loaded-twins",
       "only one table of planned and actual values could be changed, so their rows may no longer match: "
       "planned expenses without actual expenses"}};
  return cases;
}

TEST(WarningSentence, NamesWhatWasFound) {
  std::set<WarningCode> codes;
  for (const SentenceCase& each : SentenceCases()) {
    EXPECT_EQ(WarningWord(each.finding.code), each.word);
    EXPECT_EQ(WarningText({each.finding.code, {each.finding}}), each.sentence);
    codes.insert(each.finding.code);
  }
  EXPECT_EQ(codes.size(), static_cast<std::size_t>(WarningCode::HalfLoadedTwins) + 1) << "every code";
}

TEST(WarningSentence, NamesTheFirstFiveFindingsAndCountsTheOthers) {
  Warning warning{WarningCode::NameWithQuote, {}};
  for (const char* name : {"A", "B", "C", "D", "E"})
    warning.findings.push_back({.code = WarningCode::NameWithQuote, .name = name});
  EXPECT_TRUE(WarningText(warning).ends_with("A, B, C, D, E"));
  for (int further = 0; further < 12; ++further)
    warning.findings.push_back({.code = WarningCode::NameWithQuote, .name = "F"});
  EXPECT_TRUE(WarningText(warning).ends_with("A, B, C, D, E and 12 more"));
}

TEST(WarningSentence, WritesMonthsAsRanges) {
  const auto text = [](std::vector<std::int16_t> months) {
    const Finding finding{
        .code = WarningCode::ShortRow, .name = "X", .amount = 1, .months = std::move(months)};
    const std::string sentence = WarningText({WarningCode::ShortRow, {finding}});
    return sentence.substr(sentence.find("X ("));
  };
  EXPECT_EQ(text({3}), "X (month 3 missing: 1.00)");
  EXPECT_EQ(text({4, 5, 6}), "X (months 4 to 6 missing: 1.00)");
  EXPECT_EQ(text({1, 3, 4, 12}), "X (months 1, 3 to 4 and 12 missing: 1.00)");
}

}  // namespace
}  // namespace krnqb
