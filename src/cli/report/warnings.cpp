#include "cli/report/warnings.h"

#include "cli/import/omissions.h"
#include "cli/import/warning_advice.h"
#include "html/elements.h"

namespace krnqb::cli {
namespace {

// What to do where the warning's own sentence does not say it.
std::string_view Remedy(WarningCode code) noexcept {
  switch (code) {
    case WarningCode::EmptyPeriod:
      return "Import other months with --import-start.";
    case WarningCode::BalanceSpread:
      return "Enter the amounts in the plan yourself, or import with --amounts-from reports.";
    case WarningCode::RowTwice:
      return "Delete one of the rows and import again.";
    case WarningCode::TwinMisaligned:
      return "Align the rows of the two tables and import again.";
    case WarningCode::TwinMissing:
      return "Add the row to the table of actual values and import again.";
    case WarningCode::ShortRow:
      return "Add the cells and import again.";
    case WarningCode::NoRow:
      return "Add a row with the account's name and import again.";
    case WarningCode::DepreciationAndOwnRow:
      return "Delete the account's own row and import again.";
    case WarningCode::TextCut:
      return "Correct the amount in the plan.";
    case WarningCode::QuantityAsOne:
      return "Correct the line in QuickBooks and import again.";
    case WarningCode::BilledAgain:
      return "Check the customer's expenses in QuickBooks.";
    case WarningCode::TotalColumn:
      return "Correct the past months in the plan.";
    case WarningCode::NoStartRow:
      return "Correct the block's startrow in the plan and import again.";
    case WarningCode::NamesDifferInCase:
    case WarningCode::NameWithQuote:
      return "Rename the account in QuickBooks and import again.";
    case WarningCode::EquityNamedFirst:
      return "Correct the figures in the plan.";
    case WarningCode::HalfLoadedTwins:
      return "Restore the missing table and import again.";
    case WarningCode::UnsupportedProcessor:
    case WarningCode::PastFromToday:
    case WarningCode::TablesNotLoaded:
      break;
  }
  return "";
}

// A sentence with a capital letter and a full stop.
std::string Sentence(std::string text) {
  if (text.empty()) return text;
  if (text.front() >= 'a' && text.front() <= 'z') text.front() = static_cast<char>(text.front() - 'a' + 'A');
  if (text.back() != '.') text += '.';
  return text;
}

html::Fragment Item(std::string_view code, const std::string& message, std::string_view remedy) {
  const std::string toDo = remedy.empty() ? std::string() : " " + std::string(remedy);
  return html::Badge(html::Mark::Caution, code) + html::Text(" ") + html::Text(Sentence(message) + toDo);
}

}  // namespace

html::Fragment WarningList(const ImportOutcome& outcome) {
  std::vector<html::Fragment> items;
  for (const ImportWarning& warning : outcome.warnings)
    items.push_back(Item(warning.code, warning.message, {}));
  for (const Warning& warning : outcome.report.Warnings())
    items.push_back(Item(WarningWord(warning.code), WarningAdvice(warning), Remedy(warning.code)));
  return items.empty() ? html::Fragment() : html::List(items);
}

html::Fragment MissingList(const ImportOutcome& outcome) {
  std::vector<html::Fragment> items;
  for (const Notice& omission : outcome.report.Missing()) items.push_back(html::Text(OmissionText(omission)));
  return items.empty() ? html::Fragment() : html::List(items);
}

}  // namespace krnqb::cli
