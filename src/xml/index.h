#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

#include "krnqb/xml_element.h"

namespace krnqb {

/// Finds the first element in a document that has a given name and text, without searching the document each
/// time. Names match only elements in no namespace. The document must not change while the index is in use.
class XmlTextIndex {
 public:
  /// Indexes the elements called `name` in the whole document of `element`. The index of an empty handle is
  /// empty.
  XmlTextIndex(const XmlElement& element, std::string_view name);

  /// Returns the first element in document order with exactly this text, or an empty handle.
  XmlElement Find(const std::string& text) const;

 private:
  std::unordered_map<std::string, XmlElement> elements_;
};

}  // namespace krnqb
