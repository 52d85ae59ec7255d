#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "cli/console/surroundings.h"
#include "cli/exchange/import_witness.h"
#include "cli/exchange/scratch_folder.h"
#include "cli/import/options.h"
#include "cli/report/output_file.h"

namespace krnqb::cli {

/// A step of an import, such as "Reading expenses", and how long it took.
struct TimedStep {
  std::string name;
  std::int64_t events = 0;
  std::chrono::milliseconds time{};
};

/// What an import asked for, and how long that took.
struct ImportTimes {
  std::int64_t requests = 0;
  std::chrono::milliseconds answering{};  ///< spent waiting for answers
  std::int64_t events = 0;
  std::vector<TimedStep> steps;  ///< in the order in which they were first begun
};

/// Keeps what a page about an import needs besides the import's outcome. Without --ledger it has one written
/// into a temporary folder, and for QuickBooks a recording, so that QuickBooks is asked only once.
class ReportWitness final : public ImportWitness {
 public:
  /// `options` and `surroundings` must outlive the object.
  ReportWitness(const ImportCommand& options, const Surroundings& surroundings);
  ~ReportWitness() override;
  ReportWitness(const ReportWitness&) = delete;
  ReportWitness& operator=(const ReportWitness&) = delete;

  void Begin() override;
  std::optional<std::string> LedgerPlace() override;
  std::optional<std::string> RecordingPlace() override;
  std::shared_ptr<RequestProcessorFactory> Watching(std::shared_ptr<RequestProcessorFactory> inner) override;
  std::shared_ptr<EventSink> Events() override;
  void Keep(const std::shared_ptr<plan_file::PlanFile>& plan, const plan_file::ImportFacts& facts) override;

  /// Returns the file of the page; null if the import ended before `Begin`.
  ReportFile* File() noexcept { return file_ ? &*file_ : nullptr; }
  /// Returns the plan with its new cells; null if the import did not get so far.
  const std::shared_ptr<plan_file::PlanFile>& Plan() const noexcept { return plan_; }
  const plan_file::ImportFacts& Facts() const noexcept { return facts_; }
  ImportTimes Times() const;

 private:
  class Clockwork;

  const ImportCommand& options_;
  std::shared_ptr<Clockwork> clockwork_;
  std::optional<ReportFile> file_;
  std::optional<ScratchFolder> scratch_;
  std::shared_ptr<plan_file::PlanFile> plan_;
  plan_file::ImportFacts facts_;
};

}  // namespace krnqb::cli
