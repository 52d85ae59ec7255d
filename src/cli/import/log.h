#pragma once

#include "cli/console/interrupt_watch.h"
#include "cli/console/progress_bar.h"
#include "cli/import/outcome.h"
#include "krnqb/outside_world.h"

namespace krnqb::cli {

/// Records an import's events and notices, moves the progress bar, and stops an interrupted import at its
/// next event.
class ImportLog : public EventSink, public Observer {
 public:
  /// All arguments must outlive the log. `bar` is null if no progress bar is shown.
  ImportLog(ImportOutcome& outcome, const InterruptWatch& interrupts, ProgressBar* bar) noexcept
      : outcome_(outcome), interrupts_(interrupts), bar_(bar) {}

  void XMLprocessing(Variant& oXML) override;
  void TableModified(std::string_view sTableID) override;
  void AfterImport() override;
  void ProgressBarChange(std::int16_t PercentValue, std::string_view Description) override;

  void Notify(const Notice& notice) noexcept override;

  bool AfterImportRaised() const noexcept { return afterImportRaised_; }

 private:
  void Record(ImportEvent event);

  ImportOutcome& outcome_;
  const InterruptWatch& interrupts_;
  ProgressBar* bar_;
  bool afterImportRaised_ = false;
};

}  // namespace krnqb::cli
