#include "company/records/element_tree.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>

#include "company/records/markup.h"

namespace krnqb::company {
namespace {

constexpr std::size_t none = std::string_view::npos;

// Most characters are after the blank ones.
bool IsBlank(char character) {
  return character <= ' ' &&
         (character == ' ' || character == '\t' || character == '\r' || character == '\n');
}

// Returns the length of the name with which a tag begins. This is asked for every tag of every record.
std::size_t NameLength(std::string_view tag) {
  return static_cast<std::size_t>(std::ranges::find_if(tag, IsBlank) - tag.begin());
}

void AppendUtf8(std::string& text, std::uint32_t character) {
  if (character < 0x80) {
    text += static_cast<char>(character);
    return;
  }
  int following = 1;
  if (character >= 0x800) following = 2;
  if (character >= 0x10000) following = 3;
  const std::uint32_t lead = following == 1 ? 0xC0U : following == 2 ? 0xE0U : 0xF0U;
  text += static_cast<char>(lead | character >> static_cast<unsigned>(6 * following));
  while (following-- > 0) {
    text += static_cast<char>(0x80U | (character >> static_cast<unsigned>(6 * following) & 0x3FU));
  }
}

// Appends the character that a reference means. `reference` is without "&" and ";".
void AppendReferred(std::string& text, std::string_view reference) {
  if (reference.starts_with('#')) {
    reference.remove_prefix(1);
    const int base = reference.starts_with('x') ? 16 : 10;
    if (base == 16) reference.remove_prefix(1);
    std::uint32_t character = 0;
    std::from_chars(reference.data(), reference.data() + reference.size(), character, base);
    AppendUtf8(text, character);
  } else if (reference == "amp") {
    text += '&';
  } else if (reference == "lt") {
    text += '<';
  } else if (reference == "gt") {
    text += '>';
  } else if (reference == "quot") {
    text += '"';
  } else if (reference == "apos") {
    text += '\'';
  }
}

void AppendResolved(std::string& text, std::string_view written) {
  for (std::size_t begin = 0; begin < written.size();) {
    const std::size_t reference = written.find('&', begin);
    text += written.substr(begin, reference - begin);
    if (reference == std::string_view::npos) return;
    const std::size_t end = written.find(';', reference);
    if (end == std::string_view::npos) return;
    AppendReferred(text, written.substr(reference + 1, end - reference - 1));
    begin = end + 1;
  }
}

}  // namespace

RecordElement RecordElement::At(std::size_t node) const noexcept {
  return node == none ? RecordElement() : RecordElement(*tree_, node);
}

std::string_view RecordElement::Name() const noexcept {
  return tree_ == nullptr ? std::string_view() : tree_->In(tree_->nodes_[node_].name);
}

std::string RecordElement::Text() const {
  std::string text;
  CopyText(text);
  return text;
}

void RecordElement::CopyText(std::string& text) const {
  text.clear();
  if (tree_ == nullptr) return;
  const std::string_view written = tree_->In(tree_->nodes_[node_].content);
  if (written.find('<') == std::string_view::npos) return AppendResolved(text, written);
  MarkupReader reader(written);
  for (Markup markup = reader.Next(); markup.kind != MarkupKind::End; markup = reader.Next()) {
    if (markup.kind == MarkupKind::Text) AppendResolved(text, markup.text);
    if (markup.kind == MarkupKind::PlainText) text += markup.text;
  }
}

RecordElement RecordElement::Parent() const noexcept {
  return tree_ == nullptr ? RecordElement() : At(tree_->nodes_[node_].parent);
}

RecordElement RecordElement::FirstChild() const noexcept {
  return tree_ == nullptr ? RecordElement() : At(tree_->nodes_[node_].firstChild);
}

RecordElement RecordElement::NextSibling() const noexcept {
  return tree_ == nullptr ? RecordElement() : At(tree_->nodes_[node_].nextSibling);
}

RecordElement RecordElement::Child(std::string_view name) const noexcept {
  if (tree_ == nullptr) return {};
  for (std::size_t child = tree_->nodes_[node_].firstChild; child != none;
       child = tree_->nodes_[child].nextSibling) {
    if (tree_->In(tree_->nodes_[child].name) == name && tree_->nodes_[child].isUnqualified) return At(child);
  }
  return {};
}

RecordElement ElementTree::Read(std::string_view xml) {
  Clear();
  xml_ = xml;
  MarkupReader reader(xml);
  for (Markup markup = reader.NextTag(); markup.kind != MarkupKind::End; markup = reader.NextTag()) {
    if (markup.kind == MarkupKind::StartTag || markup.kind == MarkupKind::EmptyTag) {
      if (open_ == none && !nodes_.empty()) return {};
      ReadStart(markup.text);
    }
    if (markup.kind == MarkupKind::StartTag) {
      // Most elements contain text alone.
      const std::optional<std::string_view> text = reader.TakeContent(In(nodes_[open_].name));
      if (text) Close(PlaceOf(*text) + text->size());
    }
    if (markup.kind == MarkupKind::EmptyTag) Close(nodes_[open_].content.begin);
    if (markup.kind == MarkupKind::EndTag && !ReadEnd(markup.text)) return {};
  }
  return open_ == none ? Root(xml) : RecordElement();
}

void ElementTree::Clear() noexcept {
  nodes_.clear();
  open_ = none;
}

void ElementTree::Open(TextRange name, std::size_t contentBegin, bool isUnqualified) {
  OpenNode(contentBegin, isUnqualified).name = name;
}

ElementTree::Node& ElementTree::OpenNode(std::size_t contentBegin, bool isUnqualified) {
  const std::size_t node = nodes_.size();
  nodes_.push_back({.content = {contentBegin, 0}, .isUnqualified = isUnqualified, .parent = open_});
  if (open_ != none) {
    Node& parent = nodes_[open_];
    (parent.lastChild == none ? parent.firstChild : nodes_[parent.lastChild].nextSibling) = node;
    parent.lastChild = node;
  }
  open_ = node;
  return nodes_.back();
}

void ElementTree::Close(std::size_t contentEnd) noexcept {
  Node& node = nodes_[open_];
  node.content.length = contentEnd - node.content.begin;
  open_ = node.parent;
}

void ElementTree::MakeRoom(std::size_t begin, std::size_t length) noexcept {
  for (Node& node : nodes_) {
    if (node.name.begin >= begin) node.name.begin += length;
    if (node.content.begin >= begin) node.content.begin += length;
  }
}

RecordElement ElementTree::Root(std::string_view xml) noexcept {
  xml_ = xml;
  return nodes_.empty() ? RecordElement() : RecordElement(*this, 0);
}

// An unprefixed name is in the namespace of the nearest "xmlns" above it.
void ElementTree::ReadStart(std::string_view tag) {
  const std::size_t nameLength = NameLength(tag);
  bool inNamespace = open_ != none && nodes_[open_].inNamespace;
  if (nameLength < tag.size() && tag.find("xmlns=") != std::string_view::npos) {
    inNamespace = tag.find("xmlns=\"\"") == std::string_view::npos;
  }
  const bool isUnqualified = !inNamespace && tag.substr(0, nameLength).find(':') == std::string_view::npos;
  Node& node = OpenNode(PlaceOf(tag) + tag.size() + 1, isUnqualified);
  node.name = {PlaceOf(tag), nameLength};
  node.inNamespace = inNamespace;
}

bool ElementTree::ReadEnd(std::string_view tag) {
  constexpr std::size_t beforeName = 2;  // "</"
  if (open_ == none) return false;
  const std::string_view name = In(nodes_[open_].name);
  if (!tag.starts_with(name) || (tag.size() > name.size() && !IsBlank(tag[name.size()]))) return false;
  Close(PlaceOf(tag) - beforeName);
  return true;
}

}  // namespace krnqb::company
