#include "company/reports/profit_and_loss.h"

#include <algorithm>
#include <array>
#include <ranges>
#include <utility>

#include "company/records/amount.h"
#include "company/records/ledger.h"
#include "company/reports/accounts.h"
#include "company/reports/layout.h"

namespace krnqb::company {
namespace {

constexpr std::array<std::string_view, 5> types = {"Income", "CostOfGoodsSold", "Expense", "OtherIncome",
                                                   "OtherExpense"};

// Texts that sort before and after every date.
constexpr std::string_view beforeAllDays;
constexpr std::string_view afterAllDays = "9999-12-31";

// The accounts of one type, which are appended to a profit and loss.
class TypeReader {
 public:
  TypeReader(const Database& database, std::string_view type, ProfitAndLoss& result)
      : type_(type),
        normalSide_(FindReportLayout(ReportKind::ProfitAndLoss, type)->normalSide),
        list_(ReadReportAccounts(database, type)),
        ledger_(database, type),
        result_(result) {}

  void Read() {
    const PostedAmounts all = ledger_.Between(beforeAllDays, afterAllDays);
    std::vector<PostedAmounts> months;
    months.reserve(result_.months.size());
    for (const ReportColumn& month : result_.months) {
      months.push_back(ledger_.Between(month.firstDay, month.lastDay));
    }
    const std::size_t first = result_.accounts.size();
    AppendAccounts();
    for (std::size_t index = first; index < result_.accounts.size(); ++index) {
      ProfitAndLossAccount& account = result_.accounts[index];
      account.posted = Shown(all, account.id);
      for (const PostedAmounts& month : months) account.own.push_back(Shown(month, account.id));
      account.withSubAccounts = account.own;
    }
    AddToParents(first);
  }

 private:
  std::int64_t Shown(const PostedAmounts& posted, const std::string& account) const {
    const auto found = posted.find(account);
    if (found == posted.end()) return 0;
    return normalSide_ == NormalSide::Debit ? found->second : Difference(0, found->second);
  }

  // Without recursion: accounts may be nested to any depth.
  void AppendAccounts() {
    struct Waiting {
      std::size_t position;
      std::size_t level;
    };
    std::vector<Waiting> waiting;  // the next account is last
    waiting.reserve(list_.topLevel.size());
    for (const std::size_t top : list_.topLevel) waiting.push_back({top, 0});
    std::ranges::reverse(waiting);
    std::size_t topLevel = 0;
    while (!waiting.empty()) {
      const auto [position, level] = waiting.back();
      waiting.pop_back();
      if (level == 0) topLevel = result_.accounts.size();
      ReportAccount& account = list_.accounts[position];
      for (const std::size_t child : std::views::reverse(account.children)) {
        waiting.push_back({child, level + 1});
      }
      result_.accounts.push_back({.id = std::move(account.key),
                                  .label = std::move(account.label),
                                  .fullName = std::move(account.fullName),
                                  .type = type_,
                                  .level = level,
                                  .topLevel = topLevel,
                                  .own = {},
                                  .withSubAccounts = {},
                                  .balance = account.balance,
                                  .posted = 0});
    }
  }

  // From the last account to the first, so that a parent is added to its own parent with all its children.
  void AddToParents(std::size_t first) {
    std::vector<RowAmounts> open;  // the sums of accounts whose parent is still to come, by level
    for (std::size_t index = result_.accounts.size(); index-- > first;) {
      ProfitAndLossAccount& account = result_.accounts[index];
      open.resize(std::max(open.size(), account.level + 2), RowAmounts(result_.months.size()));
      AddAmounts(account.withSubAccounts, open[account.level + 1]);
      open[account.level + 1].assign(result_.months.size(), 0);
      AddAmounts(open[account.level], account.withSubAccounts);
    }
  }

  std::string_view type_;
  NormalSide normalSide_;
  ReportAccounts list_;
  LedgerReader ledger_;
  ProfitAndLoss& result_;
};

}  // namespace

std::optional<std::int64_t> ProfitAndLossAccount::Unexplained() const {
  if (!balance) return std::nullopt;
  return Difference(*balance, posted);
}

RowAmounts ProfitAndLoss::SumOf(std::string_view accountType) const {
  RowAmounts sum(months.size());
  for (const ProfitAndLossAccount& account : accounts) {
    if (account.type == accountType) AddAmounts(sum, account.own);
  }
  return sum;
}

ProfitAndLoss ComputeProfitAndLoss(const Database& database, std::string_view firstDay,
                                   std::string_view lastDay) {
  ProfitAndLoss result;
  ReportPeriod period = MonthsBetween(firstDay, lastDay);
  result.period = std::move(period.subtitle);
  result.months = std::move(period.columns);
  for (const std::string_view type : types) TypeReader(database, type, result).Read();
  return result;
}

}  // namespace krnqb::company
