#pragma once

#include <string>
#include <string_view>

namespace krnqb {

/// The lines that every request begins with, for qbXML "2.0" and "1.1"; any other version text gives those of
/// "1.0". Lines are separated by CR LF; none follows the last one.
std::string EnvelopeHead(std::string_view version);

/// The lines that every request ends with.
std::string EnvelopeTail();

}  // namespace krnqb
