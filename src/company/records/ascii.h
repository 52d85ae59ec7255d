#pragma once

#include <string>
#include <string_view>

namespace krnqb::company {

/// Appends plain text in ASCII: non-ASCII characters as decimal references, & < > and quotes as `&amp;`,
/// `&lt;`, `&gt;`, `&quot;` and `&apos;`. Throws Error `company_error::cannotParse` if it is not valid UTF-8.
void AppendAsciiText(std::string& output, std::string_view utf8);

/// Appends the value of an attribute in double quotes: single quotes are kept, and the white space that a
/// reader would otherwise take for blanks becomes references.
void AppendAsciiAttribute(std::string& output, std::string_view utf8);

}  // namespace krnqb::company
