#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "krnqb/observer.h"
#include "krnqb/warning.h"

namespace krnqb {

/// Collects what an import could not read or write and the amounts that it left out. A host passes one as
/// `OutsideWorld::observer`, runs the import, and then checks `Complete` and `Missing`. A report that is
/// reused collects the notices of all its imports.
class ImportReport : public Observer {
 public:
  /// A number of amounts and their signed sum.
  struct Total {
    std::int64_t count = 0;  ///< how many amounts
    /// Includes an amount that is not a number as 0. Empty if the sum exceeds the range of a double.
    std::optional<double> sum = 0.0;
  };

  /// The amounts that were left out for one reason.
  struct LeftOutGroup {
    SkipKind kind = SkipKind::NotImported;      ///< what it means for the plan
    SkipReason reason = SkipReason::NoAccount;  ///< why they were left out
    Total total;                                ///< their number and sum
    std::vector<std::string> names;             ///< of the accounts and items concerned, each once
  };

  /// Creates an empty report that passes every notice on to `next`, which may be null.
  explicit ImportReport(std::shared_ptr<Observer> next = nullptr) noexcept;

  /// Keeps the notice, then passes it on. If there is no memory to keep it, the import counts as incomplete.
  void Notify(const Notice& notice) noexcept override;

  /// Returns the receiver of `next`.
  BookingReceiver* Bookings() noexcept override { return next_ ? next_->Bookings() : nullptr; }

  /// Returns whether everything that was requested could be read and written. Amounts that the import's rules
  /// leave out do not make it incomplete. A failed import is reported through the error pair of
  /// `QBDataExchange`.
  bool Complete() const noexcept { return missing_.empty() && !noticeLost_; }

  /// Returns what could not be read or written, in the order in which it was first reported: refused
  /// requests, responses with an error status, unreadable responses and tables, tables that the plan refused,
  /// misaligned report rows, and operations that ended early; each with its request and period. An import may
  /// send its requests twice; a repeated notice is included once.
  const std::vector<Notice>& Missing() const noexcept { return missing_; }

  /// Returns the entries of a journal of the import, in the order reported: each amount that was left out,
  /// including those of past periods (`skipped` has the transaction and the reason), each account in several
  /// report rows, and the early end of past performance.
  const std::deque<Notice>& Journal() const noexcept { return journal_; }

  /// Returns the total of the amounts that were left out of the import's own period. Past periods have the
  /// separate total below, since the same transactions may be read again for them.
  const Total& LeftOut() const noexcept { return leftOut_; }
  /// Returns the total of the amounts that were left out of past periods.
  const Total& LeftOutOfPast() const noexcept { return leftOutOfPast_; }
  /// Returns `LeftOut` by reason, without the reasons that did not occur.
  std::map<SkipReason, Total> LeftOutByReason() const;
  /// Returns `LeftOut` by kind and reason, without those that did not occur.
  std::vector<LeftOutGroup> LeftOutGroups() const;
  /// Returns whether any amount was left out although its account's list is included.
  bool AnyLeftOutOfRequested() const noexcept;

  /// Returns the warnings, one per code, in the order in which they were first reported.
  const std::vector<Warning>& Warnings() const noexcept { return warnings_; }

  /// Returns the accounts that a report names in more than one row, each once.
  const std::vector<std::string>& RepeatedAccounts() const noexcept { return repeatedAccounts_; }
  /// Returns the missing account type that first ended past performance early; empty if none did.
  const std::string& PastPerformanceEnd() const noexcept { return pastPerformanceEnd_; }

 private:
  void Keep(const Notice& notice);
  void KeepMissing(const Notice& notice);
  void KeepRepeated(const std::string& account);
  void KeepFinding(const Finding& finding);
  void AddLeftOut(const Place& place, const Skipped& skipped);

  std::shared_ptr<Observer> next_;
  using Positions = std::unordered_multimap<std::size_t, std::size_t>;  // by hash

  std::vector<Notice> missing_;
  Positions missingPositions_;
  std::deque<Notice> journal_;  // long; a vector would need twice the memory to grow
  Total leftOut_;
  Total leftOutOfPast_;
  struct NamedGroup {
    LeftOutGroup group;
    Positions namePositions;
  };
  std::map<std::pair<SkipKind, SkipReason>, NamedGroup> leftOutGroups_;
  std::vector<Warning> warnings_;
  std::map<WarningCode, Positions> findingPositions_;
  std::vector<std::string> repeatedAccounts_;
  Positions repeatedPositions_;
  std::string pastPerformanceEnd_;
  bool noticeLost_ = false;
};

}  // namespace krnqb
