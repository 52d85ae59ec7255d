#include "reconcile/books_causes.h"

#include <fmt/format.h>

#include <map>
#include <optional>
#include <tuple>

#include "krnqb/error.h"
#include "support/date.h"

namespace krnqb::reconcile {
namespace {

using profit_and_loss::ProfitAndLoss;
using profit_and_loss::Section;
using profit_and_loss::StatementAccount;
using profit_and_loss::StatementColumn;
using profit_and_loss::StatementLine;

std::optional<Group> GroupOf(Section section) noexcept {
  switch (section) {
    case Section::Income:
      return Group::Sales;
    case Section::CostOfGoods:
      return Group::CostOfGoods;
    case Section::Expense:
      return Group::Expenses;
    case Section::OtherIncome:
      return Group::OtherIncome;
    case Section::OtherExpense:
      return Group::OtherExpense;
    case Section::Unknown:
      break;
  }
  return std::nullopt;
}

std::optional<std::size_t> MonthIn(const YearMonth& month, const YearMonth& start) {
  const int months = (month.year - start.year) * 12 + month.month - start.month;
  if (months < 0 || months >= static_cast<int>(monthsOfAYear)) return std::nullopt;
  return static_cast<std::size_t>(months);
}

YearMonth MonthOf(const std::chrono::year_month_day& date) {
  return {.year = static_cast<std::int16_t>(static_cast<int>(date.year())),
          .month = static_cast<std::int16_t>(static_cast<unsigned>(date.month()))};
}

class Books {
 public:
  Books(WorkTable& table, const ProfitAndLoss& statement, const YearMonth& start)
      : table_(table), statement_(statement), start_(start) {}

  BooksPeriods Add() {
    if (statement_.hasMonths) {
      AddColumns();
      return BooksPeriods::Months;
    }
    if (statement_.hasDetail) {
      for (const StatementLine& line : statement_.lines) {
        if (const auto month = MonthIn(MonthOf(line.date), start_)) {
          table_.At(LineOf(line.section, line.account, line.place)).months[*month].books += line.amount;
        }
      }
      return BooksPeriods::Months;
    }
    AddYear();
    return BooksPeriods::Year;
  }

  // Pairs the lines of a detail report with the loaded transactions by account, month and amount. What has no
  // partner explains the difference.
  void ExplainLines(const std::vector<PostedEntry>& posted) {
    using Place = std::tuple<std::size_t, std::size_t, std::int64_t>;  // line, month, millionths
    std::map<Place, std::vector<const PostedEntry*>> loaded;
    for (const PostedEntry& entry : posted) {
      loaded[{entry.line, entry.month, entry.amount.Millionths()}].push_back(&entry);
    }
    for (const StatementLine& line : statement_.lines) {
      const auto month = MonthIn(MonthOf(line.date), start_);
      if (!month) continue;
      const std::size_t account = LineOf(line.section, line.account, line.place);
      const auto partner = loaded.find({account, *month, line.amount.Millionths()});
      if (partner != loaded.end() && !partner->second.empty()) {
        partner->second.pop_back();
        continue;
      }
      table_.At(account).months[*month].Explain(CauseCode::NotLoaded, -line.amount, {}, line.type);
    }
    for (const auto& [place, entries] : loaded) {
      for (const PostedEntry* entry : entries) {
        table_.At(entry->line)
            .months[entry->month]
            .Explain(CauseCode::NotInBooks, entry->amount, {entry->transaction});
      }
    }
  }

  // Without a detail report, all that the sums have more or less is due to transactions that are not loaded.
  void ExplainSums(BooksPeriods periods) {
    for (WorkTable::Line& line : table_.Lines()) {
      ExactAmount year;
      for (MonthAmounts& month : line.months) {
        const ExactAmount difference = month.ledger - month.books;
        year += difference;
        if (periods == BooksPeriods::Months) month.Explain(CauseCode::NotLoaded, difference);
      }
      if (periods == BooksPeriods::Year) line.months.front().Explain(CauseCode::NotLoaded, year);
    }
  }

 private:
  void AddColumns() {
    std::size_t covered = 0;
    for (std::size_t column = 0; column < statement_.columns.size(); ++column) {
      const auto month = MonthIn(statement_.columns[column].month.value_or(YearMonth()), start_);
      if (!month) continue;
      ++covered;
      for (const StatementAccount& account : statement_.accounts) {
        table_.At(LineOf(account.section, account.names, account.place)).months[*month].books +=
            account.amounts.at(column);
      }
    }
    if (covered < monthsOfAYear) {
      Fail(fmt::format("it has {} of the twelve months from {}", covered, StartText()));
    }
  }

  void AddYear() {
    const StatementColumn* year = nullptr;
    for (const StatementColumn& column : statement_.columns) {
      if (Covers(column)) year = &column;
    }
    if (year == nullptr) Fail(fmt::format("it does not cover the twelve months from {}", StartText()));
    const auto column = static_cast<std::size_t>(year - statement_.columns.data());
    for (const StatementAccount& account : statement_.accounts) {
      table_.At(LineOf(account.section, account.names, account.place)).months.front().books +=
          account.amounts.at(column);
    }
  }

  // A column without dates is taken to be of the year if it is the only one.
  bool Covers(const StatementColumn& column) const {
    if (!column.days) return statement_.columns.size() == 1;
    const YearMonth last = TwelveMonths(start_).Last();
    return MonthOf(column.days->first) == start_ && static_cast<unsigned>(column.days->first.day()) == 1 &&
           MonthOf(column.days->last) == last &&
           static_cast<unsigned>(column.days->last.day()) == static_cast<unsigned>(DaysInMonth(last));
  }

  std::size_t LineOf(Section section, const std::vector<std::string>& names, const std::string& place) {
    const std::string& name = names.front();
    if (const std::optional<Group> group = GroupOf(section)) return table_.LineOf(*group, name);
    std::optional<std::size_t> found;
    for (const Group group : groups) {
      const std::optional<std::size_t> line = table_.Find(group, name);
      if (line && found) Fail(place, fmt::format("it does not say in which section {} is", name));
      if (line) found = line;
    }
    if (!found)
      Fail(place,
           fmt::format("it does not say in which section {} is, which is not an account of the company",
                       name));
    return *found;
  }

  std::string StartText() const { return fmt::format("{:04}-{:02}", start_.year, start_.month); }

  [[noreturn]] void Fail(const std::string& reason) const { Fail(statement_.document, reason); }
  [[noreturn]] static void Fail(const std::string& place, const std::string& reason) {
    throw Error(error_number::typeMismatch, fmt::format("{}: {}", place, reason));
  }

  WorkTable& table_;
  const ProfitAndLoss& statement_;
  const YearMonth start_;
};

}  // namespace

void TakeLedgerAsBooks(WorkTable& table) {
  for (WorkTable::Line& line : table.Lines()) {
    for (MonthAmounts& month : line.months) month.books = month.ledger;
  }
}

BooksPeriods AddBooks(WorkTable& table, const ProfitAndLoss& statement, const YearMonth& start,
                      const std::vector<PostedEntry>* posted) {
  Books books(table, statement, start);
  const BooksPeriods periods = books.Add();
  if (posted == nullptr) return periods;
  if (statement.hasDetail) {
    books.ExplainLines(*posted);
  } else {
    books.ExplainSums(periods);
  }
  return periods;
}

}  // namespace krnqb::reconcile
