#include "cli/import/log.h"

#include <utility>

namespace krnqb::cli {

void ImportLog::XMLprocessing(Variant& /*oXML*/) {
  Record({.name = "XMLprocessing", .percent = 0, .description = {}});
}

void ImportLog::TableModified(std::string_view sTableID) {
  Record({.name = "TableModified", .percent = 0, .description = std::string(sTableID)});
}

void ImportLog::AfterImport() {
  afterImportRaised_ = true;
  if (progress_ != nullptr) progress_->ShowEnd();
  Record({.name = "AfterImport", .percent = 0, .description = {}});
}

void ImportLog::ProgressBarChange(std::int16_t PercentValue, std::string_view Description) {
  if (progress_ != nullptr) progress_->Show(PercentValue, Description);
  Record({.name = "ProgressBarChange", .percent = PercentValue, .description = std::string(Description)});
}

void ImportLog::Notify(const Notice& notice) noexcept {
  // Nothing is written after an interrupt, so omissions are not reported.
  if (interrupts_.Requested()) return;
  outcome_.report.Notify(notice);
  if (ledger_ != nullptr) ledger_->LeaveOut(notice);
}

void ImportLog::Record(ImportEvent event) {
  outcome_.events.push_back(std::move(event));
  interrupts_.StopWhenRequested();
}

}  // namespace krnqb::cli
