#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "krnqb/xml_element.h"

namespace krnqb {

/// Why a text is no document.
struct XmlFault {
  long line = 0;  ///< counted from 1
  std::string message;
};

/// A document element, or the fault that prevented it: exactly one of the two.
struct XmlParseResult {
  XmlElement element;
  std::optional<XmlFault> fault;
};

/// Parses a text strictly: what is not well-formed or declares entities gives no document. The text is UTF-8
/// already; an encoding declaration in it is not obeyed. Nothing is loaded from elsewhere and nothing is
/// printed.
XmlParseResult ParseXmlText(std::string_view text);

/// The same for the bytes of a file, which obey their byte order mark or encoding declaration.
XmlParseResult ParseXmlBytes(std::string_view bytes);

/// A text as it is written between tags or in an attribute: & < > and " become references.
std::string EscapedXmlText(std::string_view text);

}  // namespace krnqb
