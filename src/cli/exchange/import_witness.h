#pragma once

#include <memory>
#include <optional>
#include <string>

#include "krnqb/outside_world.h"
#include "krnqb/request_processor.h"
#include "plan_file/file.h"
#include "plan_file/history/entry.h"

namespace krnqb::cli {

/// Follows an import in order to describe it afterwards. It has no effect on the import unless it throws.
class ImportWitness {
 public:
  virtual ~ImportWitness() = default;

  /// Called when the import's files are known to be different ones, before anything is read or written.
  virtual void Begin() = 0;
  /// Returns the file in which to keep a ledger, or the recording of the exchange, if the user asked for
  /// neither; nullopt if it is not needed.
  virtual std::optional<std::string> LedgerPlace() = 0;
  virtual std::optional<std::string> RecordingPlace() = 0;
  /// Returns processors that forward every call to those of `inner`.
  virtual std::shared_ptr<RequestProcessorFactory> Watching(
      std::shared_ptr<RequestProcessorFactory> inner) = 0;
  /// Returns who receives the import's events; not null.
  virtual std::shared_ptr<EventSink> Events() = 0;
  /// Called when the plan has its new cells, before it is saved, with what its history says about the import.
  virtual void Keep(const std::shared_ptr<plan_file::PlanFile>& plan,
                    const plan_file::ImportFacts& facts) = 0;
};

}  // namespace krnqb::cli
