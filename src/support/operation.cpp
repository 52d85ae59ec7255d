#include <array>

#include "krnqb/observer.h"

namespace krnqb {
namespace {

struct NamedOperation {
  Operation operation;
  std::string_view name;
};

constexpr std::array namedOperations{
    NamedOperation{Operation::CollectPastPerformance, "CollectPastPerformance"},
    NamedOperation{Operation::Deserialize, "Deserialize"},
    NamedOperation{Operation::EnsureSession, "EnsureSession"},
    NamedOperation{Operation::Go, "Go"},
    NamedOperation{Operation::ImportExpenseBalances, "ImportExpenseBalances"},
    NamedOperation{Operation::ImportIncomeBalances, "ImportIncomeBalances"},
    NamedOperation{Operation::IsSDKVersionSupported, "IsSDKVersionSupported"},
    NamedOperation{Operation::ItemAccount, "ItemAccount"},
    NamedOperation{Operation::KRNDeserialize, "KRNDeserialize"},
    NamedOperation{Operation::LoadQuickBooksLists, "LoadQuickBooksLists"},
    NamedOperation{Operation::MonthsOfActivity, "MonthsOfActivity"},
    NamedOperation{Operation::OffsetBilledExpense, "OffsetBilledExpense"},
    NamedOperation{Operation::ParseBalanceSheetByType, "ParseBalanceSheetByType"},
    NamedOperation{Operation::ParseProfitAndLossReport, "ParseProfitAndLossReport"},
    NamedOperation{Operation::QBCompanies, "QBCompanies"},
    NamedOperation{Operation::QBExpenseAccounts, "QBExpenseAccounts"},
    NamedOperation{Operation::QBIncomeAccounts, "QBIncomeAccounts"},
    NamedOperation{Operation::QbSerialize, "QbSerialize"},
    NamedOperation{Operation::ReadExpenseTransactions, "ReadExpenseTransactions"},
    NamedOperation{Operation::ReadPlanTable, "ReadPlanTable"},
    NamedOperation{Operation::ReadSalesTransactions, "ReadSalesTransactions"},
    NamedOperation{Operation::SelectedExpenses, "SelectedExpenses"},
    NamedOperation{Operation::ShowDialog, "ShowDialog"},
    NamedOperation{Operation::SpreadExpenseBalances, "SpreadExpenseBalances"},
    NamedOperation{Operation::SubmitCustomRequest, "SubmitCustomRequest"},
    NamedOperation{Operation::TopLevelAccountName, "TopLevelAccountName"},
    NamedOperation{Operation::TopLevelSubtotals, "TopLevelSubtotals"},
    NamedOperation{Operation::WriteCostGrowth, "WriteCostGrowth"},
    NamedOperation{Operation::WriteExpenseGrowth, "WriteExpenseGrowth"},
    NamedOperation{Operation::WritePastPerformance, "WritePastPerformance"},
    NamedOperation{Operation::WriteSalesGrowth, "WriteSalesGrowth"},
    NamedOperation{Operation::XMLprocessing, "XMLprocessing"},
    NamedOperation{Operation::TableModified, "TableModified"},
    NamedOperation{Operation::AfterImport, "AfterImport"},
    NamedOperation{Operation::ProgressBarChange, "ProgressBarChange"}};

}  // namespace

std::string_view OperationName(Operation operation) noexcept {
  for (const NamedOperation& named : namedOperations) {
    if (named.operation == operation) return named.name;
  }
  return {};
}

}  // namespace krnqb
