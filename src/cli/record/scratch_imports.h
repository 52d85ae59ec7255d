#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "cli/console/interrupt_watch.h"
#include "cli/console/surroundings.h"
#include "cli/import/source.h"
#include "cli/record/shared_session.h"
#include "plan_file/file.h"

namespace krnqb::cli {

/// How a recording is getting on: the share that is done, 0 to 1, and what is being read.
using RecordingProgress = std::function<void(double done, const std::string& phase)>;

/// Runs the imports that a recording is made of, into new plans that are never saved. Together they ask for
/// everything that any import in the span asks for.
class ScratchImports {
 public:
  /// All arguments must outlive the object, which creates plans in `folder`. `progress` may be null.
  ScratchImports(const std::shared_ptr<SharedSession>& session, const ImportSource& source,
                 const RecordedSpan& span, const std::filesystem::path& folder,
                 const InterruptWatch& interrupts, const Surroundings& surroundings,
                 RecordingProgress progress);

  /// Opens the session without a request. Throws Failure if it is refused.
  void OpenSession();

  /// Imports from transactions, and from reports if the company has them. Throws Failure if an import fails.
  void Run();

  /// Returns how amounts can be imported from the recording, in the order in which they were read.
  const std::vector<AmountsPath>& Paths() const noexcept { return paths_; }

  /// Returns what a user should know about the recording.
  const std::vector<std::string>& Warnings() const noexcept { return warnings_; }

 private:
  struct Import {
    AmountsPath path = AmountsPath::Transactions;
    QBKRNproduct product = QBKRN_ALD;
    YearMonth start;
    bool pastPerformance = false;
  };

  std::vector<Import> ImportsFrom(AmountsPath path) const;
  void RunAll(const std::vector<Import>& imports, double from, double to);
  void RunOne(const Import& import, double from, double to);
  Error Go(const Import& import, double from, double to);
  bool HasReports();

  std::shared_ptr<SharedSession> session_;
  const ImportSource& source_;
  const RecordedSpan& span_;
  const std::filesystem::path& folder_;
  const InterruptWatch& interrupts_;
  const Surroundings& surroundings_;
  RecordingProgress progress_;
  std::optional<std::int16_t> fiscalMonth_;
  std::vector<AmountsPath> paths_;
  std::vector<std::string> warnings_;
};

}  // namespace krnqb::cli
