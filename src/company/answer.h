#pragma once

#include <span>
#include <string>
#include <string_view>

#include "company/records/database.h"
#include "company/records/request.h"

namespace krnqb::company {

/// The answer document to a message set: an answer for each request, in their order, made of the records as
/// they are stored. Plain ASCII, a line for each element, lines ended by LF. `processorVersion` is "1.0",
/// "1.1" or "2.0".
std::string AnswerRequests(const Database& database, std::string_view processorVersion,
                           std::span<const CompanyRequest> requests);

}  // namespace krnqb::company
