#include "xml/tree.h"

#include <algorithm>
#include <new>

#include "xml/path_document.h"
#include "xml/simple_path.h"

namespace krnqb {
namespace {

// Of one allocation.
constexpr std::size_t fewestNodes = 16;
constexpr std::size_t mostNodes = 2048;

bool Declares(const XmlTreeNode* element, std::string_view prefix) noexcept {
  const XmlTreeNode* node = element->First();
  while (node != nullptr && node->Kind() == XmlNodeKind::Namespace && node->Name()->local != prefix) {
    node = node->Next();
  }
  return node != nullptr && node->Kind() == XmlNodeKind::Namespace;
}

// Copies an element node by node, without recursion: what is inserted may make a tree deeper than any
// document that is parsed.
class Copying {
 public:
  Copying(XmlTree& tree, const XmlTreeNode* source) : tree_(tree), source_(source) {}

  XmlTreeNode* Run() {
    top_ = Copy(source_);
    Declare(source_);
    const XmlTreeNode* from = source_;
    XmlTreeNode* parent = top_;  // of the next copy
    for (from = from->First(); from != nullptr;) {
      XmlTreeNode* const copy = Copy(from);
      copy->LinkInto(parent, nullptr);
      Declare(from);
      if (from->First() != nullptr) {
        from = from->First();
        parent = copy;
        continue;
      }
      while (from != source_ && from->Next() == nullptr) {
        from = from->Parent();
        parent = parent->Parent();
      }
      from = from == source_ ? nullptr : from->Next();
    }
    return top_;
  }

 private:
  XmlTreeNode* Copy(const XmlTreeNode* from) {
    const XmlName* const name = from->Name() == nullptr ? nullptr : NameOf(from->Name());
    XmlTreeNode* const copy = tree_.NewNode(from->Kind(), name, from->Line());
    if (from->HoldsText()) copy->Hold(tree_.Kept(from->OwnText()));
    return copy;
  }

  const XmlName* NameOf(const XmlName* name) {
    if (name != lastName_) {
      const XmlName*& copy = names_[name];
      if (copy == nullptr) copy = tree_.NameOf(*name);
      lastName_ = name;
      lastCopy_ = copy;
    }
    return lastCopy_;
  }

  // Adds to the topmost copy what an element or an attribute inherits from outside the source.
  void Declare(const XmlTreeNode* from) {
    if (from->Kind() != XmlNodeKind::Element && from->Kind() != XmlNodeKind::Attribute) return;
    const XmlName& name = *from->Name();
    if (name.uri.empty() || name.prefix == "xml") return;
    if (Declares(top_, name.prefix) || IsDeclaredWithin(name.prefix, from)) return;
    XmlTreeNode* const declaration = tree_.NewNode(
        XmlNodeKind::Namespace, tree_.NameOf({.prefix = {}, .local = name.prefix, .uri = {}}), from->Line());
    declaration->Hold(tree_.Kept(name.uri));
    tree_.MakeRoom(top_);
    XmlTreeNode* before = top_->First();
    while (before != nullptr && before->Kind() == XmlNodeKind::Namespace) before = before->Next();
    declaration->LinkInto(top_, before);
  }

  bool IsDeclaredWithin(std::string_view prefix, const XmlTreeNode* from) const noexcept {
    for (;; from = from->Parent()) {
      if (Declares(from, prefix)) return true;
      if (from == source_) return false;
    }
  }

  XmlTree& tree_;
  const XmlTreeNode* source_;
  XmlTreeNode* top_ = nullptr;
  std::unordered_map<const XmlName*, const XmlName*> names_;
  const XmlName* lastName_ = nullptr;
  const XmlName* lastCopy_ = nullptr;
};

}  // namespace

XmlTree::XmlTree() = default;

XmlTree::~XmlTree() = default;

XmlElement XmlTree::Handle(std::shared_ptr<XmlTree> tree, XmlTreeNode* element) noexcept {
  return {std::move(tree), element};
}

const std::shared_ptr<XmlTree>& XmlTree::TreeOf(const XmlElement& element) noexcept {
  return element.tree_;
}

XmlTreeNode* XmlTree::NodeOf(const XmlElement& element) noexcept {
  return element.node_;
}

const XmlName* XmlTree::NameOf(const XmlName& name) {
  std::string text;
  text.append(name.prefix).append(1, '\0').append(name.local).append(1, '\0').append(name.uri);
  const auto found = namesByText_.find(text);
  if (found != namesByText_.end()) return found->second;
  names_.push_back(
      {.prefix = texts_.Keep(name.prefix), .local = texts_.Keep(name.local), .uri = texts_.Keep(name.uri)});
  return namesByText_.emplace(std::move(text), &names_.back()).first->second;
}

std::string_view XmlTree::Kept(std::string_view text) {
  if (text.size() > XmlTreeNode::longestText) throw std::bad_alloc();
  return texts_.Keep(text);
}

XmlTreeNode* XmlTree::NewNode(XmlNodeKind kind, const XmlName* name, long line) {
  if (nodes_.empty() || nodes_.back().size() == nodes_.back().capacity()) {
    std::vector<XmlTreeNode> more;
    more.reserve(nodes_.empty() ? fewestNodes : std::min(2 * nodes_.back().capacity(), mostNodes));
    nodes_.push_back(std::move(more));
  }
  return &nodes_.back().emplace_back(kind, name, line);
}

XmlTreeNode* XmlTree::NewText(XmlNodeKind kind, std::string_view text) {
  XmlTreeNode* const node = NewNode(kind, nullptr, 0);
  node->Hold(text);
  return node;
}

XmlTreeNode* XmlTree::CopyOf(const XmlTreeNode* source) {
  return Copying(*this, source).Run();
}

void XmlTree::MakeRoom(XmlTreeNode* element) {
  if (!element->HoldsText()) return;
  XmlTreeNode* const text = NewText(XmlNodeKind::Text, element->OwnText());
  element->HoldNothing();
  text->LinkInto(element, nullptr);
}

void XmlTree::Changing() noexcept {
  searched_.reset();
}

std::vector<XmlTreeNode*> XmlTree::Evaluate(const std::string& path, XmlTreeNode* from,
                                            unsigned long* visitsLeft) {
  if (const std::optional<SimplePath> simple = SimplePath::Of(path); simple && visitsLeft == nullptr) {
    return simple->AllFrom(from);
  }
  XmlTreeNode* const top = TopmostElement(from);
  if (searched_ == nullptr || searched_->Top() != top) {
    searched_.reset();
    searched_ = std::make_unique<PathDocument>(top);
  }
  return searched_->Evaluate(path, from, visitsLeft);
}

}  // namespace krnqb
