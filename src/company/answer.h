#pragma once

#include <span>
#include <string>
#include <string_view>

#include "company/records/database.h"
#include "company/records/request.h"

namespace krnqb::company {

/// Returns the response document for a message set: one answer per request, in order, built from the stored
/// record texts. It is ASCII with one element per line and LF line ends. `processorVersion` is "1.0", "1.1"
/// or "2.0". The document is built in the memory of `used`.
std::string AnswerRequests(const Database& database, std::string_view processorVersion,
                           std::span<const CompanyRequest> requests, std::string used = {});

}  // namespace krnqb::company
