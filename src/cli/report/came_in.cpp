#include "cli/report/came_in.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "cli/explain/words.h"
#include "cli/report/amounts.h"
#include "cli/report/transactions.h"
#include "html/chart.h"
#include "html/elements.h"
#include "html/table.h"
#include "ledger/figures.h"

namespace krnqb::cli {
namespace {

using plan_file::YearAmounts;

struct AccountGroup {
  AmountGroup group = AmountGroup::Expenses;
  std::string_view title;
  std::size_t colour;
};
constexpr std::array accountGroups{AccountGroup{AmountGroup::Income, "Sales", 0},
                                   AccountGroup{AmountGroup::CostOfGoods, "Cost of goods", 1},
                                   AccountGroup{AmountGroup::Expenses, "Expenses", 2}};

// An account's row of amounts with the id of the list of what they are made of.
struct AccountYear {
  const ledger::RowFigures* row = nullptr;
  std::string id;
  html::Fragment list;
  YearAmounts amounts;
};

YearAmounts AmountsOf(const ledger::RowFigures& row) {
  YearAmounts year;
  for (const ledger::Figure& figure : row.figures) {
    const auto month = static_cast<std::size_t>(figure.number) - 1;
    if (!figure.past && month < year.months.size()) year.months[month] += figure.amount;
  }
  return year;
}

std::optional<AmountGroup> GroupOf(const ledger::LedgerFile& ledger, const ledger::RowFigures& row) {
  for (const ledger::Figure& figure : row.figures) {
    if (!figure.terms.empty()) return ledger.Slot(figure.terms.front().slot).group;
  }
  return std::nullopt;
}

html::Row RowOf(const AccountYear& account, std::string_view group) {
  const html::Fragment name = html::Name(account.row->name);
  return {.heading = {account.list.Empty() ? name : html::LinkTo(account.id, name)},
          .cells = YearCells(account.amounts),
          .name = fmt::format("{}: {}", group, account.row->name)};
}

html::Fragment LargestAccounts(const std::vector<AccountYear>& accounts, const AccountGroup& group) {
  constexpr std::size_t most = 10;
  constexpr std::size_t fewest = 2;
  std::vector<html::NamedAmount> amounts;
  for (const AccountYear& account : accounts) {
    const double sum = account.amounts.Sum();
    if (sum != 0 && std::isfinite(sum)) amounts.push_back({account.row->name, sum});
  }
  if (amounts.size() < fewest) return {};
  std::ranges::stable_sort(amounts, std::ranges::greater(),
                           [](const html::NamedAmount& named) { return std::abs(named.amount); });
  const std::size_t shown = std::min(amounts.size(), most);
  const std::string title = amounts.size() > shown ? fmt::format("{}: the {} largest of {} accounts",
                                                                 group.title, shown, amounts.size())
                                                   : fmt::format("{} by account", group.title);
  amounts.resize(shown);
  return html::Heading(3, title) +
         html::BarList(title, "The table above has the same amounts.", amounts, group.colour);
}

}  // namespace

html::Fragment CameIn(const ledger::LedgerFile& ledger, const std::vector<ledger::RowFigures>& rows,
                      const TransactionLists& lists, const YearMonth& start) {
  html::Chart chart{.title = "What came in, by month",
                    .description = "The sums in the table below: sales, cost of goods and expenses.",
                    .labels = MonthHeadings(start),
                    .series = {}};
  html::Table table{.caption = "Amounts by account and month, before growth",
                    .columns = YearColumns("Account", start),
                    .rows = {},
                    .name = "came-in"};
  html::Fragment bars;
  html::Fragment madeOf;
  std::size_t number = 0;
  for (const AccountGroup& group : accountGroups) {
    std::vector<AccountYear> accounts;
    for (const ledger::RowFigures& row : rows) {
      if (GroupOf(ledger, row) != group.group) continue;
      AccountYear& account = accounts.emplace_back();
      account.row = &row;
      account.id = fmt::format("account-{}", ++number);
      account.list = lists.Of(row, account.id);
      account.amounts = AmountsOf(row);
    }
    if (accounts.empty()) continue;
    YearAmounts sum;
    html::Fragment opened;
    table.rows.push_back({.heading = {html::Text(group.title)}, .cells = {}, .kind = html::RowKind::Heading});
    for (const AccountYear& account : accounts) {
      sum += account.amounts;
      table.rows.push_back(RowOf(account, group.title));
      opened += account.list;
    }
    table.rows.push_back({.heading = {html::Text(fmt::format("{}, sum", group.title))},
                          .cells = YearCells(sum),
                          .kind = html::RowKind::Total});
    chart.series.push_back({.name = std::string(group.title),
                            .kind = html::SeriesKind::Bars,
                            .colour = group.colour,
                            .amounts = {sum.months.begin(), sum.months.end()}});
    bars += LargestAccounts(accounts, group);
    if (!opened.Empty())
      madeOf += html::Heading(3, fmt::format("{}: what each amount is made of", group.title)) + opened;
  }
  if (table.rows.empty()) return {};
  const html::Fragment remark = html::Remark(fmt::format(
      "Open an account, then a month, to see the amounts that it is made of: at most {} for each, then the "
      "number and the sum of the others.",
      lists.MostPerSum()));
  return html::ChartImage(chart) + html::TableRegion(table) + bars +
         (madeOf.Empty() ? madeOf : remark + madeOf);
}

html::Fragment PastFiguresMadeOf(const ledger::LedgerFile& ledger,
                                 const std::vector<ledger::RowFigures>& rows, const TransactionLists& lists) {
  html::Fragment opened;
  std::size_t number = 0;
  for (const ledger::RowFigures& row : rows) {
    if (GroupOf(ledger, row) == AmountGroup::PastPerformance)
      opened += lists.Of(row, fmt::format("past-{}", ++number));
  }
  return opened.Empty() ? opened : html::Heading(3, "What the figures are made of") + opened;
}

}  // namespace krnqb::cli
