#include "cli/company/profit_and_loss_output.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>
#include <vector>

#include "cli/console/json_text.h"
#include "cli/console/text_table.h"
#include "company/records/amount.h"
#include "plan_file/views/split_table.h"
#include "support/money_text.h"

namespace krnqb::cli {
namespace {

using company::ProfitAndLoss;
using company::ProfitAndLossAccount;
using company::RowAmounts;
using plan_file::TableLine;

RowAmounts Difference(RowAmounts amounts, const RowAmounts& less) {
  company::SubtractAmounts(amounts, less);
  return amounts;
}

RowAmounts Sum(RowAmounts amounts, const RowAmounts& more) {
  company::AddAmounts(amounts, more);
  return amounts;
}

std::string MoneyOf(std::int64_t hundredths) {
  return MoneyText(static_cast<double>(hundredths) / 100);
}

/// The sums of a profit and loss by month.
struct Sums {
  explicit Sums(const ProfitAndLoss& books)
      : income(books.SumOf("Income")),
        costOfGoods(books.SumOf("CostOfGoodsSold")),
        grossProfit(Difference(income, costOfGoods)),
        expenses(books.SumOf("Expense")),
        netOrdinaryIncome(Difference(grossProfit, expenses)),
        otherIncome(books.SumOf("OtherIncome")),
        otherExpenses(books.SumOf("OtherExpense")),
        netOtherIncome(Difference(otherIncome, otherExpenses)),
        netIncome(Sum(netOrdinaryIncome, netOtherIncome)) {}

  RowAmounts income, costOfGoods, grossProfit, expenses, netOrdinaryIncome, otherIncome, otherExpenses,
      netOtherIncome, netIncome;
};

// The first day of a month is YYYY-MM-DD.
std::string YearAndMonth(const company::ReportColumn& month) {
  return month.firstDay.substr(0, 7);
}

class TableWriter {
 public:
  TableWriter(const ProfitAndLoss& books, bool byMonth) : books_(books), byMonth_(byMonth) {}

  std::string Text(std::size_t width) {
    const Sums sums(books_);
    Headings();
    Section("Income", "Income", "Total Income", sums.income);
    Section("CostOfGoodsSold", "Cost of Goods Sold", "Total Cost of Goods Sold", sums.costOfGoods);
    Row("Gross Profit", 0, sums.grossProfit);
    Section("Expense", "Expenses", "Total Expenses", sums.expenses);
    Row("Net Ordinary Income", 0, sums.netOrdinaryIncome);
    Section("OtherIncome", "Other Income", "Total Other Income", sums.otherIncome);
    Section("OtherExpense", "Other Expenses", "Total Other Expenses", sums.otherExpenses);
    Row("Net Income", 0, sums.netIncome);
    return SplitTableText(lines_, {.width = width, .gap = 2, .indent = "", .columnsAfter = 1});
  }

 private:
  void Headings() {
    if (!byMonth_) return;
    TableLine line{{""}, true};
    for (const company::ReportColumn& month : books_.months) line.texts.push_back(month.title);
    line.texts.emplace_back("Total");
    lines_.push_back(std::move(line));
  }

  void Row(std::string_view label, std::size_t level, const RowAmounts& months) {
    TableLine line{{std::string(2 * level, ' ') + OneLine(label)}, true};
    if (byMonth_) {
      for (const std::int64_t month : months) line.texts.push_back(MoneyOf(month));
    }
    line.texts.push_back(MoneyOf(company::TotalOf(months)));
    lines_.push_back(std::move(line));
  }

  void Section(std::string_view type, std::string_view title, std::string_view total, const RowAmounts& sum) {
    const std::size_t before = lines_.size();
    lines_.push_back({{std::string(title)}, true});
    for (std::size_t index = 0; index < books_.accounts.size(); ++index) {
      if (books_.accounts[index].type == type) Account(index);
    }
    if (lines_.size() == before + 1) {
      lines_.pop_back();
    } else {
      Row(total, 0, sum);
    }
  }

  // A parent has the sum of its tree, followed by what is posted to the parent itself.
  void Account(std::size_t index) {
    constexpr std::size_t deepest = 10;
    const ProfitAndLossAccount& account = books_.accounts[index];
    if (!HasAmounts(index)) return;
    const std::size_t level = std::min(account.level, deepest) + 1;
    Row(account.label, level, account.withSubAccounts);
    const bool isParent = account.withSubAccounts != account.own;
    if (isParent && std::ranges::any_of(account.own, std::identity())) {
      Row(account.label + " - Other", level + 1, account.own);
    }
  }

  // Sub-accounts may add up to 0.
  bool HasAmounts(std::size_t index) const {
    const std::size_t level = books_.accounts[index].level;
    do {
      if (std::ranges::any_of(books_.accounts[index].own, std::identity())) return true;
      ++index;
    } while (index < books_.accounts.size() && books_.accounts[index].level > level);
    return false;
  }

  const ProfitAndLoss& books_;
  bool byMonth_;
  std::vector<TableLine> lines_;
};

std::string UnexplainedLine(std::string_view account, std::int64_t posted, std::int64_t balance) {
  const std::int64_t missing = company::Difference(balance, posted);
  return fmt::format("  {}: {} of {} ({} {})\n", OneLine(account), MoneyOf(posted), MoneyOf(balance),
                     MoneyText(std::abs(static_cast<double>(missing)) / 100),
                     missing > 0 ? "is missing" : "too much");
}

// Returns the lines about a top-level account and its sub-accounts, which are those in [first, end).
std::string UnexplainedTree(const ProfitAndLoss& books, std::size_t first, std::size_t end) {
  std::vector<const ProfitAndLossAccount*> unexplained;
  std::int64_t posted = 0;
  std::int64_t balance = 0;
  for (std::size_t index = first; index < end; ++index) {
    const ProfitAndLossAccount& account = books.accounts[index];
    if (!account.balance) continue;
    posted = company::Sum(posted, account.posted);
    balance = company::Sum(balance, *account.balance);
    if (account.Unexplained() != 0) unexplained.push_back(&account);
  }
  if (unexplained.size() > 1) {
    const bool oneWay = std::ranges::all_of(unexplained, [&](const ProfitAndLossAccount* account) {
      return (*account->Unexplained() > 0) == (*unexplained.front()->Unexplained() > 0);
    });
    if (oneWay) {
      return UnexplainedLine(books.accounts[first].fullName + " with its sub-accounts", posted, balance);
    }
  }
  std::string text;
  for (const ProfitAndLossAccount* account : unexplained) {
    text += UnexplainedLine(account->fullName, account->posted, account->balance.value_or(0));
  }
  return text;
}

std::string UnexplainedText(const ProfitAndLoss& books) {
  const auto hasBalance = [](const ProfitAndLossAccount& account) { return account.balance.has_value(); };
  if (std::ranges::none_of(books.accounts, hasBalance)) {
    return "No account has a balance that the loaded transactions could explain.\n";
  }
  std::string text;
  for (std::size_t first = 0; first < books.accounts.size();) {
    std::size_t end = first + 1;
    while (end < books.accounts.size() && books.accounts[end].topLevel == first) ++end;
    text += UnexplainedTree(books, first, end);
    first = end;
  }
  if (text.empty()) return "The loaded transactions of all days explain the balance of every account.\n";
  return "The loaded transactions of all days do not explain these balances:\n" + text;
}

Json Amounts(const RowAmounts& months) {
  Json json{{"months", Json::array()}, {"total", company::AmountText(company::TotalOf(months))}};
  for (const std::int64_t month : months) json["months"].push_back(company::AmountText(month));
  return json;
}

Json AmountOrNull(const std::optional<std::int64_t>& amount) {
  return amount ? Json(company::AmountText(*amount)) : Json();
}

Json AccountJson(const ProfitAndLossAccount& account) {
  return {{"list_id", account.id},
          {"name", account.label},
          {"full_name", account.fullName},
          {"type", account.type},
          {"level", account.level},
          {"own", Amounts(account.own)},
          {"with_sub_accounts", Amounts(account.withSubAccounts)},
          {"balance", AmountOrNull(account.balance)},
          {"posted", company::AmountText(account.posted)},
          {"unexplained", AmountOrNull(account.Unexplained())}};
}

}  // namespace

std::string ProfitAndLossText(const CompanyBooks& books, bool byMonth, std::size_t width) {
  return fmt::format("{}: profit and loss, {}, on the accrual basis\n\n{}\n{}", OneLine(books.company),
                     books.profitAndLoss.period, TableWriter(books.profitAndLoss, byMonth).Text(width),
                     UnexplainedText(books.profitAndLoss));
}

std::string ProfitAndLossJson(const CompanyBooks& books) {
  const Sums sums(books.profitAndLoss);
  Json json{{"result", "done"},
            {"path", books.path},
            {"company", books.company},
            {"basis", "accrual"},
            {"months", Json::array()},
            {"income", Amounts(sums.income)},
            {"cost_of_goods", Amounts(sums.costOfGoods)},
            {"gross_profit", Amounts(sums.grossProfit)},
            {"expenses", Amounts(sums.expenses)},
            {"net_ordinary_income", Amounts(sums.netOrdinaryIncome)},
            {"other_income", Amounts(sums.otherIncome)},
            {"other_expenses", Amounts(sums.otherExpenses)},
            {"net_income", Amounts(sums.netIncome)},
            {"accounts", Json::array()}};
  for (const company::ReportColumn& month : books.profitAndLoss.months) {
    json["months"].push_back(YearAndMonth(month));
  }
  for (const ProfitAndLossAccount& account : books.profitAndLoss.accounts) {
    json["accounts"].push_back(AccountJson(account));
  }
  return JsonText(json);
}

}  // namespace krnqb::cli
