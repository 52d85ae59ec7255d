#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "support/exact_amount.h"
#include "support/year_month.h"

namespace krnqb::profit_and_loss {

/// The part of a profit and loss in which an account is. Amounts of Income and OtherIncome are positive if
/// credited, those of the others if debited.
enum class Section : std::uint8_t { Unknown, Income, CostOfGoods, Expense, OtherIncome, OtherExpense };

/// Returns the heading of a section, such as "Cost of Goods Sold", or "" for Unknown.
std::string_view SectionName(Section section) noexcept;

/// The days from the first to the last, both included.
struct DayRange {
  std::chrono::year_month_day first{};
  std::chrono::year_month_day last{};

  bool operator==(const DayRange&) const = default;
  /// Returns whether two ranges have a day in common.
  bool Overlaps(const DayRange& other) const noexcept { return first <= other.last && other.first <= last; }
  /// Returns whether this range has all days of another one.
  bool Contains(const DayRange& other) const noexcept { return first <= other.first && other.last <= last; }
};

/// What a column of amounts covers.
struct StatementColumn {
  std::string title;
  std::optional<DayRange> days;    ///< missing if the document does not state them
  std::optional<YearMonth> month;  ///< set if the days are those of one month

  /// Returns whether two columns cover the same time; the titles do not matter.
  bool SameTime(const StatementColumn& other) const noexcept { return days == other.days; }
  /// Returns whether two columns have a day in common; a column without days may have any.
  bool Overlaps(const StatementColumn& other) const noexcept {
    return !days || !other.days || days->Overlaps(*other.days);
  }
};

/// The amounts of one account itself, without those of its sub-accounts.
struct StatementAccount {
  Section section = Section::Unknown;
  std::vector<std::string> names;    ///< from the top-level account down to this one, without numbers
  std::vector<std::string> numbers;  ///< the account number of each name, "" if it has none
  std::vector<ExactAmount> amounts;  ///< one for each column of the statement
  std::string place;                 ///< where it was read, such as "books.csv: line 12"

  /// Returns the names with ":" between them.
  std::string FullName() const;
};

/// One transaction line of a detail report.
struct StatementLine {
  Section section = Section::Unknown;
  std::vector<std::string> account;  ///< from the top-level account down, without numbers
  std::string type;                  ///< of the transaction, such as "Paycheck" or "General Journal"
  std::chrono::year_month_day date{};
  std::string number;  ///< of the document, such as an invoice; may be empty
  std::string name;    ///< customer, vendor or employee; may be empty
  std::string memo;    ///< may be empty
  ExactAmount amount;
  std::string place;  ///< where it was read, such as "books.csv: line 12"
};

/// A profit and loss as read. Texts are UTF-8.
struct ProfitAndLoss {
  std::string document;  ///< the name under which it was read; several are separated by ", "
  std::string title;     ///< may be empty, as may company and basis
  std::string company;
  std::string basis;  ///< "Accrual", "Cash", or another text of the document
  std::vector<StatementColumn> columns;
  std::vector<StatementAccount> accounts;  ///< in the order of the document; each account once
  std::vector<StatementLine> lines;        ///< of detail reports only
  bool hasMonths = false;                  ///< whether there are columns and each of them is one month
  bool hasDetail = false;                  ///< whether it, or a document merged into it, is a detail report
  /// What does not agree within the document or makes it doubtful, a sentence each with its place.
  std::vector<std::string> findings;
};

}  // namespace krnqb::profit_and_loss
