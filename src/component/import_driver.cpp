#include "component/import_driver.h"

#include "import/accounts/deserialize.h"
#include "import/accounts/quickbooks_lists.h"
#include "import/amounts/balances.h"
#include "import/amounts/date_ranges.h"
#include "import/amounts/report_reading.h"
#include "import/growth/formulas.h"
#include "import/past_performance/writing.h"
#include "import/progress.h"
#include "plan/table_identifiers.h"
#include "qbxml/request_catalogue.h"
#include "support/error_handling.h"

namespace krnqb {
namespace {

enum class Outcome { Imported, NothingToDo, Refused };

// One run of `Go`. The options are read at each use, since an event handler may change them.
class Import {
 public:
  Import(ImportContext& importContext, ErrorPair& lastError)
      : context(importContext), options(importContext.state.options), errorPair(lastError) {}

  // With a balances import the rebuilt account tables are loaded into the plan first, the host is told, and
  // everything is read once more, the plan now holding those tables.
  Outcome Run() {
    if (const Outcome rebuilt = RebuildAccountTables(); rebuilt != Outcome::Imported) return rebuilt;
    if (options.balancesImport != BalImport_None) {
      LoadTables();
      context.events.XMLprocessing();
      if (const Outcome rebuilt = RebuildAccountTables(); rebuilt != Outcome::Imported) return rebuilt;
      if (options.balancesImport != BalImport_None) ImportBalances();
    }
    LoadTables();
    context.events.AfterImport();
    return Outcome::Imported;
  }

 private:
  Outcome RebuildAccountTables() {
    if (!options.includeExpenseAccounts && !options.includeIncomeAccounts &&
        !options.includePastPerformance) {
      return Outcome::NothingToDo;
    }
    Progress(20);
    if (context.session.QBCompany().empty()) return Outcome::Refused;
    Progress(40);
    if (!context.session.IsSDKVersionSupported("1.1")) {
      errorPair.Set(updateRequiredNumber, std::string(updateRequiredMessage));
      return Outcome::Refused;
    }
    Progress(60);
    LoadQuickBooksLists(context);
    Progress(80);
    if (options.includeExpenseAccounts) {
      expenseTables = KRNDeserialize(context, context.state.expenseAccounts.Element());
    }
    Progress(100);
    if (options.includeIncomeAccounts) {
      incomeTables = KRNDeserialize(context, context.state.incomeAccounts.Element());
      context.plan.Load(incomeTables);
      if (context.state.costAccounts)
        incomeTables = KRNDeserialize(context, context.state.costAccounts.Element());
    }
    return Outcome::Imported;
  }

  void ImportBalances() {
    ReadAmounts();
    if (options.includeExpenseAccounts)
      expenseTables = WriteExpenseGrowth(context.state, expenseTables, context.observer);
    if (options.includeIncomeAccounts) {
      incomeTables = WriteSalesGrowth(context.state, incomeTables, context.observer);
      incomeTables = WriteCostGrowth(context.state, incomeTables, context.observer);
    }
    const bool pastPerformanceKept = options.krnProduct == QBKRN_ALD || options.krnProduct == QBKRN_COR;
    if (pastPerformanceKept && options.includePastPerformance) {
      context.plan.Load(WritePastPerformance(context, context.plan.TableText(table_id::pastPerformance)));
    }
  }

  void ReadAmounts() {
    if (context.session.MajorVersion() == 1) ReadTransactions();
    if (context.session.MajorVersion() == 2) ReadReports();
  }

  void ReadTransactions() {
    if (!options.includeExpenseAccounts && !options.includeIncomeAccounts) return;
    const std::int16_t expenseMonth = ImportStartingMonth();
    ImportExpenseBalances(context, expenseMonth, StartingYear(options.period));
    const std::int16_t incomeMonth = ImportStartingMonth();
    ImportIncomeBalances(context, incomeMonth, StartingYear(options.period));
  }

  void ReadReports() {
    const std::int16_t month = ImportStartingMonth();
    const DateRange range = FiscalYearRange(month, StartingYear(options.period));
    ImportState& state = context.state;
    if (options.includeIncomeAccounts) {
      ReadReport(request_number::incomeByMonth, range, state.incomeSubtotals);
      ReadReport(request_number::costByMonth, range, state.costSubtotals);
    }
    if (options.includeExpenseAccounts) {
      ReadReport(request_number::expenseByMonth, range, state.expenseSubtotals);
    }
  }

  void ReadReport(std::int32_t requestNumber, const DateRange& range,
                  std::optional<SubtotalCollection>& target) {
    ParseProfitAndLossReport(context.session, requestNumber, range, target, context.observer);
  }

  // The month's property makes sure of a session before it answers.
  std::int16_t ImportStartingMonth() {
    context.session.EnsureSession();
    return StartingMonth(options.period);
  }

  void LoadTables() {
    if (options.includeExpenseAccounts) context.plan.Load(expenseTables);
    if (options.includeIncomeAccounts) context.plan.Load(incomeTables);
  }

  void Progress(std::int16_t percent) { context.events.ProgressBarChange(percent, processingText); }

  ImportContext& context;
  ImportOptions& options;
  ErrorPair& errorPair;
  std::string expenseTables;
  std::string incomeTables;
};

}  // namespace

bool RunImport(ImportContext& context, ErrorPair& errorPair) {
  try {
    const Outcome outcome = Import(context, errorPair).Run();
    if (outcome == Outcome::Refused) return false;
    context.session.CloseSession();
    return true;
  } catch (...) {
    // The catch-all of the whole import: the error pair alone tells the host that it did not come to its end.
    const Error error = CaughtError();
    TellError(context.observer, NoticeKind::OperationEnded, Place{"Go", {}, {}, {}}, error);
    context.session.CloseSession();
    errorPair.Set(error);
    return true;
  }
}

}  // namespace krnqb
