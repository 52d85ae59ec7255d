#include "xml/node.h"

namespace krnqb {

// The tree of a large plan has a million.
static_assert(sizeof(void*) != 8 || sizeof(XmlTreeNode) == 48);

// NOLINTBEGIN(cppcoreguidelines-pro-type-union-access): `HoldsText` says which of them it is

void XmlTreeNode::LinkInto(XmlTreeNode* parent, XmlTreeNode* before) noexcept {
  parent_ = parent;
  next_ = before;
  XmlTreeNode*& first = parent->content_.first;
  if (first == nullptr) {
    previous_ = this;
    first = this;
    return;
  }
  XmlTreeNode* const neighbour = before == nullptr ? first : before;
  previous_ = neighbour->previous_;
  neighbour->previous_ = this;
  if (before == first) {
    first = this;
  } else {
    previous_->next_ = this;
  }
}

void XmlTreeNode::Unlink() noexcept {
  if (parent_ == nullptr) return;
  XmlTreeNode*& first = parent_->content_.first;
  XmlTreeNode* const behind = next_ == nullptr ? first : next_;
  behind->previous_ = previous_;
  if (first == this) {
    first = next_;
  } else {
    previous_->next_ = next_;
  }
  parent_ = next_ = previous_ = nullptr;
}

// NOLINTEND(cppcoreguidelines-pro-type-union-access)

XmlTreeNode* ElementFrom(XmlTreeNode* node) noexcept {
  while (node != nullptr && !node->IsElement()) node = node->Next();
  return node;
}

XmlTreeNode* ElementUpTo(XmlTreeNode* node) noexcept {
  while (node != nullptr && !node->IsElement()) node = node->Previous();
  return node;
}

XmlTreeNode* TopmostElement(XmlTreeNode* element) noexcept {
  while (element->Parent() != nullptr) element = element->Parent();
  return element;
}

XmlTreeNode* NextWithin(const XmlTreeNode* top, const XmlTreeNode* node) noexcept {
  if (node->First() != nullptr) return node->First();
  while (node != top && node->Next() == nullptr) node = node->Parent();
  return node == top ? nullptr : node->Next();
}

}  // namespace krnqb
