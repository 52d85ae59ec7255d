#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "krnqb/observer.h"

namespace krnqb {

/// Collects what an import could not read and what it left out. A host passes one as
/// `OutsideWorld::observer`, runs the import and asks whether the import is complete and, if not, what is
/// missing.
class ImportReport : public Observer {
 public:
  /// A number of amounts and their sum, with their signs.
  struct Total {
    std::int64_t count = 0;
    /// An amount that is not a number counts as 0. Empty once the sum has left the range of a double.
    std::optional<double> sum = 0.0;
  };

  /// Every notice is also passed on to `next`, which may be null.
  explicit ImportReport(std::shared_ptr<Observer> next = nullptr) noexcept;

  /// A notice for which there is no memory is not kept, but passed on; the import then counts as incomplete.
  void Notify(const Notice& notice) noexcept override;

  /// Whether everything that was asked for could be read and written. Amounts that the import's rules leave
  /// out do not make it incomplete. The failure of the whole import is in the error pair of `QBDataExchange`.
  bool Complete() const noexcept { return missing_.empty() && !noticeLost_; }

  /// What could not be read or written, in the order in which it was first reported: refused requests,
  /// answers with an error status, unreadable answers and tables, misaligned report rows, operations that
  /// ended early; each with its request and period. An import may ask everything twice; each is here once.
  const std::vector<Notice>& Missing() const noexcept { return missing_; }

  /// What a journal of the import lists, in the order reported: each amount that was left out, in past
  /// periods too (`skipped` has the transaction and the reason), each account in several report rows, and the
  /// early end of past performance.
  const std::vector<Notice>& Journal() const noexcept { return journal_; }

  /// The amounts that were left out of the import's own period. The totals of past periods are apart, since
  /// the same transactions may be read again for them.
  const Total& LeftOut() const noexcept { return leftOut_; }
  const Total& LeftOutOfPast() const noexcept { return leftOutOfPast_; }
  /// `LeftOut` by reason; reasons that did not occur are missing.
  const std::map<SkipReason, Total>& LeftOutByReason() const noexcept { return leftOutByReason_; }

  /// The accounts that a report names in more than one row, each once.
  const std::vector<std::string>& RepeatedAccounts() const noexcept { return repeatedAccounts_; }
  /// The missing account type at which past performance first ended early; empty if it did not.
  const std::string& PastPerformanceEnd() const noexcept { return pastPerformanceEnd_; }

 private:
  void Keep(const Notice& notice);
  void KeepMissing(const Notice& notice);
  void AddLeftOut(const Notice& notice);

  std::shared_ptr<Observer> next_;
  std::vector<Notice> missing_;
  std::vector<Notice> journal_;
  Total leftOut_;
  Total leftOutOfPast_;
  std::map<SkipReason, Total> leftOutByReason_;
  std::vector<std::string> repeatedAccounts_;
  std::string pastPerformanceEnd_;
  bool noticeLost_ = false;
};

}  // namespace krnqb
