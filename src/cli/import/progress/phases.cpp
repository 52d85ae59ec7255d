#include "cli/import/progress/phases.h"

#include <fmt/format.h>

#include <algorithm>

#include "import/progress.h"
#include "plan_file/headings.h"

namespace krnqb::cli {
namespace {

constexpr std::string_view expenseEvent = "Importing expense balances...";
constexpr std::string_view incomeEvent = "Importing income balances...";

constexpr std::int16_t monthCount = 12;
constexpr int balanceSheetTypeCount = 12;
constexpr std::size_t yearsOfPastPerformance = 3;
constexpr std::size_t periodsWithMonths = 14;

// The work of a step, in parts of what reading one list or one type takes.
constexpr double shortWork = 1;
constexpr double listsWork = 4;
constexpr double monthWork = 6;
constexpr double reportsWork = 12;

bool KeepsPastPerformance(const ImportScope& scope) noexcept {
  return scope.pastPerformance && (scope.product == QBKRN_ALD || scope.product == QBKRN_COR);
}

std::vector<std::string> PastPeriodNames(const ImportScope& scope) {
  const std::size_t periods = scope.product == QBKRN_COR ? periodsWithMonths : yearsOfPastPerformance;
  return plan_file::ColumnHeadings("db_pastperformance_sales", periods + 1, scope.planStart);
}

std::string PastPhase(std::string_view period) {
  return fmt::format("reading past performance, {}", period);
}

// Months of sales are read for what was billed even if income is not imported, and purchases for what they
// add to income and the cost of goods.
std::string_view ExpensePhase(const ImportScope& scope) noexcept {
  return scope.expenses ? "reading expenses" : "reading purchases";
}

std::string_view IncomePhase(const ImportScope& scope) noexcept {
  return scope.income ? "reading sales" : "reading billed expenses";
}

}  // namespace

ImportPhases::ImportPhases(const ImportScope& scope) {
  AddAccountPass(scope, true);
  if (scope.balances != BalImport_None) {
    AddAccountPass(scope, false);
    const bool monthly = scope.majorVersion == 1 && (scope.expenses || scope.income);
    if (monthly) {
      AddMonths(expenseEvent, ExpensePhase(scope), scope.importStart);
      AddMonths(incomeEvent, IncomePhase(scope), scope.importStart);
    }
    if (KeepsPastPerformance(scope) && scope.majorVersion == 1) AddPastTransactions(scope);
    if (KeepsPastPerformance(scope) && scope.majorVersion == 2) AddPastReports(scope);
  }
  for (const Step& step : steps_) work_ += step.work;
}

void ImportPhases::AddAccountPass(const ImportScope& scope, bool first) {
  const std::string accounts = "reading accounts";
  const std::string start = first ? "opening the company" : accounts;
  steps_.push_back({20, processingText, start, shortWork});
  steps_.push_back({40, processingText, start, shortWork});
  steps_.push_back({60, processingText, accounts, listsWork});
  steps_.push_back({80, processingText, scope.expenses ? "adding expense accounts" : accounts, shortWork});
  steps_.push_back({100, processingText, scope.income ? "adding income accounts" : accounts, shortWork});
  if (first || scope.majorVersion != 2 || (!scope.expenses && !scope.income)) return;
  steps_.back().phase = "reading reports";
  steps_.back().work += reportsWork;
}

void ImportPhases::AddMonths(std::string_view description, std::string_view phase, const YearMonth& start) {
  const TwelveMonths months(start);
  for (std::int16_t month = 1; month <= monthCount; ++month) {
    steps_.push_back({RoundedPercent(month, monthCount), description,
                      fmt::format("{}, {}", phase, plan_file::MonthOfYear(months.Month(month))), monthWork});
  }
}

// Of the single months, only the last is read.
void ImportPhases::AddPastTransactions(const ImportScope& scope) {
  const std::vector<std::string> names = PastPeriodNames(scope);
  for (std::size_t period = 0; period < names.size(); ++period) {
    const bool skipped = scope.product == QBKRN_COR && period >= 2 && period + 1 < names.size();
    if (skipped) continue;
    for (const std::string_view description : {expenseEvent, incomeEvent}) {
      for (std::int16_t month = 1; month <= monthCount; ++month) {
        steps_.push_back(
            {RoundedPercent(month, monthCount), description, PastPhase(names[period]), monthWork});
      }
    }
  }
}

// The reports of a period are read before its events, so that their work belongs to the step before.
void ImportPhases::AddPastReports(const ImportScope& scope) {
  const std::vector<std::string> names = PastPeriodNames(scope);
  const int periodCount = static_cast<int>(names.size());
  for (int period = 1; period <= periodCount; ++period) {
    const std::string phase = PastPhase(names[static_cast<std::size_t>(period - 1)]);
    steps_.back().work += reportsWork;
    if (scope.product == QBKRN_COR) {
      steps_.push_back({RoundedPercent(period + 1, periodCount + 1), processingText, phase,
                        balanceSheetTypeCount * shortWork});
      continue;
    }
    for (int type = 1; type <= balanceSheetTypeCount; ++type) {
      steps_.push_back({RoundedPercent(type, balanceSheetTypeCount), processingText, phase, shortWork});
    }
  }
}

const ImportPosition& ImportPhases::Next(std::int16_t percent, std::string_view description) {
  const auto from = steps_.begin() + static_cast<std::ptrdiff_t>(next_);
  const auto found = std::find_if(from, steps_.end(), [&](const Step& step) {
    return step.percent == percent && step.description == description;
  });
  if (found == steps_.end()) return position_;
  for (auto step = from; step != found; ++step) doneBeforeNext_ += step->work;
  position_ = {.done = doneBeforeNext_ / work_, .phase = found->phase};
  doneBeforeNext_ += found->work;
  next_ = static_cast<std::size_t>(found - steps_.begin()) + 1;
  return position_;
}

const ImportPosition& ImportPhases::End() {
  position_ = {.done = 1, .phase = "writing the plan"};
  return position_;
}

}  // namespace krnqb::cli
