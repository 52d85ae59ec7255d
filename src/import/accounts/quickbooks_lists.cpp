#include "import/accounts/quickbooks_lists.h"

#include "qbxml/request_catalogue.h"

namespace krnqb {
namespace {

constexpr Operation operation = Operation::LoadQuickBooksLists;

}  // namespace

void LoadQuickBooksLists(ImportContext& context) {
  ImportState& state = context.state;
  const ImportOptions& options = state.options;
  const auto accounts = [&](std::int32_t requestNumber) {
    AccountList list(context.session.Ask(requestNumber, operation));
    WarnOfNamesThatDifferInCase(list, context.observer);
    return list;
  };
  if (options.includeExpenseAccounts) {
    state.expenseAccounts = accounts(request_number::expenseAccounts);
    if (options.balancesImport != BalImport_None) {
      state.expenseSubtotals = TopLevelSubtotals(state.expenseAccounts, context.observer);
    }
  }
  if (options.includeIncomeAccounts || options.includePastPerformance) {
    state.incomeAccounts = accounts(request_number::incomeAccounts);
    if (options.balancesImport == BalImport_None) return;
    state.incomeSubtotals = TopLevelSubtotals(state.incomeAccounts, context.observer);
    state.costAccounts = accounts(request_number::costAccounts);
    state.costSubtotals = TopLevelSubtotals(state.costAccounts, context.observer);
  }
  if (options.balancesImport != BalImport_None) {
    state.itemListDocument = ItemList(context.session.Ask(request_number::items, operation));
  }
}

}  // namespace krnqb
