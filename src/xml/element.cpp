#include "krnqb/xml_element.h"

#include <libxml/tree.h>

#include "krnqb/error.h"
#include "xml/library_memory.h"
#include "xml/parser.h"
#include "xml/tree.h"

namespace krnqb {
namespace {

struct FreeNode {
  void operator()(xmlNode* node) const noexcept { xmlFreeNode(node); }
};
struct FreeBuffer {
  void operator()(xmlBuffer* buffer) const noexcept { xmlBufferFree(buffer); }
};
struct FreeText {
  void operator()(xmlChar* text) const noexcept { xmlFree(text); }
};
using LibraryText = std::unique_ptr<xmlChar, FreeText>;

const xmlChar* LibraryString(const std::string& text) {
  return reinterpret_cast<const xmlChar*>(text.c_str());
}
std::string_view View(const xmlChar* text) {
  return reinterpret_cast<const char*>(text);
}
bool IsElement(const xmlNode* node) {
  return node->type == XML_ELEMENT_NODE;
}
bool HasName(const xmlNode* element, std::string_view name) {
  return element->ns == nullptr && View(element->name) == name;
}
bool IsText(const xmlNode* node) {
  return node->type == XML_TEXT_NODE || node->type == XML_CDATA_SECTION_NODE;
}

xmlNode* Required(const XmlElement& element) {
  xmlNode* const node = XmlTree::NodeOf(element);
  if (node == nullptr) throw Error(error_number::objectNotSet);
  return node;
}

xmlNode* FirstElement(xmlNode* node) {
  while (node != nullptr && !IsElement(node)) node = node->next;
  return node;
}

xmlNode* LastElement(xmlNode* node) {
  while (node != nullptr && !IsElement(node)) node = node->prev;
  return node;
}

// Walks without recursion: what is inserted may make a tree deeper than any document that is parsed.
void AppendText(const xmlNode* top, std::string& text) {
  const xmlNode* node = top->children;
  while (node != nullptr) {
    if (IsText(node)) text += View(node->content);
    if (IsElement(node) && node->children != nullptr) {
      node = node->children;
      continue;
    }
    while (node != top && node->next == nullptr) node = node->parent;
    node = node == top ? nullptr : node->next;
  }
}

// Copies the source for its new document, because a document owns the names of its nodes.
xmlNode* CopyInto(xmlDoc* document, xmlNode* source) {
  const LibraryMemory memory;
  std::unique_ptr<xmlNode, FreeNode> copy(xmlDocCopyNode(source, document, 1));
  memory.Check();  // a copy may lack texts
  if (copy == nullptr) throw std::bad_alloc();
  return copy.release();
}

bool AncestorDeclaresNamespaces(const xmlNode* node) {
  for (node = node->parent; node != nullptr && IsElement(node); node = node->parent) {
    if (node->nsDef != nullptr) return true;
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
  const xmlNode* const self = Required(*this);
  std::string name;
  if (self->ns != nullptr && self->ns->prefix != nullptr) name = std::string(View(self->ns->prefix)) + ":";
  return name += View(self->name);
}

bool XmlElement::IsNamed(std::string_view name) const noexcept {
  return node_ != nullptr && HasName(XmlTree::NodeOf(*this), name);
}

std::string XmlElement::Text() const {
  std::string text;
  AppendText(Required(*this), text);
  return text;
}

std::optional<std::string> XmlElement::Attribute(std::string_view name) const {
  if (node_ == nullptr) return std::nullopt;
  const LibraryMemory memory;
  const LibraryText value(xmlGetNoNsProp(XmlTree::NodeOf(*this), LibraryString(std::string(name))));
  memory.Check();
  if (value == nullptr) return std::nullopt;
  return std::string(View(value.get()));
}

std::string XmlElement::Xml() const {
  if (outside_ != nullptr) return outside_->Xml();
  xmlNode* const self = Required(*this);
  // A copy declares the namespaces that it uses and inherits; an element prints only its own declarations.
  const std::unique_ptr<xmlNode, FreeNode> copy(
      AncestorDeclaresNamespaces(self) ? CopyInto(tree_->document, self) : nullptr);
  const LibraryMemory memory;
  const std::unique_ptr<xmlBuffer, FreeBuffer> buffer(xmlBufferCreate());
  if (buffer == nullptr) throw std::bad_alloc();
  xmlBufferSetAllocationScheme(buffer.get(), XML_BUFFER_ALLOC_DOUBLEIT);
  const int length = xmlNodeDump(buffer.get(), tree_->document, copy ? copy.get() : self, 0, 0);
  memory.Check();
  if (length < 0) throw Error(error_number::unspecified);
  return {View(xmlBufferContent(buffer.get())).data(),
          static_cast<std::size_t>(xmlBufferLength(buffer.get()))};
}

long XmlElement::Line() const noexcept {
  return node_ == nullptr ? 0 : xmlGetLineNo(XmlTree::NodeOf(*this));
}

XmlElement XmlElement::Parent() const noexcept {
  if (node_ == nullptr) return {};
  xmlNode* const parent = XmlTree::NodeOf(*this)->parent;
  return parent == nullptr || !IsElement(parent) ? XmlElement() : XmlTree::Handle(tree_, parent);
}

XmlElement XmlElement::FirstChild() const noexcept {
  return node_ == nullptr ? XmlElement()
                          : XmlTree::Handle(tree_, FirstElement(XmlTree::NodeOf(*this)->children));
}

XmlElement XmlElement::LastChild() const noexcept {
  return node_ == nullptr ? XmlElement() : XmlTree::Handle(tree_, LastElement(XmlTree::NodeOf(*this)->last));
}

XmlElement XmlElement::NextSibling() const noexcept {
  return node_ == nullptr ? XmlElement() : XmlTree::Handle(tree_, FirstElement(XmlTree::NodeOf(*this)->next));
}

XmlElement XmlElement::PreviousSibling() const noexcept {
  return node_ == nullptr ? XmlElement() : XmlTree::Handle(tree_, LastElement(XmlTree::NodeOf(*this)->prev));
}

std::vector<XmlElement> XmlElement::Children() const {
  std::vector<XmlElement> children;
  for (XmlElement child = FirstChild(); child; child = child.NextSibling()) children.push_back(child);
  return children;
}

XmlElement XmlElement::Child(std::string_view name) const noexcept {
  if (node_ == nullptr) return {};
  xmlNode* child = FirstElement(XmlTree::NodeOf(*this)->children);
  while (child != nullptr && !HasName(child, name)) child = FirstElement(child->next);
  return XmlTree::Handle(tree_, child);
}

XmlElement XmlElement::Root() const noexcept {
  if (node_ == nullptr) return {};
  xmlNode* top = XmlTree::NodeOf(*this);
  while (top->parent != nullptr && IsElement(top->parent)) top = top->parent;
  return XmlTree::Handle(tree_, top);
}

XmlElement XmlElement::NextInDocument() const noexcept {
  if (XmlElement child = FirstChild()) return child;
  for (XmlElement element = *this; element; element = element.Parent()) {
    if (XmlElement sibling = element.NextSibling()) return sibling;
  }
  return {};
}

std::string XmlElement::FirstTextNode() const {
  for (const xmlNode* child = Required(*this)->children; child != nullptr; child = child->next) {
    if (IsText(child)) return std::string(View(child->content));
  }
  return {};
}

XmlElement XmlElement::Select(const std::string& path) const {
  xmlNode* const self = Required(*this);
  const std::vector<xmlNode*> nodes = tree_->Evaluate(path, self);
  return nodes.empty() ? XmlElement() : XmlTree::Handle(tree_, nodes.front());
}

std::vector<XmlElement> XmlElement::SelectAll(const std::string& path) const {
  xmlNode* const self = Required(*this);
  std::vector<XmlElement> elements;
  for (xmlNode* selected : tree_->Evaluate(path, self)) elements.push_back(XmlTree::Handle(tree_, selected));
  return elements;
}

void XmlElement::SetText(std::string_view text) {
  xmlNode* const self = Required(*this);
  // Setting the element's content instead would parse "&" as the start of a reference.
  const LibraryMemory memory;
  std::unique_ptr<xmlNode, FreeNode> content(xmlNewDocTextLen(
      tree_->document, reinterpret_cast<const xmlChar*>(text.data()), static_cast<int>(text.size())));
  memory.Check();
  if (content == nullptr) throw std::bad_alloc();
  while (self->children != nullptr) {
    xmlNode* const child = self->children;
    if (IsElement(child)) tree_->removed.push_back(child);
    xmlUnlinkNode(child);
    if (!IsElement(child)) xmlFreeNode(child);
  }
  if (!text.empty()) xmlAddChild(self, content.release());
}

void XmlElement::SetAttribute(std::string_view name, std::string_view value) {
  xmlNode* const self = Required(*this);
  const LibraryMemory memory;
  if (xmlSetProp(self, LibraryString(std::string(name)), LibraryString(std::string(value))) == nullptr) {
    throw std::bad_alloc();
  }
  memory.Check();
}

XmlElement XmlElement::Clone() const {
  xmlNode* const self = Required(*this);
  xmlDoc* const document = xmlNewDoc(reinterpret_cast<const xmlChar*>("1.0"));
  if (document == nullptr) throw std::bad_alloc();
  auto clone = XmlTree::Owning(document);
  xmlNode* const copy = CopyInto(document, self);
  xmlDocSetRootElement(document, copy);
  return XmlTree::Handle(std::move(clone), copy);
}

XmlElement XmlElement::InsertCopy(const XmlElement& source, const XmlElement& before) {
  xmlNode* const self = Required(*this);
  xmlNode* const copy = CopyInto(tree_->document, Required(source));
  if (before) {
    xmlAddPrevSibling(XmlTree::NodeOf(before), copy);
  } else {
    xmlAddChild(self, copy);
  }
  return XmlTree::Handle(tree_, copy);
}

void XmlElement::Remove() {
  xmlNode* const self = Required(*this);
  tree_->removed.push_back(self);
  xmlUnlinkNode(self);
}

}  // namespace krnqb
