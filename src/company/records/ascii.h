#pragma once

#include <string>
#include <string_view>

namespace krnqb::company {

enum class Quotes { Keep, Escape };

/// Appends markup or escaped text in ASCII: non-ASCII characters as decimal references and, with
/// Quotes::Escape, quotes as `&quot;` and `&apos;`. "&" and "<" are kept, because `utf8` is already escaped.
/// Throws Error `company_error::cannotParse` if it is not valid UTF-8.
void AppendAscii(std::string& output, std::string_view utf8, Quotes quotes);

/// Appends plain text in the same form, escaped for element content and attributes.
void AppendAsciiText(std::string& output, std::string_view utf8);

}  // namespace krnqb::company
