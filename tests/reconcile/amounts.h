#pragma once

#include <string>

#include "reconcile/work_table.h"

namespace krnqb::reconcile {

/// Returns an amount of whole units.
inline ExactAmount Units(std::int64_t units) {
  return ExactAmount::FromMillionths(units * 1'000'000);
}

/// Returns the causes of a month as "word amount; word amount".
inline std::string CausesOf(const MonthAmounts& month) {
  std::string text;
  for (const auto& [cause, sum] : month.causes) {
    text += (text.empty() ? "" : "; ") + std::string(CauseWord(cause.first));
    if (!cause.second.empty()) text += " (" + cause.second + ")";
    text += " " + sum.amount.PlainText();
  }
  return text;
}

}  // namespace krnqb::reconcile
