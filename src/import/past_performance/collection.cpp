#include "import/past_performance/collection.h"

#include <array>

#include "import/amounts/balances.h"
#include "import/amounts/date_ranges.h"
#include "import/amounts/report_reading.h"
#include "import/past_performance/writing.h"
#include "import/progress.h"
#include "plan/account_rows.h"
#include "plan/months.h"
#include "qbxml/request_catalogue.h"
#include "support/date.h"
#include "support/error_handling.h"
#include "support/number_text.h"

namespace krnqb {
namespace {

constexpr std::string_view operation = "CollectPastPerformance";

// Types that are there whether the company has such accounts or not. "CostOfGoodSold" is a figure of its own:
// what is sold at cost is read under "CostOfGoodsSold", which a company without such accounts does not have.
constexpr std::array<std::string_view, 5> seededTypes = {"Income", "Expense", "CostOfGoodSold",
                                                         "Depreciation", "RetainedEarnings"};

// A year or a month of the past.
struct PastPeriod {
  std::int16_t number;  // 1 to 14: the slot that its figures go to
  std::int16_t month;
  std::int16_t year;
  bool isMonth;
};

// Tells what happens while a past period is read as what it is: the same transaction may be read for the
// import too.
class PastObserver final : public Observer {
 public:
  PastObserver(Observer& toldObserver, std::int16_t periodNumber)
      : observer(toldObserver), period(periodNumber) {}

  void Notify(const Notice& notice) noexcept override {
    // Of a notice that cannot be copied, the notice itself is better than none.
    try {
      Notice past = notice;
      past.place.pastPeriod = period;
      observer.Notify(past);
    } catch (...) {
      observer.Notify(notice);
    }
  }

 private:
  Observer& observer;
  std::int16_t period;
};

// Goes through the periods in order.
class PastCalendar {
 public:
  explicit PastCalendar(ImportOptions& importOptions)
      : options(importOptions), year(CheckedInteger(KRNStartingYear(options.period) - 4)) {}

  PastPeriod Next() {
    ++number;
    const bool monthsShown = options.krnProduct == QBKRN_COR;
    if (monthsShown && number >= 4) {
      isMonth = true;
      StepMonth(static_cast<std::int16_t>(number - 2), month, year, KRNStartingMonth(options.period), year,
                options.period);
    } else {
      month = KRNStartingMonth(options.period);
      year = CheckedInteger(year + 1);
      if (monthsShown && number == 3) isMonth = true;
    }
    return {number, month, year, isMonth};
  }

 private:
  ImportOptions& options;
  std::int16_t number = 0;
  std::int16_t month = 0;
  std::int16_t year;
  bool isMonth = false;
};

class PastCollecting {
 public:
  explicit PastCollecting(ImportContext& importContext)
      : context(importContext), state(importContext.state), options(importContext.state.options) {}

  void Run() {
    const std::int16_t periodCount = PastPeriodCount(options);
    const XmlElement accounts = context.session.Ask(request_number::allAccounts, operation);
    state.pastPerformance.emplace();
    for (const std::string_view type : seededTypes) collection().Add(cSubtotals(type), type);
    for (const XmlElement& account : accounts.SelectAll("//AccountRet")) {
      if (IsTopLevelAccount(account)) AddAccountType(account);
    }
    PastCalendar calendar(options);
    for (std::int16_t number = 1; number <= periodCount; ++number)
      CollectPeriod(calendar.Next(), periodCount);
  }

 private:
  SubtotalCollection& collection() { return *state.pastPerformance; }

  // With qbXML 1.x there is no balance of a past day: all three years show today's.
  void AddAccountType(const XmlElement& account) {
    const std::string type = account.Child("AccountType").Text();
    if (collection().Find(type) == nullptr) collection().Add(cSubtotals(type), type);
    if (MajorVersion() != 1) return;
    const double balance = RequireDouble(account.Child("TotalBalance").Text());
    cSubtotals& target = collection().At(BalanceType(account, type, balance));
    target.AddToSubTotal(1, balance);
    target.SubTotal(2, target.SubTotal(1));
    target.SubTotal(3, target.SubTotal(1));
  }

  // A negative fixed asset is accumulated depreciation. Equity counts as retained earnings when the company's
  // first account is called so.
  static std::string BalanceType(const XmlElement& account, const std::string& type, double balance) {
    if (type == "FixedAsset" && balance < 0) return "Depreciation";
    if (type == "Equity" && account.Select("//Name").Text() == "Retained Earnings") return "RetainedEarnings";
    return type;
  }

  void CollectPeriod(const PastPeriod& period, std::int16_t periodCount) {
    state.expenseSubtotals = TopLevelSubtotals(state.expenseAccounts, context.observer);
    state.incomeSubtotals = TopLevelSubtotals(state.incomeAccounts, context.observer);
    state.costSubtotals = TopLevelSubtotals(state.costAccounts, context.observer);
    if (MajorVersion() == 1) ReadTransactions(period);
    if (MajorVersion() == 2) ReadReports(period);
    SetTotal("Income", period, state.incomeSubtotals);
    SetTotalOfReports("Expense", period, state.expenseSubtotals);
    SetTotalOfReports("CostOfGoodsSold", period, state.costSubtotals);
    if (MajorVersion() == 2) ReadBalanceSheet(period, periodCount);
  }

  static DateRange RangeOf(const PastPeriod& period) {
    return period.isMonth ? MonthRange(period.month, period.year)
                          : FiscalYearRange(period.month, period.year);
  }

  // The single months but the last have no transactions read for them. Expenses are those of the import's own
  // year.
  void ReadTransactions(const PastPeriod& period) {
    if (options.krnProduct == QBKRN_COR && period.number >= 3 && period.number <= 13) return;
    PastObserver observer(context.observer, period.number);
    ImportContext past{state, context.session, context.plan, context.events, observer, context.clock};
    ImportExpenseBalances(past, period.month, StartingYear(options.period));
    ImportIncomeBalances(past, period.month, period.year);
  }

  void ReadReports(const PastPeriod& period) {
    const DateRange range = RangeOf(period);
    ReadReport(request_number::incomeByMonth, range, period.number, state.incomeSubtotals);
    ReadReport(request_number::costByMonth, range, period.number, state.costSubtotals);
    ReadReport(request_number::expenseByMonth, range, period.number, state.expenseSubtotals);
  }

  void ReadReport(std::int32_t number, const DateRange& range, std::int16_t periodNumber,
                  std::optional<SubtotalCollection>& target) {
    PastObserver observer(context.observer, periodNumber);
    ParseProfitAndLossReport(context.session, number, range, target, observer);
  }

  void SetTotal(std::string_view type, const PastPeriod& period,
                const std::optional<SubtotalCollection>& subtotals) {
    cSubtotals& figure = RequireType(collection(), type, operation, context.observer);
    figure.SubTotal(period.number, 0);
    if (!subtotals) throw Error(error_number::objectNotSet);
    for (const cSubtotals& account : *subtotals) figure.AddToSubTotal(period.number, account.Total());
  }

  // What transactions alone do not tell for a past year stays 0.
  void SetTotalOfReports(std::string_view type, const PastPeriod& period,
                         const std::optional<SubtotalCollection>& subtotals) {
    if (MajorVersion() > 1) return SetTotal(type, period, subtotals);
    RequireType(collection(), type, operation, context.observer).SubTotal(period.number, 0);
  }

  void ReadBalanceSheet(const PastPeriod& period, std::int16_t periodCount) {
    const std::string asOfDate = RangeOf(period).toDate;
    const std::string request = BuildRequest(request_number::balanceSheetByType, asOfDate, asOfDate);
    const bool onePerPeriod = options.krnProduct == QBKRN_COR;
    if (onePerPeriod) {
      context.events.ProgressBarChange(RoundedPercent(period.number + 1, periodCount + 1), processingText);
    }
    ParseBalanceSheetByType(context, period.number, request, asOfDate, collection(),
                            onePerPeriod ? TypeProgress::Silent : TypeProgress::Raised);
  }

  std::int16_t MajorVersion() const noexcept { return context.session.MajorVersion(); }

  ImportContext& context;
  ImportState& state;
  ImportOptions& options;
};

}  // namespace

void CollectPastPerformance(ImportContext& context) {
  context.state.pastPerformance.reset();
  const Place place{.operation = std::string(operation),
                    .request = request_number::allAccounts,
                    .fromDate = {},
                    .toDate = {}};
  EndOnError(context.observer, place, [&] { PastCollecting(context).Run(); });
}

}  // namespace krnqb
