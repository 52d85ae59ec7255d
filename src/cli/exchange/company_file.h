#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "cli/console/failure.h"
#include "cli/console/interrupt_watch.h"
#include "company/file.h"

namespace krnqb::cli {

/// Returns the interruption for company files that follows a watch, which must outlive it.
company::Interruption FollowInterrupts(const InterruptWatch& interrupts);

/// Returns the failure of a step that uses a company. `whatToDo` is used unless the error's own description
/// says what to do.
Failure CompanyFailure(std::string_view whatFailed, const Error& error, std::string_view whatToDo);

/// Opens a company file. Throws Failure if it cannot be opened.
company::CompanyFile OpenCompany(const std::string& path, company::FileAccess access,
                                 const InterruptWatch& interrupts);

/// Returns the warning about a company file whose pages have no checksums; nothing if they have.
std::optional<std::string> ChecksumWarning(const std::string& path, bool hasChecksums);

}  // namespace krnqb::cli
