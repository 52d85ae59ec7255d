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
  /// Makes `text` what `Text` returns, in the memory that it has.
  void CopyText(std::string& text) const;

  /// Returns whether both are the same element of the same tree, or empty.
  bool operator==(const RecordElement&) const noexcept = default;

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

/// A part of a record's text.
struct TextRange {
  std::size_t begin = 0;
  std::size_t length = 0;
};

/// The elements of a record's text. Reading one record after the other with the same tree needs no memory for
/// each of them, which makes it several times faster than a parser of documents.
class ElementTree {
 public:
  /// Reads the text of a stored record, or what `XmlElement::Xml` returns, and returns its outermost element;
  /// an empty handle if tags are missing. `xml` must outlive the elements.
  RecordElement Read(std::string_view xml);

  // Whoever writes a text adds its elements meanwhile, in document order.

  /// Removes all elements.
  void Clear() noexcept;
  /// Adds an element to the one that is open and opens it.
  void Open(TextRange name, std::size_t contentBegin, bool isUnqualified);
  /// Closes the element that is open. Its content ends at `contentEnd`.
  void Close(std::size_t contentEnd) noexcept;
  /// Moves everything from `begin` on by `length`, because something is inserted into the text there.
  void MakeRoom(std::size_t begin, std::size_t length) noexcept;
  /// Returns the outermost element of the text whose elements were added; an empty handle if none was added.
  /// `xml` must outlive the elements.
  RecordElement Root(std::string_view xml) noexcept;

 private:
  friend class RecordElement;
  struct Node {
    TextRange name = {};
    TextRange content;           // between the tags, as written
    bool inNamespace = false;    // whether unprefixed names in its content are; known to `Read`
    bool isUnqualified = false;  // whether its own name is in no namespace
    // Positions in `nodes_`; `none` if there is no such element.
    std::size_t parent = std::string_view::npos;
    std::size_t firstChild = std::string_view::npos;
    std::size_t lastChild = std::string_view::npos;
    std::size_t nextSibling = std::string_view::npos;
  };

  std::string_view In(const TextRange& range) const noexcept {
    return xml_.substr(range.begin, range.length);
  }
  std::size_t PlaceOf(std::string_view part) const noexcept {
    return static_cast<std::size_t>(part.data() - xml_.data());
  }
  Node& OpenNode(std::size_t contentBegin, bool isUnqualified);
  void ReadStart(std::string_view tag);
  bool ReadEnd(std::string_view tag);

  std::string_view xml_;
  std::vector<Node> nodes_;
  std::size_t open_ = std::string_view::npos;  // none
};

}  // namespace krnqb::company
