#include "fakes/import_surroundings.h"
#include "fuzz/input.h"
#include "fuzz/plan_promises.h"
#include "import/growth/formulas.h"
#include "import/past_performance/writing.h"
#include "plan/account_writers.h"
#include "plan/table_identifiers.h"

// Plan tables: an import reads and rewrites a table whose text is the input. The first bytes choose the
// table's kind, the product, and what is written.

namespace krnqb::fuzz {
namespace {

using fakes::ImportSurroundings;

using Writer = void (*)(TablesDocument& changed, const XmlElement& accounts, const HostPlan& plan,
                        Clock& clock);

// A kind of table and how accounts and amounts get into it.
struct Kind {
  Writer writeAccounts;
  std::string_view plannedId;
  std::string_view actualId;
  std::string_view mainBlock;
};

constexpr std::array kinds{
    Kind{WriteSalesAccounts, table_id::plannedSales, table_id::actualSales, block_id::sales},
    Kind{WriteCostAccounts, table_id::plannedSales, table_id::actualSales, block_id::costs},
    Kind{WriteIncomeRangeAccounts, table_id::plannedIncomeRange, table_id::actualIncomeRange,
         block_id::incomeRange},
    Kind{WriteContributionMarginAccounts, table_id::plannedContributionMargin,
         table_id::actualContributionMargin, block_id::contributionMargin}};

XmlElement Accounts() {
  using fakes::Account;
  return XmlElement::Parse("<AccountQueryRs>" + Account("E-1", "Rent") + Account("E-2", "Utilities") +
                           fakes::SubAccount("E-3", "Gas", "E-2") + Account("E-4", "Deprecia") +
                           "</AccountQueryRs>");
}

std::size_t RowsOf(const TablesDocument& tables, std::string_view block) {
  const XmlElement found = tables.FirstBlock(block);
  return found ? found.Children().size() : 0;
}

// Puts the tables of a document into the plan, as a host does.
void Keep(ImportSurroundings& surroundings, const TablesDocument& tables) {
  const XmlElement document = RequireDocument(tables.Text(), "changed tables are a document");
  Require(document.Name() == "tables", "changed tables are in \"tables\"");
  for (const XmlElement& item : document.Children()) {
    surroundings.planContent->tables[item.Attribute("id").value_or("")] = item.Xml();
  }
}

void FillAmounts(ImportState& state, double amount) {
  for (auto* collection : {&state.expenseSubtotals, &state.incomeSubtotals, &state.costSubtotals}) {
    *collection = ImportSurroundings::Zeros({"Rent", "Utilities", "Example expense", "Example product"});
    for (cSubtotals& record : **collection) {
      for (std::int16_t month = 1; month <= 12; ++month) record.SubTotal(month, amount * month);
    }
  }
}

// Every cell of a block, row after row.
std::vector<std::string> CellsOf(const XmlElement& block) {
  std::vector<std::string> cells;
  for (const XmlElement& cell : block ? block.SelectAll("*/*") : std::vector<XmlElement>()) {
    cells.push_back(cell.Text());
  }
  return cells;
}

void WriteGrowth(ImportSurroundings& surroundings, const Kind& kind, TablesDocument& tables) {
  const std::vector<std::string> before = CellsOf(tables.FirstBlock(kind.mainBlock));
  WriteSalesGrowth(surroundings.state, tables, surroundings.observer);
  WriteCostGrowth(surroundings.state, tables, surroundings.observer);
  WriteExpenseGrowth(surroundings.state, tables, surroundings.observer);
  const std::vector<std::string> after = CellsOf(tables.FirstBlock(kind.mainBlock));
  if (before.size() != after.size()) return;  // elements in a cell are replaced by its text
  for (std::size_t cell = 0; cell < before.size(); ++cell) {
    Require(before[cell] == after[cell] || IsWrittenCell(after[cell]), "growth writes numbers and formulas",
            after[cell]);
  }
}

void RewriteTables(ImportSurroundings& surroundings, const Kind& kind) {
  const XmlElement accounts = Accounts();
  TablesDocument first;
  const auto failure =
      ErrorOf([&] { kind.writeAccounts(first, accounts, surroundings.context.plan, surroundings.clock); });
  if (first.Empty()) return;
  Keep(surroundings, first);
  if (failure) return;

  // Accounts that have a row get no other.
  TablesDocument second;
  const auto again =
      ErrorOf([&] { kind.writeAccounts(second, accounts, surroundings.context.plan, surroundings.clock); });
  Require(!again, "a table that was written can be written again");
  Require(RowsOf(first, kind.mainBlock) == RowsOf(second, kind.mainBlock),
          "accounts that have a row get no other", second.Text());
  WriteGrowth(surroundings, kind, second);
  Keep(surroundings, second);
}

void RewritePastPerformance(ImportSurroundings& surroundings, const std::string& text) {
  SubtotalCollection& figures = surroundings.state.pastPerformance.emplace();
  for (const std::string_view type :
       {"Bank", "AccountsReceivable", "OtherAsset", "OtherCurrentAsset", "FixedAsset", "Depreciation",
        "AccountsPayable", "CreditCard", "OtherCurrentLiability", "LongTermLiability", "Equity",
        "RetainedEarnings", "Income", "CostOfGoodsSold", "Expense", "OtherIncome", "OtherExpense"}) {
    figures.Add(cSubtotals(type), type);
    for (std::int16_t period = 1; period <= 14; ++period) figures.At(type).SubTotal(period, 1234.5 * period);
  }
  const std::string written = WritePastPerformance(surroundings.context, text, 1);
  if (!written.empty()) RequireDocument(written, "past performance is a document");
}

void Run(Input input) {
  ImportSurroundings surroundings;
  ImportOptions& options = surroundings.state.options;
  const std::size_t choice = input.Below(kinds.size() + 1);
  options.krnProduct = static_cast<QBKRNproduct>(1 + input.Below(3));
  options.balancesImport = static_cast<QBKRN_BalancesImport>(input.Below(4));
  options.growthRateExpenses = options.growthRateIncome = options.growthRateCogs = input.Short();
  FillAmounts(surroundings.state, input.Short() / 100.0);
  const std::string planned = input.Text();
  const std::string actual = input.Text();
  if (choice == kinds.size()) {
    RewritePastPerformance(surroundings, planned);
  } else {
    surroundings.planContent->tables[std::string(kinds[choice].plannedId)] = planned;
    surroundings.planContent->tables[std::string(kinds[choice].actualId)] = actual;
    RewriteTables(surroundings, kinds[choice]);
  }
  RequireKnownErrors(surroundings.observer.notices);
}

}  // namespace
}  // namespace krnqb::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  krnqb::fuzz::Run({data, size});
  return 0;
}
