#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "krnqb/import_report.h"
#include "krnqb/qb_data_exchange.h"

namespace krnqb::faults {

/// What a call of the outside world does instead of its work. The first three throw; the others return
/// something else and apply to calls that return a text or an object.
enum class Fault { Refuses, ThrowsAnother, RunsOutOfMemory, ReturnsNothing, ReturnsNonsense, ReportsAnError };

inline constexpr Fault allFaults[] = {Fault::Refuses,        Fault::ThrowsAnother,   Fault::RunsOutOfMemory,
                                      Fault::ReturnsNothing, Fault::ReturnsNonsense, Fault::ReportsAnError};

inline constexpr std::int32_t refusalNumber = -2147220478;
inline constexpr auto refusalDescription = "refused, and the reason is longer than a short text";

/// Counts the calls of the outside world and makes one of them fail.
class OutsideCalls {
 public:
  /// Makes the call with this number fail, counted from 1 and from now; 0 lets all succeed.
  void FailAt(long number, Fault fault) noexcept;
  long Counted() const noexcept { return counted_; }
  bool Struck() const noexcept { return struck_; }

  /// Counts a call that returns nothing that could be wrong; throws if it fails.
  void Call();
  /// Counts a call; throws if it fails, or returns the fault that its result has.
  std::optional<Fault> CallForResult();

 private:
  bool Strikes() noexcept { return ++counted_ == failing_; }

  long failing_ = 0;
  Fault fault_ = Fault::Refuses;
  long counted_ = 0;
  bool struck_ = false;
};

/// The kinds of imports.
enum class ImportKind { Accounts, Transactions, Reports, Selection };

inline constexpr ImportKind allImportKinds[] = {ImportKind::Accounts, ImportKind::Transactions,
                                                ImportKind::Reports, ImportKind::Selection};

using PlanTables = std::map<std::string, std::string>;

/// What a host sees of an import.
struct Ending {
  bool result = false;
  std::int32_t number = 0;
  std::string description;
  bool afterImport = false;
  bool complete = false;
  int openSessions = 0;
  PlanTables tables;
};

/// A host with a component, a plan and QuickBooks, which count their calls. It allocates little of its own.
class ImportWorld {
 public:
  explicit ImportWorld(ImportKind kind);
  ~ImportWorld();
  ImportWorld(const ImportWorld&) = delete;
  ImportWorld& operator=(const ImportWorld&) = delete;

  OutsideCalls& Calls() noexcept;
  QBDataExchange& Component() noexcept;
  /// Sets the tables of the plan and the error pair back to what they were before the first import.
  void Restore();
  /// Runs an import. Nothing is allocated afterwards, so a failing allocation is one of the import's.
  bool Go();
  /// Returns how the last import ended.
  Ending End() const;
  const PlanTables& OldTables() const noexcept;

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

/// Returns what an undisturbed import of this kind does.
const Ending& Undisturbed(ImportKind kind);

/// Returns what is wrong with how a disturbed import ended; empty if nothing is. The plan is complete, or the
/// failure has been reported to the host; the session is closed wherever `Go` returned true.
std::string Unsound(const Ending& ending, ImportKind kind);

/// Returns what is wrong with an import by the same component after a disturbed one; empty if nothing is.
std::string UnsoundRepetition(ImportWorld& world, ImportKind kind);

}  // namespace krnqb::faults
