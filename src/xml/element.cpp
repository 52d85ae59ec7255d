#include "krnqb/xml_element.h"

#include "krnqb/error.h"
#include "xml/parser.h"
#include "xml/printing.h"
#include "xml/simple_path.h"
#include "xml/tree.h"

namespace krnqb {
namespace {

XmlTreeNode* Required(const XmlElement& element) {
  XmlTreeNode* const node = XmlTree::NodeOf(element);
  if (node == nullptr) throw Error(error_number::objectNotSet);
  return node;
}

std::string TextOf(const XmlTreeNode* element) {
  std::string text(element->OwnText());
  for (const XmlTreeNode* node = element->First(); node != nullptr; node = NextWithin(element, node)) {
    if (node->IsText() || node->IsElement()) text += node->OwnText();
  }
  return text;
}

const XmlTreeNode* AttributeOf(const XmlTreeNode* element, std::string_view name) noexcept {
  for (const XmlTreeNode* node = element->First(); node != nullptr && node->IsInTag(); node = node->Next()) {
    if (node->Kind() != XmlNodeKind::Namespace && node->IsNamed(name)) return node;
  }
  return nullptr;
}

bool AncestorDeclaresNamespaces(const XmlTreeNode* node) noexcept {
  for (node = node->Parent(); node != nullptr; node = node->Parent()) {
    const XmlTreeNode* const first = node->First();
    if (first != nullptr && first->Kind() == XmlNodeKind::Namespace) return true;
  }
  return false;
}

}  // namespace

XmlElement XmlElement::Parse(std::string_view text) {
  return ParseXmlText(text).element;
}

XmlElement XmlElement::Own() const {
  if (outside_ == nullptr) return *this;
  XmlElement element = Parse(outside_->DocumentXml());
  for (std::size_t siblings : outside_->PathInDocument()) {
    element = element.FirstChild();
    for (; siblings > 0 && element; --siblings) element = element.NextSibling();
  }
  return element;
}

std::string XmlElement::Name() const {
  const XmlName& name = *Required(*this)->Name();
  std::string text(name.prefix);
  if (!text.empty()) text += ':';
  return text += name.local;
}

bool XmlElement::IsNamed(std::string_view name) const noexcept {
  return node_ != nullptr && node_->IsNamed(name);
}

std::string XmlElement::Text() const {
  return TextOf(Required(*this));
}

std::optional<std::string> XmlElement::Attribute(std::string_view name) const {
  if (node_ == nullptr) return std::nullopt;
  const XmlTreeNode* const attribute = AttributeOf(node_, name);
  if (attribute == nullptr) return std::nullopt;
  return std::string(attribute->OwnText());
}

std::string XmlElement::Xml() const {
  if (outside_ != nullptr) return outside_->Xml();
  const XmlTreeNode* const self = Required(*this);
  // A copy declares the namespaces that it uses and inherits; an element prints only its own declarations.
  return AncestorDeclaresNamespaces(self) ? PrintedXml(XmlTree().CopyOf(self)) : PrintedXml(self);
}

long XmlElement::Line() const noexcept {
  return node_ == nullptr ? 0 : node_->Line();
}

XmlElement XmlElement::Parent() const noexcept {
  return node_ == nullptr ? XmlElement() : XmlTree::Handle(tree_, node_->Parent());
}

XmlElement XmlElement::FirstChild() const noexcept {
  return node_ == nullptr ? XmlElement() : XmlTree::Handle(tree_, ElementFrom(node_->First()));
}

XmlElement XmlElement::LastChild() const noexcept {
  return node_ == nullptr ? XmlElement() : XmlTree::Handle(tree_, ElementUpTo(node_->Last()));
}

XmlElement XmlElement::NextSibling() const noexcept {
  return node_ == nullptr ? XmlElement() : XmlTree::Handle(tree_, ElementFrom(node_->Next()));
}

XmlElement XmlElement::PreviousSibling() const noexcept {
  return node_ == nullptr ? XmlElement() : XmlTree::Handle(tree_, ElementUpTo(node_->Previous()));
}

std::vector<XmlElement> XmlElement::Children() const {
  std::vector<XmlElement> children;
  for (XmlElement child = FirstChild(); child; child = child.NextSibling()) children.push_back(child);
  return children;
}

XmlElement XmlElement::Child(std::string_view name) const noexcept {
  if (node_ == nullptr) return {};
  XmlTreeNode* child = ElementFrom(node_->First());
  while (child != nullptr && !child->IsNamed(name)) child = ElementFrom(child->Next());
  return XmlTree::Handle(tree_, child);
}

XmlElement XmlElement::Root() const noexcept {
  return node_ == nullptr ? XmlElement() : XmlTree::Handle(tree_, TopmostElement(node_));
}

XmlElement XmlElement::NextInDocument() const noexcept {
  if (XmlElement child = FirstChild()) return child;
  for (XmlElement element = *this; element; element = element.Parent()) {
    if (XmlElement sibling = element.NextSibling()) return sibling;
  }
  return {};
}

std::string XmlElement::FirstTextNode() const {
  const XmlTreeNode* const self = Required(*this);
  if (self->HoldsText()) return std::string(self->OwnText());
  const XmlTreeNode* child = self->First();
  while (child != nullptr && !child->IsText()) child = child->Next();
  return child == nullptr ? std::string() : std::string(child->OwnText());
}

XmlElement XmlElement::Select(const std::string& path) const {
  XmlTreeNode* const self = Required(*this);
  if (const auto simple = SimplePath::Of(path)) return XmlTree::Handle(tree_, simple->FirstFrom(self));
  const std::vector<XmlTreeNode*> nodes = tree_->Evaluate(path, self);
  return nodes.empty() ? XmlElement() : XmlTree::Handle(tree_, nodes.front());
}

std::vector<XmlElement> XmlElement::SelectAll(const std::string& path) const {
  XmlTreeNode* const self = Required(*this);
  std::vector<XmlElement> elements;
  for (XmlTreeNode* selected : tree_->Evaluate(path, self)) {
    elements.push_back(XmlTree::Handle(tree_, selected));
  }
  return elements;
}

void XmlElement::SetText(std::string_view text) {
  XmlTreeNode* const self = Required(*this);
  const std::string_view kept = tree_->Kept(text);
  XmlTreeNode* const first = self->First();
  const bool hasTag = first != nullptr && first->IsInTag();
  XmlTreeNode* const node = hasTag && !kept.empty() ? tree_->NewText(XmlNodeKind::Text, kept) : nullptr;
  // From here on nothing fails.
  tree_->Changing();
  while (self->Last() != nullptr && !self->Last()->IsInTag()) self->Last()->Unlink();
  if (node != nullptr) return node->LinkInto(self, nullptr);
  if (!hasTag) self->HoldNothing();
  if (!kept.empty()) self->Hold(kept);
}

void XmlElement::SetAttribute(std::string_view name, std::string_view value) {
  XmlTreeNode* const self = Required(*this);
  const std::string_view kept = tree_->Kept(value);
  tree_->Changing();
  XmlTreeNode* node = self->First();
  while (node != nullptr && node->Kind() == XmlNodeKind::Namespace) node = node->Next();
  for (; node != nullptr && node->Kind() == XmlNodeKind::Attribute; node = node->Next()) {
    if (node->IsNamed(name)) return node->Hold(kept);
  }
  // Before any that the document type declares, which it replaces.
  XmlTreeNode* const attribute = tree_->NewNode(
      XmlNodeKind::Attribute, tree_->NameOf({.prefix = {}, .local = name, .uri = {}}), self->Line());
  attribute->Hold(kept);
  if (self->HoldsText()) {
    tree_->MakeRoom(self);
    node = self->First();
  }
  attribute->LinkInto(self, node);
}

XmlElement XmlElement::Clone() const {
  const XmlTreeNode* const self = Required(*this);
  auto clone = std::make_shared<XmlTree>();
  XmlTreeNode* const copy = clone->CopyOf(self);
  return XmlTree::Handle(std::move(clone), copy);
}

XmlElement XmlElement::InsertCopy(const XmlElement& source, const XmlElement& before) {
  XmlTreeNode* const self = Required(*this);
  XmlTreeNode* const copy = tree_->CopyOf(Required(source));
  tree_->Changing();
  tree_->MakeRoom(self);
  copy->LinkInto(self, XmlTree::NodeOf(before));
  return XmlTree::Handle(tree_, copy);
}

void XmlElement::Remove() {
  XmlTreeNode* const self = Required(*this);
  tree_->Changing();
  self->Unlink();
}

}  // namespace krnqb
