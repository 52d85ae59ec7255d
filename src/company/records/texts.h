#pragma once

#include <cstddef>
#include <string>

#include "krnqb/xml_element.h"

namespace krnqb::company {

/// A record as it is answered: one element per line without indentation, each line ended by LF, empty
/// elements ending in " />", plain ASCII. A transaction's lines stand together, from `linesBegin` up to
/// `linesEnd` (offsets in `xml`; both 0 when it has none).
struct RecordText {
  std::string xml;
  std::size_t linesBegin = 0;
  std::size_t linesEnd = 0;
};

/// Writes a record in that form. White space between elements, comments and instructions are dropped; the
/// text inside an element without children is kept to the character. Error `company_error::cannotParse` when
/// text stands beside child elements, or another element between the lines.
RecordText WriteRecordText(const XmlElement& record);

}  // namespace krnqb::company
