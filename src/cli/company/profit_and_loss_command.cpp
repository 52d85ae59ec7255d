#include "cli/company/profit_and_loss_command.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <utility>

#include "cli/company/interruptible.h"
#include "cli/company/profit_and_loss_output.h"
#include "cli/exchange/company_file.h"
#include "support/date.h"
#include "support/error_handling.h"

namespace krnqb::cli {
namespace {

constexpr std::string_view readingFailed = "reading the company's books failed";
constexpr int mostMonths = 240;
constexpr int monthsOfAYear = 12;
constexpr int lastMonth = 9999 * monthsOfAYear + monthsOfAYear - 1;  // dates have four-digit years

/// A range of months, both ends included, counted from the year 0.
struct Months {
  int first = 0;
  int last = 0;
};

int Count(const YearMonth& month) {
  return month.year * monthsOfAYear + month.month - 1;
}

YearMonth MonthOf(int count) {
  return {static_cast<std::int16_t>(count / monthsOfAYear),
          static_cast<std::int16_t>(count % monthsOfAYear + 1)};
}

void CheckPeriod(const ProfitAndLossOptions& options) {
  if (!options.from || !options.to) return;
  if (Count(*options.from) > Count(*options.to)) {
    throw WrongUsage("--from is later than --to", "give a month that is not after --to");
  }
  if (Count(*options.to) - Count(*options.from) >= mostMonths) {
    throw WrongUsage(fmt::format("the period has more than {} months", mostMonths), "give a shorter period");
  }
}

// Returns the months of the fiscal year that a day belongs to. A company whose fiscal year is unknown has
// calendar years.
Months FiscalYearOf(std::string_view day, std::int16_t fiscalMonth) {
  const int firstMonth = fiscalMonth == 0 ? 0 : fiscalMonth - 1;
  const int month = Count({static_cast<std::int16_t>(std::stoi(std::string(day.substr(0, 4)))),
                           static_cast<std::int16_t>(std::stoi(std::string(day.substr(5, 2))))});
  const int first = month - (month - firstMonth + monthsOfAYear) % monthsOfAYear;
  return {first, first + monthsOfAYear - 1};
}

Months PeriodOf(const ProfitAndLossOptions& options, const company::CompanyFile& company) {
  if (options.from && options.to) return {Count(*options.from), Count(*options.to)};
  if (options.from) {
    const int first = Count(*options.from);
    return {first, std::min(first + monthsOfAYear - 1, lastMonth)};
  }
  if (options.to) return {Count(*options.to) - monthsOfAYear + 1, Count(*options.to)};
  const std::optional<company::LedgerDays> days = company.TransactionDays();
  if (!days) {
    throw CommandFailure(readingFailed, fmt::format("{} has no transactions", options.file),
                         "load documents with krnqb company load, or give --from");
  }
  return FiscalYearOf(days->last, company.Info().fiscalMonth);
}

std::string FirstDay(const YearMonth& month) {
  return fmt::format("{:04}-{:02}-01", month.year, month.month);
}

std::string LastDay(const YearMonth& month) {
  return fmt::format("{:04}-{:02}-{:02}", month.year, month.month,
                     DaysInCalendarMonth(month.month, month.year));
}

CompanyBooks BooksOf(const company::CompanyFile& company, const ProfitAndLossOptions& options) {
  try {
    const Months period = PeriodOf(options, company);
    company::CompanyInfo info = company.Info();
    return {std::move(info.path), std::move(info.name),
            company.ProfitAndLoss(FirstDay(MonthOf(period.first)), LastDay(MonthOf(period.last)))};
  } catch (const Failure&) {
    throw;
  } catch (...) {
    throw CompanyFailure(readingFailed, CaughtError(), "run krnqb company check");
  }
}

}  // namespace

ExitCode Run(const ProfitAndLossOptions& options, const Console& console) {
  CheckPeriod(options);
  return RunInterruptibly(
      "reading the company's books", "nothing was changed", [&](const InterruptWatch& interrupts) {
        const company::CompanyFile company =
            OpenCompany(options.file, company::FileAccess::ReadOnly, interrupts);
        const CompanyBooks books = BooksOf(company, options);
        if (const auto warning = ChecksumWarning(options.file, company.HasChecksums())) {
          Warn(console, *warning);
        }
        console.out << (options.json ? ProfitAndLossJson(books) + '\n'
                                     : ProfitAndLossText(books, options.months, console.outWidth));
        return ExitCode::Done;
      });
}

}  // namespace krnqb::cli
