#include "xml/simple_path.h"

#include <algorithm>
#include <array>
#include <utility>

namespace krnqb {
namespace {

constexpr bool IsLetter(char character) noexcept {
  return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z');
}

bool IsPlainName(std::string_view text) noexcept {
  return !text.empty() && std::ranges::all_of(text, IsLetter);
}

XmlTreeNode* NamedFrom(XmlTreeNode* node, std::string_view name) noexcept {
  while (node != nullptr && !(node->IsElement() && node->IsNamed(name))) node = node->Next();
  return node;
}

}  // namespace

std::optional<SimplePath> SimplePath::Of(std::string_view path) {
  constexpr std::array<std::pair<std::string_view, Where>, 3> beginnings = {
      {{"//", Where::InDocument},
       {"descendant::", Where::Below},
       {"descendant-or-self::", Where::BelowOrSelf}}};
  for (const auto& [text, where] : beginnings) {
    if (!path.starts_with(text)) continue;
    const std::string_view name = path.substr(text.size());
    return IsPlainName(name) ? std::optional(SimplePath(where, {name})) : std::nullopt;
  }
  if (path.starts_with("./")) path.remove_prefix(2);
  std::vector<std::string_view> names;
  for (;;) {
    const std::size_t end = path.find('/');
    names.push_back(path.substr(0, end));
    if (!IsPlainName(names.back())) return std::nullopt;
    if (end == std::string_view::npos) return SimplePath(Where::Children, std::move(names));
    path.remove_prefix(end + 1);
  }
}

template <typename Select>
void SimplePath::Visit(XmlTreeNode* element, Select&& select) const {
  if (where_ != Where::Children) {
    XmlTreeNode* const top = where_ == Where::InDocument ? TopmostElement(element) : element;
    XmlTreeNode* node = where_ == Where::Below ? NextWithin(top, top) : top;
    for (; node != nullptr; node = NextWithin(top, node)) {
      if (node->IsElement() && node->IsNamed(names_.front()) && !select(node)) return;
    }
    return;
  }
  // The elements that have been reached, each below the one before.
  std::vector<XmlTreeNode*> reached{NamedFrom(element->First(), names_.front())};
  while (!reached.empty()) {
    XmlTreeNode*& last = reached.back();
    if (last == nullptr) {
      reached.pop_back();
      if (!reached.empty()) reached.back() = NamedFrom(reached.back()->Next(), names_[reached.size() - 1]);
      continue;
    }
    if (reached.size() < names_.size()) {
      reached.push_back(NamedFrom(last->First(), names_[reached.size()]));
      continue;
    }
    if (!select(last)) return;
    last = NamedFrom(last->Next(), names_.back());
  }
}

std::vector<XmlTreeNode*> SimplePath::AllFrom(XmlTreeNode* element) const {
  std::vector<XmlTreeNode*> elements;
  Visit(element, [&](XmlTreeNode* found) {
    elements.push_back(found);
    return true;
  });
  return elements;
}

XmlTreeNode* SimplePath::FirstFrom(XmlTreeNode* element) const {
  XmlTreeNode* first = nullptr;
  Visit(element, [&](XmlTreeNode* found) {
    first = found;
    return false;
  });
  return first;
}

}  // namespace krnqb
