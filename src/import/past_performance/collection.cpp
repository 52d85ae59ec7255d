#include "import/past_performance/collection.h"

#include <array>

#include "import/amounts/balances.h"
#include "import/amounts/date_ranges.h"
#include "import/amounts/report_reading.h"
#include "import/past_performance/past_observer.h"
#include "import/past_performance/writing.h"
#include "import/progress.h"
#include "krnqb/booking.h"
#include "plan/account_rows.h"
#include "plan/period.h"
#include "qbxml/request_catalogue.h"
#include "support/date.h"
#include "support/error_handling.h"
#include "support/number_text.h"
#include "support/warning_report.h"

namespace krnqb {
namespace {

constexpr Operation operation = Operation::CollectPastPerformance;

// Types that are present even if the company has no such accounts. "CostOfGoodSold" is not the account type
// "CostOfGoodsSold", which is missing if the company has no such accounts.
constexpr std::array<std::string_view, 5> seededTypes = {"Income", "Expense", "CostOfGoodSold",
                                                         "Depreciation", "RetainedEarnings"};

// A past year or month.
struct PastPeriod {
  std::int16_t number = 0;  // the slot for its figures: 1 to 14
  YearMonth start;
  bool isMonth = false;
};

// Steps through the periods in order. Reads the plan's month anew for each because a handler may change it.
class PastCalendar {
 public:
  explicit PastCalendar(ImportOptions& options) : options_(options) {
    start_.year = CheckedInteger(SettleKRNStartingYear(options_.period) - 4);
  }

  PastPeriod Next() {
    ++number_;
    const bool monthsShown = options_.krnProduct == QBKRN_COR;
    const std::int16_t planMonth = SettleKRNStartingMonth(options_.period);
    if (monthsShown && number_ >= 4) {
      start_ = NextMonth(start_);
    } else {
      start_ = {.year = CheckedInteger(start_.year + 1), .month = planMonth};
    }
    if (monthsShown && number_ >= 3) isMonth_ = true;
    return {number_, start_, isMonth_};
  }

 private:
  ImportOptions& options_;
  std::int16_t number_ = 0;
  YearMonth start_;
  bool isMonth_ = false;
};

class PastCollecting {
 public:
  PastCollecting(ImportContext& context, std::int16_t majorVersion)
      : context_(context),
        state_(context.state),
        options_(context.state.options),
        majorVersion_(majorVersion) {}

  void Run() {
    const std::int16_t periodCount = PastPeriodCount(options_);
    const XmlElement accounts = context_.session.Ask(request_number::allAccounts, operation);
    state_.pastPerformance.emplace();
    for (const std::string_view type : seededTypes) Collection().Add(cSubtotals(type), type);
    if (majorVersion_ == 1) WarnOfToday();
    for (const XmlElement& account : accounts.SelectAll("//AccountRet")) {
      if (IsTopLevelAccount(account)) AddAccountType(account);
    }
    PastCalendar calendar(options_);
    for (std::int16_t number = 1; number <= periodCount; ++number)
      CollectPeriod(calendar.Next(), periodCount);
  }

 private:
  SubtotalCollection& Collection() {
    if (!state_.pastPerformance) throw Error(error_number::objectNotSet);
    return *state_.pastPerformance;
  }

  // qbXML 1.x has no balances of past days, so all three years show today's.
  void AddAccountType(const XmlElement& account) {
    const std::string type = account.Child("AccountType").Text();
    if (Collection().Find(type) == nullptr) Collection().Add(cSubtotals(type), type);
    if (majorVersion_ != 1) return;
    const double balance = RequireDouble(account.Child("TotalBalance").Text());
    const std::string balanceType = BalanceType(account, type, balance);
    cSubtotals& target = Collection().At(balanceType);
    if (type == "Equity" && balanceType != type) WarnOfEquity(account, balance);
    target.AddToSubTotal(1, balance);
    ReportBalance(account, target, balance);
    for (const std::int16_t period : {std::int16_t{2}, std::int16_t{3}}) {
      target.SubTotal(period, target.SubTotal(1));
      Report(target, period,
             {.rule = BookingRule::PreviousPeriod, .amount = target.SubTotal(1), .replaces = true});
    }
  }

  // Passes on what was added to a figure, if bookings are received.
  void Report(const cSubtotals& figure, std::int16_t period, Booking booking) {
    BookingReceiver* const receiver = context_.observer.Bookings();
    if (receiver == nullptr) return;
    booking.slot = {.group = AmountGroup::PastPerformance, .name = figure.Description(), .number = period};
    receiver->Book(booking);
  }

  void ReportBalance(const XmlElement& account, const cSubtotals& figure, double balance) {
    if (context_.observer.Bookings() == nullptr) return;
    const auto textOf = [&](const char* name) {
      const XmlElement child = account.Child(name);
      return child ? child.Text() : std::string();
    };
    const std::string id = textOf("ListID");
    const std::string name = textOf("Name");
    const std::string text = textOf("TotalBalance");
    Report(figure, 1,
           {.rule = BookingRule::BalanceToday,
            .amount = balance,
            .account = id,
            .accountName = name,
            .text = text});
  }

  void WarnOfToday() {
    const bool monthsShown = options_.krnProduct == QBKRN_COR;
    ReportWarning(context_.observer, {.operation = operation}, [&] {
      return Finding{.code = WarningCode::PastFromToday,
                     .name = monthsShown ? "today's balances in both years and the first month and 0 in the "
                                           "other months, sales only of both years and the last month, and "
                                           "no expenses or costs of goods"
                                         : "today's balances in each of its three years, and no expenses or "
                                           "costs of goods"};
    });
  }

  void WarnOfEquity(const XmlElement& account, double balance) {
    ReportWarning(context_.observer, {.operation = operation}, [&] {
      return Finding{
          .code = WarningCode::EquityNamedFirst, .name = account.Child("Name").Text(), .amount = balance};
    });
  }

  // A negative fixed asset is accumulated depreciation. All equity is retained earnings if the company's
  // first account has that name.
  std::string BalanceType(const XmlElement& account, const std::string& type, double balance) {
    if (type == "FixedAsset" && balance < 0) return "Depreciation";
    if (type != "Equity") return type;
    if (!firstName_) firstName_ = account.Select("//Name").Text();
    return *firstName_ == "Retained Earnings" ? "RetainedEarnings" : type;
  }

  void CollectPeriod(const PastPeriod& period, std::int16_t periodCount) {
    state_.expenseSubtotals = TopLevelSubtotals(state_.expenseAccounts, context_.observer);
    state_.incomeSubtotals = TopLevelSubtotals(state_.incomeAccounts, context_.observer);
    state_.costSubtotals = TopLevelSubtotals(state_.costAccounts, context_.observer);
    if (majorVersion_ == 1) ReadTransactions(period);
    if (majorVersion_ == 2) ReadReports(period);
    SetTotal("Income", period, state_.incomeSubtotals);
    SetTotalOfReports("Expense", period, state_.expenseSubtotals);
    SetTotalOfReports("CostOfGoodsSold", period, state_.costSubtotals);
    if (majorVersion_ == 2) ReadBalanceSheet(period, periodCount);
  }

  static DateRange RangeOf(const PastPeriod& period) {
    return period.isMonth ? MonthRange(period.start) : FiscalYearRange(TwelveMonths(period.start));
  }

  // Of the single months, only the last is read. Expenses are read from the imported year, not from the
  // period's.
  void ReadTransactions(const PastPeriod& period) {
    if (options_.krnProduct == QBKRN_COR && period.number >= 3 && period.number <= 13) return;
    // Of these amounts only the income reaches the plan; the warnings are about expenses and costs.
    PastObserver observer(context_.observer, period.number, PastObserver::Warnings::Dropped);
    ImportContext past{state_, context_.session, context_.plan, context_.events, observer, context_.clock};
    ImportExpenseBalances(past, {.year = SettleStartingYear(options_.period), .month = period.start.month});
    ImportIncomeBalances(past, period.start);
  }

  void ReadReports(const PastPeriod& period) {
    const DateRange range = RangeOf(period);
    ReadReport(request_number::incomeByMonth, range, period.number, state_.incomeSubtotals);
    ReadReport(request_number::costByMonth, range, period.number, state_.costSubtotals);
    ReadReport(request_number::expenseByMonth, range, period.number, state_.expenseSubtotals);
  }

  void ReadReport(std::int32_t number, const DateRange& range, std::int16_t periodNumber,
                  std::optional<SubtotalCollection>& target) {
    PastObserver observer(context_.observer, periodNumber, PastObserver::Warnings::Reported);
    ParseProfitAndLossReport(context_.session, number, range, target, observer);
  }

  void SetTotal(std::string_view type, const PastPeriod& period,
                const std::optional<SubtotalCollection>& subtotals) {
    cSubtotals& figure = RequireType(Collection(), type, operation, context_.observer);
    Begin(figure, period);
    if (!subtotals) throw Error(error_number::objectNotSet);
    for (const cSubtotals& account : *subtotals) {
      figure.AddToSubTotal(period.number, account.Total());
      Report(figure, period.number,
             {.rule = BookingRule::PeriodTotal,
              .amount = account.Total(),
              .accountName = account.Description()});
    }
  }

  void Begin(cSubtotals& figure, const PastPeriod& period) {
    figure.SubTotal(period.number, 0);
    Report(figure, period.number, {.rule = BookingRule::PeriodBegins, .replaces = true});
  }

  // Past expenses and costs come only from reports; with qbXML 1.x they are 0.
  void SetTotalOfReports(std::string_view type, const PastPeriod& period,
                         const std::optional<SubtotalCollection>& subtotals) {
    if (majorVersion_ > 1) return SetTotal(type, period, subtotals);
    Begin(RequireType(Collection(), type, operation, context_.observer), period);
  }

  void ReadBalanceSheet(const PastPeriod& period, std::int16_t periodCount) {
    const std::string asOfDate = RangeOf(period).toDate;
    const std::string request = BuildRequest(request_number::balanceSheetByType, asOfDate, asOfDate);
    const bool onePerPeriod = options_.krnProduct == QBKRN_COR;
    if (onePerPeriod) {
      context_.events.ProgressBarChange(RoundedPercent(period.number + 1, periodCount + 1), processingText);
    }
    ParseBalanceSheetByType(context_, period.number, request, asOfDate, Collection(),
                            onePerPeriod ? TypeProgress::Silent : TypeProgress::Raised);
  }

  ImportContext& context_;
  ImportState& state_;
  ImportOptions& options_;
  const std::int16_t majorVersion_;
  std::optional<std::string> firstName_;  // of the whole list
};

}  // namespace

void CollectPastPerformance(ImportContext& context, std::int16_t majorVersion) {
  context.state.pastPerformance.reset();
  const Place place{.operation = operation, .request = request_number::allAccounts};
  EndOnError(
      context.observer, place, [&] { PastCollecting(context, majorVersion).Run(); }, endOfPastPerformance);
}

}  // namespace krnqb
