#pragma once

#include <string>

#include "krnqb/xml_element.h"

namespace krnqb {

/// What a document contains outside its document element, in UTF-8: comments, instructions and the document
/// type, each on a line of its own. The XML declaration is not included.
struct XmlSurroundings {
  std::string before;
  std::string after;
};

/// Returns what surrounds the document element in the document of `element`; empty for an empty handle.
XmlSurroundings SurroundingsOf(const XmlElement& element);

}  // namespace krnqb
