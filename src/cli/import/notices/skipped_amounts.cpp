#include "cli/import/notices/skipped_amounts.h"

#include <fmt/format.h>

#include <algorithm>

#include "cli/console/text_table.h"
#include "cli/console/wrapped_names.h"
#include "support/money_text.h"

namespace krnqb::cli {
namespace {

constexpr std::size_t namesShown = 5;

// Returns the first names of a group, as ": Rent, Tools and 3 more".
std::string NamesText(const std::vector<std::string>& names) {
  std::string text;
  const std::size_t shown = std::min(names.size(), namesShown);
  for (std::size_t index = 0; index < shown; ++index)
    text += (index == 0 ? ": " : ", ") + OneLine(names[index]);
  if (names.size() > shown) text += fmt::format(" and {} more", names.size() - shown);
  return text;
}

std::string SumText(const ImportReport::Total& total) {
  return total.sum ? MoneyText(*total.sum) : std::string("out of range");
}

// Returns the groups of one kind under a heading, or an empty text without such groups.
std::string GroupsText(const std::vector<ImportReport::LeftOutGroup>& groups, SkipKind kind,
                       std::string_view heading) {
  std::string text;
  for (const ImportReport::LeftOutGroup& group : groups) {
    if (group.kind != kind) continue;
    text += fmt::format("  {:>6} {:>14}  {}{}\n", group.total.count, SumText(group.total),
                        ReasonText(group.reason), NamesText(group.names));
  }
  return text.empty() ? text : fmt::format("{}\n{}", heading, text);
}

std::string NotRequestedText(const std::vector<ImportReport::LeftOutGroup>& groups) {
  std::int64_t count = 0;
  for (const ImportReport::LeftOutGroup& group : groups) {
    if (group.kind == SkipKind::NotRequested) count += group.total.count;
  }
  return count == 0 ? std::string()
                    : fmt::format("Not requested: {} line{} of accounts of other kinds.\n", count,
                                  count == 1 ? "" : "s");
}

}  // namespace

std::string_view ReasonText(SkipReason reason) noexcept {
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

std::string_view MeaningWord(SkipKind kind) noexcept {
  switch (kind) {
    case SkipKind::NotRequested:
      return "not-requested";
    case SkipKind::NotImported:
      return "not-imported";
    case SkipKind::Lost:
      break;
  }
  return "lost";
}

std::string SkippedReport(const ImportReport& report) {
  const std::vector<ImportReport::LeftOutGroup> groups = report.LeftOutGroups();
  std::string text = GroupsText(groups, SkipKind::Lost, "Lost amounts (--journal FILE lists each of them):");
  text += GroupsText(groups, SkipKind::NotImported,
                     "Amounts that an import does not bring into a plan (--journal FILE lists them):");
  text += NotRequestedText(groups);
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
