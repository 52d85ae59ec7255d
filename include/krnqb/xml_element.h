#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace krnqb {

struct XmlTree;      // a parsed document; shared by the handles of its elements
struct XmlTreeNode;  // an element inside it

/// An XML element that somebody else owns, such as a host's own document object.
class OutsideXmlElement {
 public:
  virtual ~OutsideXmlElement() = default;

  /// The element's XML text as it is now, in UTF-8 without a declaration. May throw Error.
  virtual std::string Xml() const = 0;
};

/// A handle to an XML element: none, an element of one of our own documents, or an outside element. Copies
/// share the element; a document lives as long as a handle to one of its elements. Texts are UTF-8.
///
/// A handle that is none is safe to ask for what is optional (`Child`, `Parent`, `Attribute`, `Children`,
/// ...): the answer is none or empty. What is required (`Name`, `Text`, `Xml`, `Select`, every change) fails
/// with error
/// 91. An outside element answers `Xml`, `Outside` and `Own` alone; everything else treats it as none: ask
/// `Own` first, which reads it anew.
class XmlElement {
 public:
  XmlElement() noexcept = default;
  explicit XmlElement(std::shared_ptr<OutsideXmlElement> outsideElement) noexcept
      : outside_(std::move(outsideElement)) {}

  /// The document element of a text; none when the text is not well-formed or declares entities. Line ends
  /// become LF, an encoding declaration is not obeyed. Nothing is loaded from elsewhere.
  static XmlElement Parse(std::string_view text);

  explicit operator bool() const noexcept { return node_ != nullptr || outside_ != nullptr; }
  /// Whether both handles stand for the very same element (two nones are the same).
  bool operator==(const XmlElement& other) const noexcept {
    return node_ == other.node_ && outside_ == other.outside_;
  }

  const std::shared_ptr<OutsideXmlElement>& Outside() const noexcept { return outside_; }
  /// The element in one of our own documents: itself, or an outside element's text parsed as it is now (none
  /// when it does not parse).
  XmlElement Own() const;

  // Reading.

  std::string Name() const;
  /// The whole text content, descendants included, untrimmed.
  std::string Text() const;
  std::optional<std::string> Attribute(std::string_view name) const;
  /// Returns the element's XML text, without an XML declaration; white space, comments, CDATA sections and
  /// the order of attributes as they were read. The text is a document of its own: it declares the namespaces
  /// that the element uses, inherited ones included.
  std::string Xml() const;
  /// The line of its document on which the element begins, counted from 1; 0 for none.
  long Line() const noexcept;

  // Going about. Only elements count: white space, comments and instructions between them do not.

  XmlElement Parent() const noexcept;
  XmlElement FirstChild() const noexcept;
  XmlElement LastChild() const noexcept;
  XmlElement NextSibling() const noexcept;
  XmlElement PreviousSibling() const noexcept;
  std::vector<XmlElement> Children() const;
  /// The first child of that name, or none.
  XmlElement Child(std::string_view name) const noexcept;
  /// The document element of the tree that the element stands in.
  XmlElement Root() const noexcept;
  /// The next element in document order, of the whole document, or none.
  XmlElement NextInDocument() const noexcept;
  /// The text of the element's first text node or CDATA section (XPath's string(text())); empty when there is
  /// none.
  std::string FirstTextNode() const;

  /// The first element that an XPath 1.0 expression selects from here, in document order, or none. Error
  /// -2147467259 when the expression is malformed.
  XmlElement Select(const std::string& path) const;
  std::vector<XmlElement> SelectAll(const std::string& path) const;

  // Changing.

  /// Replaces the whole content by one text.
  void SetText(std::string_view text);
  void SetAttribute(std::string_view name, std::string_view value);
  /// A deep copy that is the document element of a document of its own.
  XmlElement Clone() const;
  /// Inserts a deep copy of `source` among the children, before the child `before` (none: after the last
  /// node), and gives the copy.
  XmlElement InsertCopy(const XmlElement& source, const XmlElement& before);
  XmlElement InsertCopy(const XmlElement& source) { return InsertCopy(source, XmlElement()); }
  /// Takes the element out of its document. Handles to it stay usable.
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
