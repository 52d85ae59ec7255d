#pragma once

#include <cstddef>
#include <string>

#include "krnqb/xml_element.h"

namespace krnqb::company {

/// A record in the form of answers: ASCII, one element per line without indentation, LF line ends, empty
/// elements ending in " />". A transaction's lines are contiguous, from `linesBegin` up to `linesEnd`
/// (offsets in `xml`; both 0 if it has none).
struct RecordText {
  std::string xml;
  std::size_t linesBegin = 0;
  std::size_t linesEnd = 0;
};

/// Writes a record in that form. Drops white space between elements, comments and processing instructions;
/// keeps the text of an element without children exactly. Throws Error `company_error::cannotParse` if an
/// element contains both text and elements, or another element separates the lines.
RecordText WriteRecordText(const XmlElement& record);

}  // namespace krnqb::company
