#include "cli/import/skipped_amounts.h"

#include <fmt/format.h>

#include "cli/console/wrapped_names.h"

namespace krnqb::cli {
namespace {

std::string_view ReasonText(SkipReason reason) {
  switch (reason) {
    case SkipReason::AmountIsNoNumber:
      return "the line's amount is missing or not a number";
    case SkipReason::NoAccount:
      return "the line names no account";
    case SkipReason::NoItem:
      return "the line names no item";
    case SkipReason::ItemWithoutAccount:
      return "the item has no account";
    case SkipReason::AccountInNoList:
      return "the account is of a type that is not imported";
    case SkipReason::NoSubtotal:
      return "the account is not part of this import";
    case SkipReason::DuplicateBillableKey:
      return "another expense with the same customer and amount is already kept for billing";
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
    text += "Left out because the import's rules cannot place them (--journal FILE lists each amount):\n";
    for (const auto& [reason, total] : report.LeftOutByReason()) {
      text += fmt::format("  {:>6} {:>14}  {}\n", total.count, SumText(total), ReasonText(reason));
    }
  }
  if (!report.RepeatedAccounts().empty()) {
    text += WrappedNames("Accounts shown in several rows of a report; all rows were added:",
                         report.RepeatedAccounts());
  }
  if (!report.PastPerformanceEnd().empty()) {
    text += fmt::format(
        "Past performance ended early: the company has no top-level account of type {}. The remaining "
        "cells were not written.\n",
        report.PastPerformanceEnd());
  }
  return text;
}

}  // namespace krnqb::cli
