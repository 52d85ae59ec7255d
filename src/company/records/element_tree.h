#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace krnqb::company {

class ElementTree;

/// An element of a record's text, or an empty handle. Valid until its tree reads another text.
class RecordElement {
 public:
  RecordElement() noexcept = default;

  explicit operator bool() const noexcept { return tree_ != nullptr; }

  /// Returns the name as written; empty for an empty handle.
  std::string_view Name() const noexcept;
  /// Returns the whole text content, including that of descendants, with references resolved; empty for an
  /// empty handle.
  std::string Text() const;

  // Each returns an empty handle if there is no such element, or if called on one.

  RecordElement Parent() const noexcept;
  RecordElement FirstChild() const noexcept;
  RecordElement NextSibling() const noexcept;
  /// Returns the first child with this name and in no namespace.
  RecordElement Child(std::string_view name) const noexcept;

 private:
  friend class ElementTree;
  RecordElement(const ElementTree& tree, std::size_t node) noexcept : tree_(&tree), node_(node) {}
  RecordElement At(std::size_t node) const noexcept;

  const ElementTree* tree_ = nullptr;
  std::size_t node_ = 0;
};

/// The elements of a record's text. Reading one record after the other with the same tree needs no memory for
/// each of them, which makes it several times faster than a parser of documents.
class ElementTree {
 public:
  /// Reads the text of a stored record, or what `XmlElement::Xml` returns, and returns its outermost element;
  /// an empty handle if tags are missing. `xml` must outlive the elements.
  RecordElement Read(std::string_view xml);

 private:
  friend class RecordElement;
  struct Node {
    std::string_view name;
    std::string_view content;    // between the tags, as written
    bool inNamespace = false;    // whether unprefixed names in its content are
    bool isUnqualified = false;  // whether its own name is in no namespace
    // Positions in `nodes_`; `none` if there is no such element.
    std::size_t parent;
    std::size_t firstChild;
    std::size_t lastChild;
    std::size_t nextSibling;
  };

  void Open(std::string_view tag);
  bool Close(std::string_view name, const char* contentEnd);

  std::vector<Node> nodes_;
  std::size_t open_ = 0;
};

}  // namespace krnqb::company
