#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "xml/parser.h"

namespace krnqb {

/// The attributes of a starting element.
class XmlEventAttributes {
 public:
  virtual ~XmlEventAttributes() = default;
  /// Returns the value of the attribute with this name and no namespace, or nothing if it is missing.
  virtual std::optional<std::string> Find(std::string_view name) const = 0;
};

/// Receives the content of a document while it is parsed. Texts are UTF-8 and valid only during the call.
class XmlEventHandler {
 public:
  virtual ~XmlEventHandler() = default;
  /// `name` is empty if the element is in a namespace, because no path selects such an element.
  virtual void StartElement(std::string_view name, const XmlEventAttributes& attributes) = 0;
  /// Receives text of the innermost open element. One text may arrive in several pieces.
  virtual void Text(std::string_view piece) = 0;
  virtual void EndElement() = 0;
};

/// Parses a text as strictly as `ParseXmlText` and passes its content to the handler without building a tree.
/// Returns the fault if the text is not well-formed; the handler's result is then unusable. An exception from
/// the handler ends the parse and reaches the caller.
std::optional<XmlFault> ParseXmlEvents(std::string_view text, XmlEventHandler& handler);

}  // namespace krnqb
