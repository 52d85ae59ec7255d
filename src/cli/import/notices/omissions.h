#pragma once

#include <string>
#include <string_view>

#include "krnqb/observer.h"

namespace krnqb::cli {

/// Returns the kind of an omission as one word, such as "request".
std::string_view KindWord(NoticeKind kind) noexcept;

/// Returns the notice that the plan refused a document of changed tables, with the reason.
Notice RefusedLoad(std::string_view reason);

/// Returns an omission as text for people, with its request and period, for example
/// "request 10 (bills) for 2002-01-01 to 2002-01-31: status 3260 (Error): No permission".
std::string OmissionText(const Notice& omission);

}  // namespace krnqb::cli
