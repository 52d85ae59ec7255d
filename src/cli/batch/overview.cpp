#include "cli/batch/overview.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <map>
#include <tuple>

#include "krnqb/error.h"

namespace krnqb::cli {
namespace {

// The sum of what was left out; one that is unknown makes the whole unknown.
std::optional<ExactAmount> SumOf(const std::vector<ImportResultFile>& imports) {
  ExactAmount sum;
  try {
    for (const ImportResultFile& import : imports) {
      if (import.amountsLeftOut == 0) continue;
      if (!import.sumLeftOut) return std::nullopt;
      sum += *import.sumLeftOut;
    }
  } catch (const Error&) {
    return std::nullopt;
  }
  return sum;
}

std::vector<WarningTotal> WarningsOf(const std::vector<ImportResultFile>& imports) {
  std::map<std::string, WarningTotal> byCode;
  for (const ImportResultFile& import : imports) {
    for (const ResultWarning& warning : import.warnings) {
      WarningTotal& total = byCode[warning.code];
      total.code = warning.code;
      ++total.imports;
      total.accounts += warning.accounts;
    }
  }
  std::vector<WarningTotal> totals;
  totals.reserve(byCode.size());
  for (auto& [code, total] : byCode) totals.push_back(std::move(total));
  std::ranges::stable_sort(totals, std::greater(), &WarningTotal::imports);
  return totals;
}

}  // namespace

BatchOverview OverviewOf(std::string folder, std::vector<ImportResultFile> imports) {
  BatchOverview overview{.folder = std::move(folder), .imports = std::move(imports)};
  std::map<std::string, std::size_t> counts;
  for (const ImportResultFile& import : overview.imports) {
    if (import.done) ++overview.done;
    ++counts[import.result];
    overview.rowsAdded += import.rowsAdded;
    overview.cellsChanged += import.cellsChanged;
    overview.formulasCleared += import.formulasCleared;
    overview.amountsLeftOut += import.amountsLeftOut;
    overview.milliseconds += import.milliseconds;
  }
  overview.byResult.assign(counts.begin(), counts.end());
  std::ranges::stable_sort(overview.byResult, std::greater(), &std::pair<std::string, std::size_t>::second);
  overview.sumLeftOut = SumOf(overview.imports);
  overview.warnings = WarningsOf(overview.imports);
  return overview;
}

std::string TimeText(const WriteTime& time) {
  const std::chrono::sys_seconds moment{std::chrono::seconds(time.seconds)};
  const auto day = std::chrono::floor<std::chrono::days>(moment);
  const std::chrono::year_month_day date(day);
  const std::chrono::hh_mm_ss clock(moment - day);
  return fmt::format("{:04}-{:02}-{:02} {:02}:{:02}:{:02}", static_cast<int>(date.year()),
                     static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                     clock.hours().count(), clock.minutes().count(), clock.seconds().count());
}

std::string CompanyText(const ImportResultFile& import) {
  if (!import.companyName.empty()) return import.companyName;
  return import.companyPath.empty() ? "?" : import.companyPath;
}

std::string PlanText(const ImportResultFile& import) {
  return import.plan.empty() ? "?" : import.plan;
}

}  // namespace krnqb::cli
