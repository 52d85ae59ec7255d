#include "cli/import/log.h"

#include <utility>

namespace krnqb::cli {

void ImportLog::XMLprocessing(Variant& /*oXML*/) {
  Raised({.name = "XMLprocessing", .percent = 0, .description = {}});
}

void ImportLog::TableModified(std::string_view sTableID) {
  Raised({.name = "TableModified", .percent = 0, .description = std::string(sTableID)});
}

void ImportLog::AfterImport() {
  afterImportRaised = true;
  Raised({.name = "AfterImport", .percent = 0, .description = {}});
}

void ImportLog::ProgressBarChange(std::int16_t PercentValue, std::string_view Description) {
  if (bar != nullptr) bar->Show(PercentValue, Description);
  Raised({.name = "ProgressBarChange", .percent = PercentValue, .description = std::string(Description)});
}

void ImportLog::Notify(const Notice& notice) noexcept {
  // An interrupted import writes nothing: what its end leaves out is no news.
  if (interrupts.Requested()) return;
  outcome.incomplete.Add(notice);
  outcome.skipped.Add(notice);
}

void ImportLog::Raised(ImportEvent event) {
  outcome.events.push_back(std::move(event));
  interrupts.StopWhenRequested();
}

}  // namespace krnqb::cli
