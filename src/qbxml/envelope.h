#pragma once

#include <string>
#include <string_view>

namespace krnqb {

/// Returns the lines that begin every request, for qbXML "2.0" or "1.1"; for any other version those of
/// "1.0". Lines are separated by CR LF, with none after the last line.
std::string EnvelopeHead(std::string_view version);

/// Returns the lines that end every request.
std::string EnvelopeTail();

}  // namespace krnqb
