#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "xml/node.h"

namespace krnqb {

/// An XPath expression that needs no evaluation: `//Name`, `descendant::Name`, `descendant-or-self::Name`, or
/// names of children one below the other, as in `./ParentRef/ListID`.
class SimplePath {
 public:
  /// Returns nothing for any other expression. The result refers to the text.
  static std::optional<SimplePath> Of(std::string_view path);

  /// Returns the elements that the path selects from an element, in document order.
  std::vector<XmlTreeNode*> AllFrom(XmlTreeNode* element) const;
  /// Returns the first of them, or null.
  XmlTreeNode* FirstFrom(XmlTreeNode* element) const;

 private:
  enum class Where { InDocument, Below, BelowOrSelf, Children };

  SimplePath(Where where, std::vector<std::string_view> names) : where_(where), names_(std::move(names)) {}

  // Calls `select` for each of the elements until it returns false.
  template <typename Select>
  void Visit(XmlTreeNode* element, Select&& select) const;

  Where where_;
  std::vector<std::string_view> names_;
};

}  // namespace krnqb
