#pragma once

#include <string>
#include <string_view>

#include "plan_file/history/entry.h"

namespace krnqb::cli {

/// Returns a moment of a plan's history for people: date, hour and minute.
std::string ShortMoment(std::string_view when);

/// Returns how a message calls a kept version: "version 3 (before the import of 2003-01-15
/// 12:00)".
std::string VersionName(const plan_file::HistoryEntry& entry);

}  // namespace krnqb::cli
