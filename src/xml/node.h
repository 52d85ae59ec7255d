#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace krnqb {

/// The name of an element or an attribute, of a namespace declaration the declared prefix (`local`). The
/// texts belong to the tree.
struct XmlName {
  std::string_view prefix;
  std::string_view local;
  std::string_view uri;  ///< empty without a namespace
};

enum class XmlNodeKind : std::uint8_t {
  Element,
  Namespace,  ///< a declaration; its text is the namespace
  Attribute,
  DefaultAttribute,  ///< of the document type: read, but not printed
  Text,
  CharacterData,  ///< a CDATA section
  Comment,
  Instruction  ///< its text is everything between "<?" and "?>"
};

/// One part of a document. Attributes are the first children of their element, namespace declarations before
/// the others. An element whose only content is a text holds it itself, since most elements are of this kind:
/// it then has no child nodes. Nodes belong to their tree and are never freed before it.
class XmlTreeNode {
 public:
  static constexpr std::size_t longestText = UINT32_MAX;

  XmlTreeNode(XmlNodeKind kind, const XmlName* name, long line) noexcept
      : name_(name),
        facts_(static_cast<std::uint32_t>(kind) | (kind == XmlNodeKind::Element ? 0U : textFlag) |
               static_cast<std::uint32_t>(line < lastLine ? line : lastLine) << lineShift) {}

  XmlNodeKind Kind() const noexcept { return static_cast<XmlNodeKind>(facts_ & kindMask); }
  bool IsElement() const noexcept { return Kind() == XmlNodeKind::Element; }
  /// Returns whether this is content of the kind that `XmlElement::Text` reads.
  bool IsText() const noexcept { return Kind() == XmlNodeKind::Text || Kind() == XmlNodeKind::CharacterData; }
  /// Returns whether this is an attribute or a namespace declaration, not content.
  bool IsInTag() const noexcept {
    return Kind() == XmlNodeKind::Namespace || Kind() == XmlNodeKind::Attribute ||
           Kind() == XmlNodeKind::DefaultAttribute;
  }
  /// Null for texts, comments and instructions.
  const XmlName* Name() const noexcept { return name_; }
  bool IsNamed(std::string_view name) const noexcept { return name_->local == name && name_->uri.empty(); }
  long Line() const noexcept { return static_cast<long>(facts_ >> lineShift); }

  XmlTreeNode* Parent() const noexcept { return parent_; }
  XmlTreeNode* Next() const noexcept { return next_; }
  XmlTreeNode* Previous() const noexcept {
    return previous_ == nullptr || previous_->next_ == nullptr ? nullptr : previous_;
  }
  // NOLINTBEGIN(cppcoreguidelines-pro-type-union-access): `HoldsText` says which of them it is
  XmlTreeNode* First() const noexcept { return HoldsText() ? nullptr : content_.first; }
  XmlTreeNode* Last() const noexcept { return First() == nullptr ? nullptr : First()->previous_; }

  /// Returns whether the node has a text of its own, as every node that is not an element has.
  bool HoldsText() const noexcept { return (facts_ & textFlag) != 0; }
  std::string_view OwnText() const noexcept {
    return HoldsText() ? std::string_view(content_.text, length_) : std::string_view();
  }
  /// Makes a text, which belongs to the tree, the node's own. An element must have no child nodes.
  void Hold(std::string_view text) noexcept {
    facts_ |= textFlag;
    content_.text = text.data();
    length_ = static_cast<std::uint32_t>(text.size());
  }
  /// Leaves an element without content.
  void HoldNothing() noexcept {
    facts_ &= ~textFlag;
    content_.first = nullptr;
    length_ = 0;
  }
  // NOLINTEND(cppcoreguidelines-pro-type-union-access)

  /// Inserts the node, which has no parent, before a child of `parent`, or after the last one for null. The
  /// parent must not hold a text itself.
  void LinkInto(XmlTreeNode* parent, XmlTreeNode* before) noexcept;
  /// Takes the node, with its descendants, from its parent.
  void Unlink() noexcept;

 private:
  // Of `facts_`, which keep a node small: documents have millions.
  static constexpr std::uint32_t kindMask = 7;
  static constexpr std::uint32_t textFlag = 8;
  static constexpr unsigned lineShift = 4;
  static constexpr long lastLine = (1L << 28U) - 1;

  union Content {
    XmlTreeNode* first = nullptr;
    const char* text;
  };

  XmlTreeNode* parent_ = nullptr;
  XmlTreeNode* next_ = nullptr;
  XmlTreeNode* previous_ = nullptr;  // of the first child the last one
  const XmlName* name_;
  Content content_;
  std::uint32_t length_ = 0;
  std::uint32_t facts_;
};

/// Return the first element among a node and those after it, or before it, or null.
XmlTreeNode* ElementFrom(XmlTreeNode* node) noexcept;
XmlTreeNode* ElementUpTo(XmlTreeNode* node) noexcept;

/// Returns the topmost element above an element, or itself.
XmlTreeNode* TopmostElement(XmlTreeNode* element) noexcept;

/// Returns the node after `node` in document order within the descendants of `top`; null after the last.
XmlTreeNode* NextWithin(const XmlTreeNode* top, const XmlTreeNode* node) noexcept;

}  // namespace krnqb
