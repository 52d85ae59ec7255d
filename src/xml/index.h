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
  ~XmlTextIndex() = default;
  XmlTextIndex(const XmlTextIndex&) = delete;
  XmlTextIndex& operator=(const XmlTextIndex&) = delete;

  /// Returns the first element in document order with exactly this text, or an empty handle.
  XmlElement Find(const std::string& text) const;

 private:
  XmlElement root_;
  std::string texts_;  // of elements with mixed content; that of a nested one is part of its parent's
  std::unordered_map<std::string_view, XmlTreeNode*> elements_;  // by parts of `texts_` and texts of the tree
};

}  // namespace krnqb
