#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

#include "krnqb/xml_element.h"

namespace krnqb {

/// Answers "the first element of this name, in document order and wherever it stands, whose text is this" for
/// one document, without searching it each time. The document must not change while the index is used.
class XmlTextIndex {
 public:
  /// Indexes the elements called `name` in the whole document of `element`; no element gives an empty index.
  XmlTextIndex(const XmlElement& element, std::string_view name);

  /// The first element with exactly that text, or none.
  XmlElement Find(const std::string& text) const;

 private:
  std::unordered_map<std::string, XmlElement> elements_;
};

}  // namespace krnqb
