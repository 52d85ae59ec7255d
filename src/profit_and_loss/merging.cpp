#include "profit_and_loss/merging.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "profit_and_loss/account_table.h"
#include "profit_and_loss/messages.h"
#include "profit_and_loss/report.h"
#include "profit_and_loss/words.h"

namespace krnqb::profit_and_loss {
namespace {

constexpr std::string_view onceAdvice = "give each account and month once";

void MergeText(std::string& merged, const std::string& other, std::string_view document,
               std::string_view what) {
  if (merged.empty()) merged = other;
  if (other.empty() || SameText(merged, other)) return;
  Refuse(document,
         fmt::format("the {} is {}, but {} in another document", what, Quoted(other), Quoted(merged)),
         fmt::format("give documents with the same {}", what));
}

// Columns without days come first.
std::chrono::year_month_day FirstDay(const StatementColumn& column) {
  return column.days ? column.days->first : std::chrono::year_month_day{};
}

std::string LineKey(const StatementLine& line) {
  return fmt::format("{}\n{}-{}", AccountTable::KeyOf(line.account), static_cast<int>(line.date.year()),
                     static_cast<unsigned>(line.date.month()));
}

class Merging {
 public:
  void Add(ProfitAndLoss statement) {
    merged_.document += (merged_.document.empty() ? "" : ", ") + statement.document;
    if (merged_.title.empty()) merged_.title = statement.title;
    MergeText(merged_.company, statement.company, statement.document, "company");
    MergeText(merged_.basis, statement.basis, statement.document, "basis");
    const std::vector<std::optional<std::size_t>> columns = MapColumns(statement);
    for (StatementAccount& account : statement.accounts) AddAccount(statement, std::move(account), columns);
    AddLines(statement);
    merged_.hasDetail = merged_.hasDetail || statement.hasDetail;
    merged_.findings.insert(merged_.findings.end(), statement.findings.begin(), statement.findings.end());
  }

  ProfitAndLoss Take() {
    SortColumns();
    merged_.hasMonths =
        !merged_.columns.empty() && std::ranges::all_of(merged_.columns, [](const StatementColumn& column) {
          return column.month.has_value();
        });
    return std::move(merged_);
  }

 private:
  // Returns where each column of a statement is in the merged one. A detail report may divide a column of a
  // summary into months: then it adds no column.
  std::vector<std::optional<std::size_t>> MapColumns(const ProfitAndLoss& statement) {
    std::vector<std::optional<std::size_t>> mapped;
    for (const StatementColumn& column : statement.columns) {
      std::optional<std::size_t> place;
      bool overlaps = false;
      for (std::size_t index = 0; index < merged_.columns.size(); ++index) {
        if (merged_.columns[index].SameTime(column)) place = index;
        overlaps = overlaps || merged_.columns[index].Overlaps(column);
      }
      if (!place && !(statement.hasDetail && overlaps)) {
        place = merged_.columns.size();
        if (*place == mostAmountColumns) {
          Refuse(
              statement.document,
              fmt::format("the documents together have more than {} columns of amounts", mostAmountColumns),
              "give fewer months");
        }
        merged_.columns.push_back(column);
      }
      mapped.push_back(place);
    }
    return mapped;
  }

  void AddAccount(const ProfitAndLoss& statement, StatementAccount account,
                  const std::vector<std::optional<std::size_t>>& columns) {
    const auto [found, isNew] = indices_.try_emplace(AccountTable::KeyOf(account.names), indices_.size());
    const std::size_t index = found->second;
    if (isNew) {
      if (index == mostAccounts) {
        Refuse(account.place, fmt::format("the documents together have more than {} accounts", mostAccounts),
               "give documents of one company");
      }
      covered_.emplace_back();
      merged_.accounts.push_back(account);
      merged_.accounts.back().amounts.clear();
    }
    MergeSection(merged_.accounts[index], account);
    covered_[index].resize(merged_.columns.size());
    merged_.accounts[index].amounts.resize(merged_.columns.size());
    CheckDivided(statement, index, account, columns);
    for (std::size_t column = 0; column < columns.size(); ++column) {
      if (const std::optional<std::size_t>& place = columns[column])
        AddAmount(index, *place, account, account.amounts.at(column));
    }
  }

  static void MergeSection(StatementAccount& merged, const StatementAccount& account) {
    if (merged.section == Section::Unknown) merged.section = account.section;
    if (account.section == Section::Unknown || account.section == merged.section) return;
    Refuse(
        account.place,
        fmt::format("the account {} is in the section {}, but in {} at {}", Quoted(account.FullName()),
                    Quoted(SectionName(account.section)), Quoted(SectionName(merged.section)), merged.place),
        "give reports of the same company from the same day");
  }

  void AddAmount(std::size_t index, std::size_t column, const StatementAccount& account,
                 const ExactAmount& amount) {
    StatementAccount& merged = merged_.accounts[index];
    const StatementColumn& time = merged_.columns[column];
    if (covered_[index][column]) {
      if (merged.amounts[column] == amount) return;
      Refuse(account.place,
             fmt::format("the account {} has {} in {}, but {} at {}", Quoted(account.FullName()),
                         amount.Text(), Quoted(time.title), merged.amounts[column].Text(), merged.place),
             onceAdvice);
    }
    for (std::size_t other = 0; other < merged_.columns.size(); ++other) {
      if (!covered_[index][other] || !merged_.columns[other].Overlaps(time)) continue;
      Refuse(
          account.place,
          fmt::format("the account {} has an amount for {}, and one for {} at {}", Quoted(account.FullName()),
                      Quoted(time.title), Quoted(merged_.columns[other].title), merged.place),
          onceAdvice);
    }
    covered_[index][column] = true;
    merged.amounts[column] = amount;
  }

  // Checks the months of a detail report against the column of a summary that they divide.
  void CheckDivided(const ProfitAndLoss& statement, std::size_t index, const StatementAccount& account,
                    const std::vector<std::optional<std::size_t>>& columns) const {
    std::vector<bool> explained(columns.size());
    for (std::size_t whole = 0; whole < merged_.columns.size(); ++whole) {
      if (!covered_[index][whole]) continue;
      ExactAmount sum;
      bool any = false;
      const StatementColumn& time = merged_.columns[whole];
      for (std::size_t part = 0; part < columns.size(); ++part) {
        if (columns[part] || !statement.columns[part].Overlaps(time)) continue;
        explained[part] = true;
        any = true;
        sum += account.amounts.at(part);
      }
      const std::optional<DayRange>& first = statement.columns.front().days;
      const std::optional<DayRange>& last = statement.columns.back().days;
      const bool complete = any && time.days && first && last &&
                            DayRange{.first = first->first, .last = last->last}.Contains(*time.days);
      if (!complete || sum == merged_.accounts[index].amounts[whole]) continue;
      Refuse(account.place,
             fmt::format("the transactions of the account {} add up to {} in {}, but it has {} at {}",
                         Quoted(account.FullName()), sum.Text(), Quoted(time.title),
                         merged_.accounts[index].amounts[whole].Text(), merged_.accounts[index].place),
             "give a summary and a detail report from the same day");
    }
    for (std::size_t part = 0; part < columns.size(); ++part) {
      if (columns[part] || explained[part] || account.amounts.at(part).IsZero()) continue;
      Refuse(account.place,
             fmt::format("the account {} has transactions in {}, but no amount in the summary report",
                         Quoted(account.FullName()), Quoted(statement.columns[part].title)),
             "give a summary and a detail report with the same accounts");
    }
  }

  // Lines of an account and month that an earlier detail report contains too are the same ones.
  void AddLines(ProfitAndLoss& statement) {
    std::unordered_set<std::string> keys;
    for (StatementLine& line : statement.lines) {
      std::string key = LineKey(line);
      if (lineKeys_.contains(key)) continue;
      keys.insert(std::move(key));
      merged_.lines.push_back(std::move(line));
    }
    lineKeys_.merge(keys);
  }

  void SortColumns() {
    std::vector<std::size_t> order(merged_.columns.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::stable_sort(order, {}, [&](std::size_t index) { return FirstDay(merged_.columns[index]); });
    std::vector<StatementColumn> columns;
    columns.reserve(order.size());
    for (const std::size_t index : order) columns.push_back(merged_.columns[index]);
    merged_.columns = std::move(columns);
    for (StatementAccount& account : merged_.accounts) {
      account.amounts.resize(order.size());
      std::vector<ExactAmount> amounts;
      amounts.reserve(order.size());
      for (const std::size_t index : order) amounts.push_back(account.amounts[index]);
      account.amounts = std::move(amounts);
    }
  }

  ProfitAndLoss merged_;
  std::unordered_map<std::string, std::size_t> indices_;
  std::vector<std::vector<bool>> covered_;  // for each account, the columns that a document has given
  std::unordered_set<std::string> lineKeys_;
};

}  // namespace

ProfitAndLoss MergeStatements(std::vector<ProfitAndLoss> statements) {
  std::ranges::stable_partition(statements,
                                [](const ProfitAndLoss& statement) { return !statement.hasDetail; });
  Merging merging;
  for (ProfitAndLoss& statement : statements) merging.Add(std::move(statement));
  return merging.Take();
}

}  // namespace krnqb::profit_and_loss
