#include "xml/index.h"

#include <libxml/tree.h>

#include <cstddef>
#include <vector>

#include "xml/tree.h"

namespace krnqb {
namespace {

struct IndexedElement {
  xmlNode* node;
  std::size_t begin;  // of its text
  std::size_t end;
};

bool IsText(const xmlNode* node) {
  return node->type == XML_TEXT_NODE || node->type == XML_CDATA_SECTION_NODE;
}

// Collects the elements with a name and their texts in one walk over a tree.
class Collector {
 public:
  Collector(std::string_view name, std::string& texts) : name_(name), texts_(texts) {}

  std::vector<IndexedElement> Collect(xmlNode* top) {
    xmlNode* node = top;
    while (node != nullptr) {
      Enter(node);
      if (node->type == XML_ELEMENT_NODE && node->children != nullptr) {
        node = node->children;
        continue;
      }
      Leave(node);
      while (node != top && node->next == nullptr) Leave(node = node->parent);
      node = node == top ? nullptr : node->next;
    }
    return std::move(elements_);
  }

 private:
  void Enter(xmlNode* node) {
    if (IsText(node)) {
      if (!open_.empty()) texts_ += reinterpret_cast<const char*>(node->content);
    } else if (node->type == XML_ELEMENT_NODE && node->ns == nullptr &&
               reinterpret_cast<const char*>(node->name) == name_) {
      open_.push_back(elements_.size());
      elements_.push_back({node, texts_.size(), texts_.size()});
    }
  }

  void Leave(const xmlNode* node) {
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

XmlTextIndex::XmlTextIndex(const XmlElement& element, std::string_view name) {
  xmlNode* const top = XmlTree::NodeOf(element.Root());
  if (top == nullptr) return;
  const std::vector<IndexedElement> found = Collector(name, texts_).Collect(top);
  const std::string_view texts = texts_;
  for (const auto& [node, begin, end] : found) {
    elements_.try_emplace(texts.substr(begin, end - begin), XmlTree::Handle(XmlTree::TreeOf(element), node));
  }
}

XmlElement XmlTextIndex::Find(const std::string& text) const {
  const auto found = elements_.find(text);
  return found == elements_.end() ? XmlElement() : found->second;
}

}  // namespace krnqb
