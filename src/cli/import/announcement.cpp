#include <fmt/format.h>

#include "cli/console/option_values.h"
#include "cli/import/asked_data.h"
#include "cli/import/settings.h"
#include "plan_file/headings.h"
#include "support/date.h"
#include "support/path_text.h"

namespace krnqb::cli {
namespace {

std::string Joined(const std::vector<std::string>& parts) {
  std::string text;
  for (std::size_t index = 0; index < parts.size(); ++index) {
    if (index > 0) text += index + 1 == parts.size() ? " and " : ", ";
    text += parts[index];
  }
  return text;
}

std::string AmountsText(const ImportCommand& options, AmountsPath path) {
  if (options.balances == BalImport_None) return "no amounts";
  return fmt::format("{} amounts{}", BalancesName(options.balances), PathText(path));
}

std::string GrowthText(const ImportCommand& options) {
  std::string text;
  const auto append = [&](std::string_view what, const std::optional<std::int16_t>& percent) {
    if (percent) text += fmt::format(", {} growth {}%", what, *percent);
  };
  append("sales", options.growthRateIncome);
  append("cost", options.growthRateCogs);
  append("expense", options.growthRateExpenses);
  return text;
}

std::string OtherOptionsText(const ImportCommand& options) {
  std::string text;
  if (options.fiscalMonth)
    text += fmt::format(", fiscal year from {}", EnglishMonthName(*options.fiscalMonth));
  if (options.selectAllExpenses) text += ", all expense accounts selected";
  if (!options.selectedExpenses.empty() && !options.selectAllExpenses) {
    text += fmt::format(", selecting {}", Joined(options.selectedExpenses));
  }
  if (options.acceptIncomplete) text += ", incomplete data accepted";
  if (options.recordFile) text += fmt::format(", recorded in {}", *options.recordFile);
  if (options.dryRun) text += ", dry run";
  return text;
}

}  // namespace

std::string AnnouncementText(const ImportSettings& settings, const ImportSource& source) {
  const ImportCommand& options = settings.options;
  const RecordedImport asked = AskedData(settings, source);
  return fmt::format("Importing {} from {}, {}, into {} (product {}, from {}): {}{}{}.", ContentsText(asked),
                     source.description, plan_file::TwelveMonthsText(settings.importStart), options.planFile,
                     plan_file::ProductText(settings.product), plan_file::MonthOfYear(settings.planStart),
                     AmountsText(options, asked.amounts), GrowthText(options), OtherOptionsText(options));
}

}  // namespace krnqb::cli
