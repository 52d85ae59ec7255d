#pragma once

#include <string>
#include <string_view>

namespace krnqb {

/// What a document contains outside its document element, in UTF-8: comments, instructions and the document
/// type, each on a line of its own. The XML declaration is not included.
struct XmlSurroundings {
  std::string before;
  std::string after;
};

/// Returns what surrounds the document element in the bytes of a file, as `ParseXmlBytes` parses them;
/// nothing if they are not well-formed.
XmlSurroundings SurroundingsOf(std::string_view bytes);

}  // namespace krnqb
