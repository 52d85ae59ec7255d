#pragma once

#include <string>
#include <string_view>

#include "plan_file/history/entry.h"

namespace krnqb::plan_file {

/// Returns the entry as one JSON object in printable ASCII, indented, with a line end.
std::string EntryText(const HistoryEntry& entry);

/// Parses such a text, the description of version `number`. Throws Error if it is not one; the description is
/// what is wrong with it, such as "it is not JSON".
HistoryEntry EntryFromText(std::string_view text, std::int32_t number);

}  // namespace krnqb::plan_file
