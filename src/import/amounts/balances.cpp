#include "import/amounts/balances.h"

#include <array>
#include <optional>
#include <span>

#include "import/amounts/expense_transactions.h"
#include "import/amounts/sales_transactions.h"
#include "import/amounts/transaction_query.h"
#include "import/progress.h"
#include "plan/months.h"
#include "plan/period.h"
#include "qbxml/request_catalogue.h"
#include "support/error_handling.h"
#include "support/number_text.h"

namespace krnqb {
namespace {

using ReadTransactions = void (*)(ImportContext&, const TransactionQuery&);

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
  for (std::int16_t step = 1; step <= cSubtotals::monthCount; ++step) {
    context.events.ProgressBarChange(RoundedPercent(step, cSubtotals::monthCount), pass.progressText);
    if (!months) months = SettleTwelveMonths(start, context.state.options.period);
    const DateRange range = MonthRange(months->Month(step));
    for (const std::int32_t kind : pass.kinds) {
      pass.read(context, {.kind = kind,
                          .request = BuildRequest(kind, range.fromDate, range.toDate),
                          .month = step,
                          .range = range});
    }
  }
}

// The level is compared as a number, so "0.0" is top-level too.
constexpr auto topLevelExpenseAccounts = "//AccountRet[AccountType = \"Expense\" and Sublevel = 0]";

void SpreadBalance(SubtotalCollection& subtotals, const XmlElement& account, std::int16_t months) {
  const XmlElement balanceElement = account.Child("Balance");
  const XmlElement name = account.Child("Name");
  if (!balanceElement || !name) return;
  const double balance = LeadingNumber(balanceElement.Text());
  if (balance == 0) return;
  cSubtotals* const subtotal = subtotals.Find(name.Text());
  if (subtotal == nullptr || subtotal->Total() != 0) return;
  for (std::int16_t month = 1; month <= months; ++month) subtotal->SubTotal(month, balance / months);
}

}  // namespace

void ImportExpenseBalances(ImportContext& context, const YearMonth& start) {
  const MonthlyPass pass{Operation::ImportExpenseBalances, "Importing expense balances...", expenseKinds,
                         ReadExpenseTransactions};
  EndOnError(context.observer, {.operation = pass.operation}, [&] {
    context.state.billableExpenses.emplace();
    ReadMonths(context, pass, start);
    SpreadExpenseBalances(context);
  });
}

void ImportIncomeBalances(ImportContext& context, const YearMonth& start) {
  const MonthlyPass pass{Operation::ImportIncomeBalances, "Importing income balances...", incomeKinds,
                         ReadSalesTransactions};
  EndOnError(context.observer, {.operation = pass.operation}, [&] { ReadMonths(context, pass, start); });
}

void SpreadExpenseBalances(ImportContext& context) {
  const AccountList& accounts = context.state.expenseAccounts;
  EndOnError(
      context.observer, {.operation = Operation::SpreadExpenseBalances},
      [&] {
        auto& subtotals = context.state.expenseSubtotals;
        const std::int16_t activity = MonthsOfActivity(subtotals ? &*subtotals : nullptr);
        const std::int16_t months = activity == 0 ? cSubtotals::monthCount : activity;
        for (const XmlElement& account : accounts.Element().SelectAll(topLevelExpenseAccounts)) {
          if (subtotals) SpreadBalance(*subtotals, account, months);
        }
      },
      EndMeaning(accounts));
}

}  // namespace krnqb
