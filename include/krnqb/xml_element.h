#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace krnqb {

struct XmlTree;     // a parsed document, shared by the handles to its elements
class XmlTreeNode;  // an element of a parsed document

/// An XML element that the host owns, such as an element of a script's DOM. Texts are UTF-8 without an XML
/// declaration and describe the element at the time of the call. Every member may throw Error.
class OutsideXmlElement {
 public:
  virtual ~OutsideXmlElement() = default;

  /// Returns the element's XML text.
  virtual std::string Xml() const = 0;

  /// Returns the XML text of the document that contains the element, or of its topmost ancestor element if it
  /// is detached. By default the element is its own document.
  virtual std::string DocumentXml() const { return Xml(); }

  /// Returns the path to the element within `DocumentXml`: for each step down from the document element, the
  /// index of the next element among the child elements, counted from 0. Empty for the document element.
  virtual std::vector<std::size_t> PathInDocument() const { return {}; }
};

/// A handle to an XML element. It is empty, or refers to an element of a parsed document or to an outside
/// element. Copies refer to the same element; a document lives as long as a handle to any of its elements.
/// Texts are UTF-8. Names in lookups and paths match only elements and attributes in no namespace.
///
/// On an empty handle, reading what is optional (`Child`, `Parent`, `Attribute`, `Children`, ...) returns an
/// empty handle or an empty result; reading what is required (`Name`, `Text`, `Xml`, `Select`, ...) and every
/// change throws Error 91. An outside element supports only `Xml`, `Outside` and `Own` and otherwise behaves
/// like an empty handle: call `Own` first to parse it.
class XmlElement {
 public:
  /// Creates an empty handle.
  XmlElement() noexcept = default;
  /// Creates a handle to an element of the host.
  explicit XmlElement(std::shared_ptr<OutsideXmlElement> outsideElement) noexcept
      : outside_(std::move(outsideElement)) {}

  /// Parses a text and returns its document element, or an empty handle if the text is not well-formed or
  /// declares entities. Line ends become LF; an encoding declaration is ignored. Loads nothing external.
  static XmlElement Parse(std::string_view text);

  /// Returns whether the handle refers to an element.
  explicit operator bool() const noexcept { return node_ != nullptr || outside_ != nullptr; }
  /// Returns whether both handles refer to the same element; empty handles are equal.
  bool operator==(const XmlElement& other) const noexcept {
    return node_ == other.node_ && outside_ == other.outside_;
  }

  /// Returns the host's element if the handle refers to one, otherwise null.
  const std::shared_ptr<OutsideXmlElement>& Outside() const noexcept { return outside_; }
  /// Returns the element itself, or for an outside element its counterpart in a newly parsed copy of its
  /// document; an empty handle if that document cannot be parsed or does not contain the element.
  XmlElement Own() const;

  // Reading.

  /// Returns the qualified name: the local name, preceded by the prefix, if any, and a colon.
  std::string Name() const;
  /// Returns whether the element has this name and is in no namespace; false for an empty handle.
  bool IsNamed(std::string_view name) const noexcept;
  /// Returns the whole text content, including that of descendants, untrimmed.
  std::string Text() const;
  /// Returns the value of the attribute with this name and no namespace, or nothing if it is missing.
  std::optional<std::string> Attribute(std::string_view name) const;
  /// Returns the element's XML text, without an XML declaration, with white space, comments, CDATA sections
  /// and the order of attributes as parsed. The text can be parsed on its own: it declares every namespace
  /// that the element uses, including inherited ones.
  std::string Xml() const;
  /// Returns the line of the document on which the element begins, counted from 1; 0 for an empty handle.
  long Line() const noexcept;

  // Navigating. Text, comments and processing instructions between elements are skipped.

  /// Returns the element that contains this one; empty for the document element.
  XmlElement Parent() const noexcept;
  /// Returns the first child element, or an empty handle.
  XmlElement FirstChild() const noexcept;
  /// Returns the last child element, or an empty handle.
  XmlElement LastChild() const noexcept;
  /// Returns the next element with the same parent, or an empty handle.
  XmlElement NextSibling() const noexcept;
  /// Returns the previous element with the same parent, or an empty handle.
  XmlElement PreviousSibling() const noexcept;
  /// Returns the child elements in document order.
  std::vector<XmlElement> Children() const;
  /// Returns the first child with this name, or an empty handle.
  XmlElement Child(std::string_view name) const noexcept;
  /// Returns the document element, or the topmost ancestor of an element that is detached from its document.
  XmlElement Root() const noexcept;
  /// Returns the next element in document order, or an empty handle after the last one of the document.
  XmlElement NextInDocument() const noexcept;
  /// Returns the text of the element's first text node or CDATA section (XPath's string(text())), or the
  /// empty text if it has none.
  std::string FirstTextNode() const;

  /// Returns the first element in document order that an XPath 1.0 expression selects, or an empty handle.
  /// The expression is evaluated at this element, in the document whose element `Root` returns. Throws Error
  /// -2147467259 if the expression is malformed.
  XmlElement Select(const std::string& path) const;
  /// Returns all elements that the expression selects, in document order; otherwise like `Select`.
  std::vector<XmlElement> SelectAll(const std::string& path) const;

  // Changing.

  /// Replaces the whole content with a text.
  void SetText(std::string_view text);
  /// Adds an attribute or replaces its value.
  void SetAttribute(std::string_view name, std::string_view value);
  /// Returns a deep copy, which is the document element of a new document.
  XmlElement Clone() const;
  /// Inserts a deep copy of `source` before the child `before`, or after the last node if `before` is empty,
  /// and returns the copy.
  XmlElement InsertCopy(const XmlElement& source, const XmlElement& before);
  XmlElement InsertCopy(const XmlElement& source) { return InsertCopy(source, XmlElement()); }
  /// Detaches the element, with its descendants, from its document. Handles to it stay valid.
  void Remove();

 private:
  XmlElement(std::shared_ptr<XmlTree> ownTree, XmlTreeNode* ownNode) noexcept
      : tree_(ownNode == nullptr ? nullptr : std::move(ownTree)), node_(ownNode) {}
  friend struct XmlTree;

  std::shared_ptr<XmlTree> tree_;
  XmlTreeNode* node_ = nullptr;
  std::shared_ptr<OutsideXmlElement> outside_;
};

}  // namespace krnqb
