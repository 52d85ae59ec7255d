#include "cli/import/skipped_amounts.h"

#include <fmt/format.h>

#include <algorithm>

#include "cli/console/wrapped_names.h"
#include "support/number_text.h"

namespace krnqb::cli {
namespace {

std::string_view ReasonText(SkipReason reason) {
  switch (reason) {
    case SkipReason::AmountIsNoNumber:
      return "the line has no amount that is a number";
    case SkipReason::NoAccount:
      return "the line names no account";
    case SkipReason::NoItem:
      return "the line names no item";
    case SkipReason::ItemWithoutAccount:
      return "the item has no account";
    case SkipReason::AccountInNoList:
      return "the account is no account of the kinds that are imported";
    case SkipReason::NoSubtotal:
      return "the account is not among the accounts of this import";
    case SkipReason::DuplicateBillableKey:
      return "another expense of the same customer and amount is kept for billing already";
    case SkipReason::InsideItemGroup:
      return "lines of item groups on purchases are not imported";
    case SkipReason::SubtotalOutOfRange:
      break;
  }
  return "the sum is too large";
}

void AddTo(SkippedAmounts::Total& total, double amount) {
  ++total.count;
  total.sum += amount;
}

}  // namespace

void SkippedAmounts::Add(const Notice& notice) {
  switch (notice.kind) {
    case NoticeKind::AmountSkipped: {
      if (!notice.skipped) return;
      const double amount = ConvertToDouble(notice.skipped->amount).value_or(0);
      if (notice.place.pastPeriod) {
        AddTo(pastTotal_, amount);
      } else {
        AddTo(importTotal_, amount);
        AddTo(byReason_[notice.skipped->reason], amount);
      }
      break;
    }
    case NoticeKind::AccountInSeveralRows:
      if (std::ranges::find(repeatedAccounts_, notice.description) == repeatedAccounts_.end()) {
        repeatedAccounts_.push_back(notice.description);
      }
      break;
    case NoticeKind::PastPerformanceEnded:
      if (pastPerformanceEnd_.empty()) pastPerformanceEnd_ = notice.description;
      break;
    default:
      return;
  }
  notices_.push_back(notice);
}

std::string_view ReasonWord(SkipReason reason) noexcept {
  switch (reason) {
    case SkipReason::AmountIsNoNumber:
      return "amount-is-no-number";
    case SkipReason::NoAccount:
      return "no-account";
    case SkipReason::NoItem:
      return "no-item";
    case SkipReason::ItemWithoutAccount:
      return "item-without-account";
    case SkipReason::AccountInNoList:
      return "account-in-no-list";
    case SkipReason::NoSubtotal:
      return "no-subtotal";
    case SkipReason::DuplicateBillableKey:
      return "duplicate-billable-key";
    case SkipReason::InsideItemGroup:
      return "inside-item-group";
    case SkipReason::SubtotalOutOfRange:
      break;
  }
  return "subtotal-out-of-range";
}

std::string SkippedReport(const SkippedAmounts& skipped) {
  std::string report;
  if (skipped.Any()) {
    report += "Left out, because the import's rules cannot place them (--journal FILE lists each):\n";
    for (const auto& [reason, total] : skipped.ByReason()) {
      report += fmt::format("  {:>6} {:>14.2f}  {}\n", total.count, total.sum, ReasonText(reason));
    }
  }
  if (!skipped.RepeatedAccounts().empty()) {
    report += WrappedNames("Accounts that the reports show in more than one row, all of which were added:",
                           skipped.RepeatedAccounts());
  }
  if (!skipped.PastPerformanceEnd().empty()) {
    report += fmt::format(
        "Past performance ended early: the company has no top-level account of type {}. Cells from "
        "there on were not written.\n",
        skipped.PastPerformanceEnd());
  }
  return report;
}

}  // namespace krnqb::cli
