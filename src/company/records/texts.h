#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "company/records/element_tree.h"
#include "xml/document_stream.h"

namespace krnqb::company {

/// A record in the form of answers: ASCII, one element per line without indentation, LF line ends, empty
/// elements ending in " />". A transaction's lines are contiguous, from `linesBegin` up to `linesEnd`
/// (offsets in `xml`; both 0 if it has none).
struct RecordText {
  std::string xml;
  std::size_t linesBegin = 0;
  std::size_t linesEnd = 0;
};

/// Writes one record after the other in that form. Drops white space between elements, comments and
/// processing instructions; keeps the text of an element without children exactly. The record declares the
/// namespaces that it uses.
class RecordTextWriter {
 public:
  void StartElement(const XmlStartTag& tag);
  void Text(std::string_view piece);
  void EndElement();

  /// Returns whether an element is open.
  bool IsInside() const noexcept { return !open_.empty(); }
  /// Returns the element of the record that has ended; valid until the record is taken.
  RecordElement Root() noexcept { return tree_.Root(text_.xml); }
  /// Returns the record that has ended. Throws Error `company_error::cannotParse` if an element contains both
  /// text and elements, or another element separates the lines; the writer is then unusable.
  RecordText Take();

 private:
  struct OpenElement {
    TextRange name;                  // qualified
    std::size_t declaredBefore = 0;  // how many namespaces the elements around it declare
  };

  std::string_view NameOf(const OpenElement& element) const noexcept;
  void BeginLine(std::size_t tagBegin);
  void DropBlankContent();
  void WriteMembers(const XmlStartTag& tag);
  void DeclareInherited(const XmlName& name);
  void Refuse(std::string reason);

  RecordText text_;
  ElementTree tree_;
  // The first reason to refuse the record. Reported at its end: until then it may turn out not to be
  // well-formed, which is the better reason.
  std::string refusal_;
  std::vector<OpenElement> open_;
  std::vector<std::string> declaredPrefixes_;   // of the namespaces that the open elements declare
  std::vector<std::string> inheritedPrefixes_;  // and of those that elements around the record declare
  std::size_t declarationsEnd_ = 0;             // in the record's own tag
  std::size_t contentBegin_ = 0;                // of the text since the last tag
  bool isLeaf_ = false;                         // whether the last tag is a start tag
};

/// Writes the record in a text, which is UTF-8. Returns the fault if the text is not well-formed. Throws
/// Error as `RecordTextWriter::Take` does.
std::optional<XmlFault> WriteRecordText(std::string_view xml, RecordText& text);

}  // namespace krnqb::company
