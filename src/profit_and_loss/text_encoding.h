#pragma once

#include <string>
#include <string_view>

namespace krnqb::profit_and_loss {

/// Returns the text of a document in UTF-8, without a byte order mark: as it is if its bytes are UTF-8,
/// otherwise converted from Windows-1252. Throws Error 13 "DOCUMENT: ..." if the document is empty, a
/// spreadsheet, in UTF-16, or not a text at all.
std::string DocumentText(std::string_view document, std::string_view bytes);

}  // namespace krnqb::profit_and_loss
