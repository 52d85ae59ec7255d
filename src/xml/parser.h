#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "krnqb/xml_element.h"

namespace krnqb {

/// Why a text could not be parsed.
struct XmlFault {
  long line = 0;  ///< counted from 1; 0 if unknown
  std::string message;
};

/// Either a document element or the fault that prevented it.
struct XmlParseResult {
  XmlElement element;
  std::optional<XmlFault> fault;
};

/// Parses a UTF-8 text. Fails if it is not well-formed or declares entities. An encoding declaration is
/// ignored. Loads nothing external and prints nothing.
XmlParseResult ParseXmlText(std::string_view text);

/// Parses the bytes of a file like `ParseXmlText`, but in the encoding given by their byte order mark or
/// encoding declaration.
XmlParseResult ParseXmlBytes(std::string_view bytes);

/// Escapes a text for element content or a double-quoted attribute: & < > and " become references.
std::string EscapedXmlText(std::string_view text);

}  // namespace krnqb
