#include "cli/report/warnings.h"

#include "cli/import/omissions.h"
#include "cli/import/warning_advice.h"
#include "html/elements.h"

namespace krnqb::cli {
namespace {

html::Fragment Item(std::string_view code, std::string_view message) {
  return html::Badge(html::Mark::Caution, code) + html::Text(" ") + html::Text(message);
}

}  // namespace

html::Fragment WarningList(const ImportOutcome& outcome) {
  std::vector<html::Fragment> items;
  for (const ImportWarning& warning : outcome.warnings) items.push_back(Item(warning.code, warning.message));
  for (const Warning& warning : outcome.report.Warnings())
    items.push_back(Item(WarningWord(warning.code), WarningAdvice(warning)));
  return items.empty() ? html::Fragment() : html::List(items);
}

html::Fragment MissingList(const ImportOutcome& outcome) {
  std::vector<html::Fragment> items;
  for (const Notice& omission : outcome.report.Missing()) items.push_back(html::Text(OmissionText(omission)));
  return items.empty() ? html::Fragment() : html::List(items);
}

}  // namespace krnqb::cli
