#include "cli/import/dialog_task.h"

#include <fmt/format.h>

#include "cli/console/text_table.h"
#include "cli/system/end_requests.h"
#include "plan_file/headings.h"
#include "support/path_text.h"

namespace krnqb::cli {
namespace {

std::string FileName(const std::string& path) {
  return TextOfPath(PathFrom(path).filename());
}

std::string CompanyText(const ImportSource& source) {
  if (source.companyName.empty()) return source.description;
  return fmt::format("{} ({})", source.companyName, FileName(source.companyPath));
}

}  // namespace

ui::ImportTask DialogTask(const ImportSettings& settings, const ImportSource& source) {
  return {.description = OneLine(fmt::format("From {} into {}, {}", CompanyText(source),
                                             FileName(settings.options.planFile),
                                             plan_file::TwelveMonthsText(settings.importStart))),
          .stop = RequestInterruption};
}

}  // namespace krnqb::cli
