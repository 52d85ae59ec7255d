#include "import/amounts/balances.h"

#include <array>
#include <optional>
#include <span>
#include <unordered_map>
#include <utility>

#include "import/amounts/expense_transactions.h"
#include "import/amounts/sales_transactions.h"
#include "import/amounts/transaction_query.h"
#include "import/progress.h"
#include "krnqb/booking.h"
#include "plan/months.h"
#include "plan/period.h"
#include "qbxml/request_catalogue.h"
#include "support/error_handling.h"
#include "support/number_text.h"
#include "support/warning_report.h"

namespace krnqb {
namespace {

using ReadTransactions = TransactionLines (*)(ImportContext&, const TransactionQuery&, TransactionLines used);

// One of the two passes over twelve months.
struct MonthlyPass {
  Operation operation;
  std::string_view progressText;
  std::span<const std::int32_t> kinds;
  ReadTransactions read;
};

constexpr std::array expenseKinds = {request_number::bills, request_number::checks,
                                     request_number::creditCardCharges};
constexpr std::array incomeKinds = {request_number::invoices, request_number::salesReceipts};

// The start is settled after the first progress event because its handler may change the plan's month or
// year.
void ReadMonths(ImportContext& context, const MonthlyPass& pass, const YearMonth& start) {
  std::optional<TwelveMonths> months;
  TransactionLines lines;
  for (std::int16_t step = 1; step <= cSubtotals::monthCount; ++step) {
    context.events.ProgressBarChange(RoundedPercent(step, cSubtotals::monthCount), pass.progressText);
    if (!months) months = SettleTwelveMonths(start, context.state.options.period);
    const DateRange range = MonthRange(months->Month(step));
    for (const std::int32_t kind : pass.kinds) {
      lines = pass.read(context,
                        {.kind = kind,
                         .request = BuildRequest(kind, range.fromDate, range.toDate),
                         .month = step,
                         .range = range},
                        std::move(lines));
    }
  }
}

// The level is compared as a number, so "0.0" is top-level too.
constexpr auto topLevelExpenseAccounts = "//AccountRet[AccountType = \"Expense\" and Sublevel = 0]";

class BalanceSpreading {
 public:
  BalanceSpreading(SubtotalCollection& subtotals, std::int16_t months, ImportContext& context)
      : subtotals_(subtotals), months_(months), context_(context) {}

  void Spread(const XmlElement& account) {
    const XmlElement balanceElement = account.Child("Balance");
    const XmlElement name = account.Child("Name");
    if (!balanceElement || !name) return;
    const std::string text = balanceElement.Text();
    const double balance = LeadingNumber(text);
    if (balance == 0 && ReadsWhole(text)) return;
    cSubtotals* const subtotal = subtotals_.Find(name.Text());
    if (subtotal == nullptr || subtotal->Total() != 0) return;
    if (!ReadsWhole(text)) WarnOfText(name.Text(), text, balance);
    if (balance == 0) return;
    for (std::int16_t month = 1; month <= months_; ++month) {
      subtotal->SubTotal(month, balance / months_);
      Report(account, name.Text(), month, balance / months_, text);
    }
    WarnOfSpread(name.Text(), balance);
  }

 private:
  void Report(const XmlElement& account, const std::string& name, std::int16_t month, double amount,
              const std::string& balance) {
    BookingReceiver* const receiver = context_.observer.Bookings();
    if (receiver == nullptr) return;
    const XmlElement listId = account.Child("ListID");
    const std::string id = listId ? listId.Text() : std::string();
    receiver->Book({.slot = {.group = AmountGroup::Expenses, .name = name, .number = month},
                    .rule = BookingRule::SpreadBalance,
                    .amount = amount,
                    .replaces = true,
                    .account = id,
                    .accountName = name,
                    .text = balance});
  }

  void WarnOfText(const std::string& name, const std::string& text, double balance) {
    ReportWarning(context_.observer, place_, [&] {
      return Finding{.code = WarningCode::TextCut, .name = name, .text = text, .amount = balance};
    });
  }

  void WarnOfSpread(const std::string& name, double balance) {
    ReportWarning(context_.observer, place_, [&] {
      Finding finding{.code = WarningCode::BalanceSpread,
                      .name = name,
                      .amount = balance,
                      .otherAmount = BalanceOfSubAccounts(name)};
      for (std::int16_t month = 1; month <= months_; ++month) finding.months.push_back(month);
      return finding;
    });
  }

  double BalanceOfSubAccounts(const std::string& name) {
    if (!subBalances_) subBalances_ = SubBalances();
    const auto found = subBalances_->find(FoldedKey(name));
    return found == subBalances_->end() ? 0 : found->second;
  }

  // Returns the balances of all sub-accounts by the folded name of their top-level account.
  std::unordered_map<std::string, double> SubBalances() const {
    std::unordered_map<std::string, double> balances;
    const AccountList& accounts = context_.state.expenseAccounts;
    for (const XmlElement& account : accounts.Element().SelectAll("//AccountRet[Sublevel != 0]")) {
      const XmlElement id = account.Child("ListID");
      const XmlElement balance = account.Child("Balance");
      if (!id || !balance) continue;
      const std::string& topLevel = accounts.RollUpOf(id.Text()).name;
      if (!topLevel.empty()) balances[FoldedKey(topLevel)] += ConvertToDouble(balance.Text()).value_or(0);
    }
    return balances;
  }

  SubtotalCollection& subtotals_;
  const std::int16_t months_;
  ImportContext& context_;
  const Place place_{.operation = Operation::SpreadExpenseBalances};
  std::optional<std::unordered_map<std::string, double>> subBalances_;
};

// Warns of the expenses that sales took back more often than they were booked.
void WarnOfBilledAgain(ImportContext& context) {
  for (const auto& [expense, again] : context.state.tally.billedAgain) {
    ReportWarning(context.observer, {.operation = Operation::OffsetBilledExpense}, [&] {
      const double amount = ConvertToDouble(expense.second).value_or(0) * static_cast<double>(again);
      return Finding{.code = WarningCode::BilledAgain, .name = expense.first, .amount = amount};
    });
  }
}

}  // namespace

void ImportExpenseBalances(ImportContext& context, const YearMonth& start) {
  const MonthlyPass pass{Operation::ImportExpenseBalances, "Importing expense balances...", expenseKinds,
                         ReadExpenseTransactions};
  EndOnError(context.observer, {.operation = pass.operation}, [&] {
    context.state.billableExpenses.emplace();
    context.state.tally.billedAgain.clear();
    ReadMonths(context, pass, start);
    SpreadExpenseBalances(context);
  });
}

void ImportIncomeBalances(ImportContext& context, const YearMonth& start) {
  const MonthlyPass pass{Operation::ImportIncomeBalances, "Importing income balances...", incomeKinds,
                         ReadSalesTransactions};
  EndOnError(context.observer, {.operation = pass.operation}, [&] {
    ReadMonths(context, pass, start);
    WarnOfBilledAgain(context);
  });
}

void SpreadExpenseBalances(ImportContext& context) {
  const AccountList& accounts = context.state.expenseAccounts;
  EndOnError(
      context.observer, {.operation = Operation::SpreadExpenseBalances},
      [&] {
        auto& subtotals = context.state.expenseSubtotals;
        const std::int16_t activity = MonthsOfActivity(subtotals ? &*subtotals : nullptr);
        const std::int16_t months = activity == 0 ? cSubtotals::monthCount : activity;
        const std::vector<XmlElement> topLevel = accounts.Element().SelectAll(topLevelExpenseAccounts);
        if (!subtotals) return;
        BalanceSpreading spreading(*subtotals, months, context);
        for (const XmlElement& account : topLevel) spreading.Spread(account);
      },
      EndMeaning(accounts));
}

}  // namespace krnqb
