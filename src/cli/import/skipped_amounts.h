#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "krnqb/observer.h"

namespace krnqb::cli {

/// What an import left out because its rules cannot place it, and what else a person should know of its
/// reports.
class SkippedAmounts {
 public:
  struct Total {
    std::int64_t count = 0;
    double sum = 0;  ///< of the amounts, with their signs; what is no number counts as 0
  };

  /// Takes in skipped amounts, accounts in several report rows and the early end of past performance.
  void Add(const Notice& notice);

  /// Everything taken in, in the order in which it was told.
  const std::vector<Notice>& All() const noexcept { return notices_; }

  /// Whether an amount of the import was left out.
  bool Any() const noexcept { return importTotal_.count != 0; }
  /// The amounts left out of the import; those left out of past periods are apart, since the same
  /// transactions are read again for them.
  const Total& ImportTotal() const noexcept { return importTotal_; }
  const Total& PastTotal() const noexcept { return pastTotal_; }
  const std::map<SkipReason, Total>& ByReason() const noexcept { return byReason_; }
  /// Accounts that stood in more than one row of a report, each once.
  const std::vector<std::string>& RepeatedAccounts() const noexcept { return repeatedAccounts_; }
  /// The account type at which past performance ended early; empty when it did not.
  const std::string& PastPerformanceEnd() const noexcept { return pastPerformanceEnd_; }

 private:
  std::vector<Notice> notices_;
  Total importTotal_;
  Total pastTotal_;
  std::map<SkipReason, Total> byReason_;
  std::vector<std::string> repeatedAccounts_;
  std::string pastPerformanceEnd_;
};

/// A reason in a few words joined by hyphens, for programs.
std::string_view ReasonWord(SkipReason reason) noexcept;

/// What was left out, for a person: a line per reason with count and sum. Empty when there is nothing to
/// tell.
std::string SkippedReport(const SkippedAmounts& skipped);

}  // namespace krnqb::cli
