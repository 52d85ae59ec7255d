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
  afterImportRaised_ = true;
  Raised({.name = "AfterImport", .percent = 0, .description = {}});
}

void ImportLog::ProgressBarChange(std::int16_t PercentValue, std::string_view Description) {
  if (bar_ != nullptr) bar_->Show(PercentValue, Description);
  Raised({.name = "ProgressBarChange", .percent = PercentValue, .description = std::string(Description)});
}

void ImportLog::Notify(const Notice& notice) noexcept {
  // Nothing is written after an interrupt, so omissions are not reported.
  if (interrupts_.Requested()) return;
  outcome_.report.Notify(notice);
}

void ImportLog::Raised(ImportEvent event) {
  outcome_.events.push_back(std::move(event));
  interrupts_.StopWhenRequested();
}

}  // namespace krnqb::cli
