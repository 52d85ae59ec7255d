#include "cli/import/skipped_amounts.h"

#include <fmt/format.h>

#include "cli/console/wrapped_names.h"

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

std::string SumText(const ImportReport::Total& total) {
  return total.sum ? fmt::format("{:.2f}", *total.sum) : std::string("out of range");
}

}  // namespace

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

std::string SkippedReport(const ImportReport& report) {
  std::string text;
  if (report.LeftOut().count != 0) {
    text += "Left out, because the import's rules cannot place them (--journal FILE lists each):\n";
    for (const auto& [reason, total] : report.LeftOutByReason()) {
      text += fmt::format("  {:>6} {:>14}  {}\n", total.count, SumText(total), ReasonText(reason));
    }
  }
  if (!report.RepeatedAccounts().empty()) {
    text += WrappedNames("Accounts that the reports show in more than one row, all of which were added:",
                         report.RepeatedAccounts());
  }
  if (!report.PastPerformanceEnd().empty()) {
    text += fmt::format(
        "Past performance ended early: the company has no top-level account of type {}. Cells from "
        "there on were not written.\n",
        report.PastPerformanceEnd());
  }
  return text;
}

}  // namespace krnqb::cli
