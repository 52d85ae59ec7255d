#pragma once

#include <string>
#include <string_view>

namespace krnqb::company {

enum class Quotes { Keep, Escape };

/// Appends markup or escaped text in plain ASCII: every other character as a decimal reference, and quotes,
/// where they are to be escaped, as `&quot;` and `&apos;`. `utf8` is what was escaped already: "&" and "<"
/// are kept. Error `company_error::cannotParse` when it is no UTF-8.
void AppendAscii(std::string& output, std::string_view utf8, Quotes quotes);

/// Appends a plain text in that form, everything escaped, as it stands between tags or in an attribute.
void AppendAsciiText(std::string& output, std::string_view utf8);

}  // namespace krnqb::company
