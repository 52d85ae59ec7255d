#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "xml/parser.h"

namespace krnqb {

/// The attributes of the element that begins.
class XmlEventAttributes {
 public:
  virtual ~XmlEventAttributes() = default;
  virtual std::optional<std::string> Find(std::string_view name) const = 0;
};

/// Is told a document piece by piece as it is parsed. Texts are UTF-8 and valid during the call only.
class XmlEventHandler {
 public:
  virtual ~XmlEventHandler() = default;
  /// `name` is empty for an element of a namespace, which no path of ours selects.
  virtual void StartElement(std::string_view name, const XmlEventAttributes& attributes) = 0;
  /// A piece of an element's own text; one text may come in several.
  virtual void Text(std::string_view piece) = 0;
  virtual void EndElement() = 0;
};

/// Parses a text as strictly as `ParseXmlText` without keeping it as a tree, and tells it to the handler.
/// Gives the fault when the text is no document: what the handler was told until then is worth nothing. What
/// the handler throws reaches the caller.
std::optional<XmlFault> ParseXmlEvents(std::string_view text, XmlEventHandler& handler);

}  // namespace krnqb
