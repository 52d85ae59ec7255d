#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "xml/byte_source.h"
#include "xml/node.h"
#include "xml/parser.h"

namespace krnqb {

/// The declaration of a namespace. The prefix is empty for the default namespace.
struct XmlNamespace {
  std::string_view prefix;
  std::string_view uri;
};

struct XmlAttribute {
  XmlName name;
  std::string value;
};

/// A start tag, valid only during the call that passes it.
struct XmlStartTag {
  XmlName name;
  std::span<const XmlNamespace> namespaces;  ///< those that the tag declares
  std::span<const XmlAttribute> attributes;
  long line = 0;  ///< on which the tag ends, counted from 1
};

/// Returns a name as the document has it: with its prefix, if any, and a colon.
std::string QualifiedName(const XmlName& name);

/// Returns the value of a tag's attribute with this name and no namespace, or nothing if it is missing.
std::optional<std::string_view> FindAttribute(const XmlStartTag& tag, std::string_view name);

/// Receives the elements and texts of a document while it is read. Texts are UTF-8.
class XmlStreamHandler {
 public:
  virtual ~XmlStreamHandler() = default;
  virtual void StartElement(const XmlStartTag& tag) = 0;
  /// Receives text of the innermost open element. One text may arrive in several pieces.
  virtual void Text(std::string_view piece) = 0;
  virtual void EndElement() = 0;
};

/// Parses a document part by part, as strictly as `ParseXmlText`, in the encoding that it declares, and
/// passes its content to the handler. Keeps no more of it than its longest tag, comment or instruction.
/// Returns the fault if the document is not well-formed; the handler has then received what precedes it. An
/// exception from the source or the handler ends the parse and reaches the caller.
std::optional<XmlFault> ParseXmlStream(const ByteSource& source, XmlStreamHandler& handler);

}  // namespace krnqb
