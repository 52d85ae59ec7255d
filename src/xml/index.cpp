#include "xml/index.h"

#include <cstddef>
#include <vector>

#include "xml/tree.h"

namespace krnqb {
namespace {

struct IndexedElement {
  XmlTreeNode* node;
  std::size_t begin;  // of its text, unless the element holds it itself
  std::size_t end;
};

// Collects the elements with a name and their texts in one walk over a tree.
class Collector {
 public:
  Collector(std::string_view name, std::string& texts) : name_(name), texts_(texts) {}

  std::vector<IndexedElement> Collect(XmlTreeNode* top) {
    XmlTreeNode* node = top;
    while (node != nullptr) {
      Enter(node);
      if (node->First() != nullptr) {
        node = node->First();
        continue;
      }
      Leave(node);
      while (node != top && node->Next() == nullptr) Leave(node = node->Parent());
      node = node == top ? nullptr : node->Next();
    }
    return std::move(elements_);
  }

 private:
  void Enter(XmlTreeNode* node) {
    if (node->IsElement() && node->IsNamed(name_)) {
      if (!node->HoldsText()) open_.push_back(elements_.size());
      elements_.push_back({node, texts_.size(), texts_.size()});
    }
    if (!open_.empty() && (node->IsText() || node->IsElement())) texts_ += node->OwnText();
  }

  void Leave(const XmlTreeNode* node) {
    if (open_.empty() || elements_[open_.back()].node != node) return;
    elements_[open_.back()].end = texts_.size();
    open_.pop_back();
  }

  std::string_view name_;
  std::string& texts_;
  std::vector<IndexedElement> elements_;  // in document order
  std::vector<std::size_t> open_;         // indexes of those that contain the current node
};

}  // namespace

XmlTextIndex::XmlTextIndex(const XmlElement& element, std::string_view name) : root_(element.Root()) {
  XmlTreeNode* const top = XmlTree::NodeOf(root_);
  if (top == nullptr) return;
  const std::vector<IndexedElement> found = Collector(name, texts_).Collect(top);
  const std::string_view texts = texts_;
  elements_.reserve(found.size());
  for (const auto& [node, begin, end] : found) {
    elements_.try_emplace(node->HoldsText() ? node->OwnText() : texts.substr(begin, end - begin), node);
  }
}

XmlElement XmlTextIndex::Find(const std::string& text) const {
  const auto found = elements_.find(text);
  return found == elements_.end() ? XmlElement() : XmlTree::Handle(XmlTree::TreeOf(root_), found->second);
}

}  // namespace krnqb
