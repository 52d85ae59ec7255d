#include "cli/record/span.h"

#include <fmt/format.h>

#include "cli/console/failure.h"
#include "plan_file/attributes.h"
#include "plan_file/headings.h"

namespace krnqb::cli {
namespace {

constexpr int monthsOfYear = 12;
constexpr int mostMonths = 120;

// Months counted from January of year 0.
int Count(const YearMonth& month) noexcept {
  return month.year * monthsOfYear + month.month - 1;
}

YearMonth MonthOf(int count) noexcept {
  return {.year = static_cast<std::int16_t>(count / monthsOfYear),
          .month = static_cast<std::int16_t>(count % monthsOfYear + 1)};
}

}  // namespace

std::string MonthsText(const YearMonth& from, const YearMonth& to) {
  return fmt::format("{} to {}", plan_file::MonthOfYear(from), plan_file::MonthOfYear(to));
}

RecordedSpan SettleSpan(const RecordOptions& options) {
  const YearMonth before = MonthOf(Count(options.planStart) - monthsOfYear);
  const YearMonth last = MonthOf(Count(options.planStart) - 1);
  const RecordedSpan span{
      .from = options.from.value_or(before), .to = options.to.value_or(last), .planStart = options.planStart};
  const int months = Count(span.to) - Count(span.from) + 1;
  if (months < monthsOfYear) {
    throw WrongUsage(months < 1
                         ? fmt::format("--to {} is before --from {}", plan_file::PlanStartText(span.to),
                                       plan_file::PlanStartText(span.from))
                         : fmt::format("{} {} fewer than the twelve months that an import reads",
                                       MonthsText(span.from, span.to), months == 1 ? "is" : "are"),
                     "give twelve months or more with --from and --to");
  }
  if (months > mostMonths) {
    throw WrongUsage(fmt::format("{} are {} months; {} can be recorded at once",
                                 MonthsText(span.from, span.to), months, mostMonths),
                     "record them in several recordings");
  }
  if (Count(span.from) > Count(before) || Count(span.to) < Count(last)) {
    throw WrongUsage(
        fmt::format("an import into a plan that starts in {} reads {}, but --from and --to are {}",
                    plan_file::MonthOfYear(options.planStart), MonthsText(before, last),
                    MonthsText(span.from, span.to)),
        "include these months, or give another --plan-start");
  }
  return span;
}

std::vector<YearMonth> ImportStarts(const RecordedSpan& span) {
  std::vector<YearMonth> starts;
  for (int start = Count(span.from); start + monthsOfYear - 1 <= Count(span.to); ++start)
    starts.push_back(MonthOf(start));
  return starts;
}

std::vector<YearMonth> TransactionStarts(const RecordedSpan& span) {
  std::vector<YearMonth> starts;
  const int last = Count(span.to) - monthsOfYear + 1;
  for (int start = Count(span.from); start < last; start += monthsOfYear) starts.push_back(MonthOf(start));
  starts.push_back(MonthOf(last));
  return starts;
}

}  // namespace krnqb::cli
