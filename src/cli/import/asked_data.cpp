#include "cli/import/asked_data.h"

#include <fmt/format.h>

#include "plan_file/attributes.h"
#include "plan_file/headings.h"
#include "support/date.h"
#include "support/path_text.h"

namespace krnqb::cli {

AmountsPath PathOf(std::int16_t majorVersion) noexcept {
  if (majorVersion == 1) return AmountsPath::Transactions;
  return majorVersion == 2 ? AmountsPath::Reports : AmountsPath::None;
}

RecordedImport AskedData(const ImportSettings& settings, const ImportSource& source) {
  const ImportCommand& options = settings.options;
  const bool amounts = options.balances != BalImport_None;
  return {.start = settings.importStart,
          .product = settings.product,
          .amounts = amounts ? PathOf(ShownMajorVersion(source)) : AmountsPath::None,
          .expenses = options.expenses,
          .income = options.income,
          .pastPerformance = options.pastPerformance,
          .fiscalMonth = options.fiscalMonth};
}

std::string ContentsText(const RecordedImport& asked) {
  std::string text = asked.expenses && asked.income ? "expense and income accounts"
                     : asked.expenses               ? "expense accounts"
                     : asked.income                 ? "income accounts"
                                                    : "";
  if (asked.pastPerformance) text += text.empty() ? "past performance" : " and past performance";
  return text;
}

std::string_view PathText(AmountsPath path) noexcept {
  if (path == AmountsPath::Transactions) return " from transactions";
  return path == AmountsPath::Reports ? " from reports" : "";
}

std::string AskedText(const RecordedImport& asked) {
  const bool amounts = asked.amounts != AmountsPath::None;
  std::string text =
      fmt::format("{} {}{} ({}, product {}", ContentsText(asked),
                  amounts ? "with amounts" : "without amounts", PathText(asked.amounts),
                  plan_file::TwelveMonthsText(asked.start), plan_file::ProductText(asked.product));
  if (asked.fiscalMonth) text += fmt::format(", fiscal year from {}", EnglishMonthName(*asked.fiscalMonth));
  return text + ')';
}

}  // namespace krnqb::cli
