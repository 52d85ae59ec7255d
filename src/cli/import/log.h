#pragma once

#include "cli/console/interrupt_watch.h"
#include "cli/import/outcome.h"
#include "cli/import/progress/display.h"
#include "krnqb/outside_world.h"
#include "ledger/writer.h"

namespace krnqb::cli {

/// Records an import's events and notices, shows the progress, and stops an interrupted import at its
/// next event.
class ImportLog : public EventSink, public Observer {
 public:
  /// All arguments must outlive the log. `progress` is null if no progress is shown, `ledger` if no ledger is
  /// kept.
  ImportLog(ImportOutcome& outcome, const InterruptWatch& interrupts, ProgressDisplay* progress,
            ledger::LedgerWriter* ledger) noexcept
      : outcome_(outcome), interrupts_(interrupts), progress_(progress), ledger_(ledger) {}

  void XMLprocessing(Variant& oXML) override;
  void TableModified(std::string_view sTableID) override;
  void AfterImport() override;
  void ProgressBarChange(std::int16_t PercentValue, std::string_view Description) override;

  void Notify(const Notice& notice) noexcept override;
  BookingReceiver* Bookings() noexcept override { return ledger_; }

  bool AfterImportRaised() const noexcept { return afterImportRaised_; }

 private:
  void Record(ImportEvent event);

  ImportOutcome& outcome_;
  const InterruptWatch& interrupts_;
  ProgressDisplay* progress_;
  ledger::LedgerWriter* ledger_;
  bool afterImportRaised_ = false;
};

}  // namespace krnqb::cli
