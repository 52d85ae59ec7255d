#include "component/import_driver.h"

#include <fmt/format.h>

#include <utility>

#include "import/accounts/deserialize.h"
#include "import/accounts/quickbooks_lists.h"
#include "import/amounts/balances.h"
#include "import/amounts/date_ranges.h"
#include "import/amounts/report_reading.h"
#include "import/growth/formulas.h"
#include "import/past_performance/writing.h"
#include "import/progress.h"
#include "plan/period.h"
#include "plan/table_identifiers.h"
#include "qbxml/request_catalogue.h"
#include "support/error_handling.h"
#include "support/warning_report.h"

namespace krnqb {
namespace {

enum class Outcome { Imported, NothingToDo, Refused };

// One import. Reads the options at each use, since an event handler may change them.
class ImportRun {
 public:
  ImportRun(ImportContext& context, ErrorPair& errorPair)
      : context_(context), options_(context.state.options), errorPair_(errorPair) {}

  // An import of balances first loads the rebuilt account tables into the plan and raises XMLprocessing. The
  // second pass reads everything again, now from a plan with those tables.
  Outcome Run() {
    if (const Outcome rebuilt = RebuildAccountTables(); rebuilt != Outcome::Imported) return rebuilt;
    if (options_.balancesImport != BalImport_None) {
      LoadTables();
      context_.events.XMLprocessing();
      if (const Outcome rebuilt = RebuildAccountTables(); rebuilt != Outcome::Imported) return rebuilt;
      if (options_.balancesImport != BalImport_None) ImportBalances();
    }
    LoadLastTables();
    context_.events.AfterImport();
    return Outcome::Imported;
  }

 private:
  Outcome RebuildAccountTables() {
    if (!options_.includeExpenseAccounts && !options_.includeIncomeAccounts &&
        !options_.includePastPerformance) {
      return Outcome::NothingToDo;
    }
    Progress(20);
    if (context_.session.QBCompany().empty()) return Outcome::Refused;
    Progress(40);
    if (!context_.session.IsSDKVersionSupported("1.1")) {
      errorPair_.Set(Error(ErrorKind::UpdateRequired));
      return Outcome::Refused;
    }
    Progress(60);
    LoadQuickBooksLists(context_);
    Progress(80);
    if (options_.includeExpenseAccounts) {
      expenseTables_ = ChangedTables(context_, context_.state.expenseAccounts.Element());
    }
    Progress(100);
    if (options_.includeIncomeAccounts) {
      incomeTables_ = ChangedTables(context_, context_.state.incomeAccounts.Element());
      Load(incomeTables_);
      if (context_.state.costAccounts)
        incomeTables_ = ChangedTables(context_, context_.state.costAccounts.Element());
    }
    return Outcome::Imported;
  }

  // Reads the major version once: later changes by a handler do not affect this import.
  void ImportBalances() {
    const std::int16_t majorVersion = context_.session.MajorVersion();
    if (majorVersion != 1 && majorVersion != 2) WarnOfVersion(majorVersion);
    ReadAmounts(majorVersion);
    if (options_.includeExpenseAccounts && expenseTables_) {
      WriteExpenseGrowth(context_.state, *expenseTables_, context_.observer);
    }
    if (options_.includeIncomeAccounts && incomeTables_) {
      WriteSalesGrowth(context_.state, *incomeTables_, context_.observer);
      WriteCostGrowth(context_.state, *incomeTables_, context_.observer);
    }
    const bool pastPerformanceKept = options_.krnProduct == QBKRN_ALD || options_.krnProduct == QBKRN_COR;
    if (pastPerformanceKept && options_.includePastPerformance) {
      context_.plan.Load(
          WritePastPerformance(context_, context_.plan.TableText(table_id::pastPerformance), majorVersion));
    }
  }

  void ReadAmounts(std::int16_t majorVersion) {
    if (majorVersion == 1) ReadTransactions();
    if (majorVersion == 2) ReadReports();
  }

  // Each pass settles the start again, since a handler may have changed it.
  void ReadTransactions() {
    if (!options_.includeExpenseAccounts && !options_.includeIncomeAccounts) return;
    context_.state.tally.lines = 0;
    ImportExpenseBalances(context_, SettleStart());
    const YearMonth start = SettleStart();
    ImportIncomeBalances(context_, start);
    if (context_.state.tally.lines == 0) WarnOfEmptyPeriod(SettleTwelveMonths(start, options_.period));
  }

  void ReadReports() {
    const TwelveMonths months(SettleStart());
    const DateRange range = FiscalYearRange(months);
    ImportState& state = context_.state;
    const bool anyReport = options_.includeIncomeAccounts || options_.includeExpenseAccounts;
    bool anyAmount = false;
    if (options_.includeIncomeAccounts) {
      anyAmount = ReadReport(request_number::incomeByMonth, range, state.incomeSubtotals);
      anyAmount = ReadReport(request_number::costByMonth, range, state.costSubtotals) || anyAmount;
    }
    if (options_.includeExpenseAccounts) {
      anyAmount = ReadReport(request_number::expenseByMonth, range, state.expenseSubtotals) || anyAmount;
    }
    if (anyReport && !anyAmount) WarnOfEmptyPeriod(months);
  }

  bool ReadReport(std::int32_t requestNumber, const DateRange& range,
                  std::optional<SubtotalCollection>& target) {
    return ParseProfitAndLossReport(context_.session, requestNumber, range, target, context_.observer);
  }

  void WarnOfVersion(std::int16_t majorVersion) {
    ReportWarning(
        context_.observer, {.operation = Operation::Go},
        [&] {
          return Finding{.code = WarningCode::UnsupportedProcessor, .name = fmt::format("{}", majorVersion)};
        },
        NoticeMeaning::Incomplete);
  }

  void WarnOfEmptyPeriod(const TwelveMonths& months) {
    ReportWarning(context_.observer, {.operation = Operation::Go}, [&] {
      const YearMonth first = months.First();
      return Finding{.code = WarningCode::EmptyPeriod,
                     .text = fmt::format("{:04}-{:02}", first.year, first.month)};
    });
  }

  // Like the property `StartingMonth`, opens a session first if none is open.
  YearMonth SettleStart() {
    context_.session.EnsureSession();
    const std::int16_t month = SettleStartingMonth(options_.period);
    return {.year = SettleStartingYear(options_.period), .month = month};
  }

  void Load(const std::optional<TablesDocument>& tables) {
    context_.plan.Load(tables ? tables->Text() : std::string());
  }

  void LoadTables() {
    if (options_.includeExpenseAccounts) Load(expenseTables_);
    if (options_.includeIncomeAccounts) Load(incomeTables_);
  }

  void LoadLastTables() {
    if (options_.includeExpenseAccounts) LoadLast(expenseTables_);
    if (options_.includeIncomeAccounts) LoadLast(incomeTables_);
  }

  // The parsed tables of a large plan take more memory than their text, which the plan parses in turn.
  void LoadLast(std::optional<TablesDocument>& tables) {
    std::string text = tables ? tables->Text() : std::string();
    tables.reset();
    context_.plan.Load(std::move(text));
  }

  void Progress(std::int16_t percent) { context_.events.ProgressBarChange(percent, processingText); }

  ImportContext& context_;
  ImportOptions& options_;
  ErrorPair& errorPair_;
  std::optional<TablesDocument> expenseTables_;
  std::optional<TablesDocument> incomeTables_;
};

}  // namespace

bool RunImport(ImportContext& context, ErrorPair& errorPair) {
  try {
    const Outcome outcome = ImportRun(context, errorPair).Run();
    if (outcome == Outcome::Refused) return false;
    context.session.CloseSession();
    return true;
  } catch (...) {
    // The host sees only in the error pair that the import was not completed.
    const Error error = CaughtError();
    ReportEnd(context.observer, {.operation = Operation::Go}, error, NoticeMeaning::Complete);
    context.session.CloseSession();
    errorPair.Set(error);
    return true;
  }
}

}  // namespace krnqb
