#include "xml/events.h"

#include <libxml/parser.h>

#include <exception>

#include "xml/strict_parser.h"

namespace krnqb {
namespace {

// The library gives five pointers an attribute: name, prefix, namespace, and the value's begin and end.
class LibraryAttributes final : public XmlEventAttributes {
 public:
  LibraryAttributes(const xmlChar** pointers, int count) : pointers_(pointers), count_(count) {}

  std::optional<std::string> Find(std::string_view name) const override {
    for (int index = 0; index < count_; ++index) {
      const xmlChar** const attribute = pointers_ + index * 5;
      if (attribute[1] != nullptr || reinterpret_cast<const char*>(attribute[0]) != name) continue;
      return Decoded(
          {reinterpret_cast<const char*>(attribute[3]), reinterpret_cast<const char*>(attribute[4])});
    }
    return std::nullopt;
  }

 private:
  // Where entities stand unexpanded, the library keeps an ampersand as a reference.
  static std::string Decoded(std::string value) {
    constexpr std::string_view reference = "&#38;";
    for (auto at = value.find(reference); at != std::string::npos; at = value.find(reference, at + 1)) {
      value.replace(at, reference.size(), "&");
    }
    return value;
  }

  const xmlChar** pointers_;
  int count_;
};

// No exception may pass through the library: the first one is kept, ends the parse, and goes on from there.
struct Telling {
  XmlEventHandler& handler;
  std::exception_ptr failure;

  template <typename Call>
  static void To(void* context, Call&& call) noexcept {
    auto& telling = *static_cast<Telling*>(StrictParser::SubjectOf(context));
    if (telling.failure != nullptr) return;
    try {
      call(telling.handler);
    } catch (...) {
      telling.failure = std::current_exception();
      StrictParser::Stop(context);
    }
  }
};

void TellStart(void* context, const xmlChar* name, const xmlChar* /*prefix*/, const xmlChar* uri,
               int /*namespaceCount*/, const xmlChar** /*namespaces*/, int attributeCount, int /*defaulted*/,
               const xmlChar** attributes) {
  Telling::To(context, [&](XmlEventHandler& handler) {
    handler.StartElement(uri == nullptr ? reinterpret_cast<const char*>(name) : "",
                         LibraryAttributes(attributes, attributeCount));
  });
}

void TellEnd(void* context, const xmlChar* /*name*/, const xmlChar* /*prefix*/, const xmlChar* /*uri*/) {
  Telling::To(context, [](XmlEventHandler& handler) { handler.EndElement(); });
}

void TellText(void* context, const xmlChar* text, int length) {
  Telling::To(context, [&](XmlEventHandler& handler) {
    handler.Text({reinterpret_cast<const char*>(text), static_cast<std::size_t>(length)});
  });
}

}  // namespace

std::optional<XmlFault> ParseXmlEvents(std::string_view text, XmlEventHandler& handler) {
  StrictParser parser;
  Telling telling{handler, nullptr};
  parser.Subject(&telling);
  xmlSAXHandler& handlers = parser.Handlers();
  handlers.startElementNs = TellStart;
  handlers.endElementNs = TellEnd;
  handlers.characters = TellText;
  handlers.ignorableWhitespace = TellText;
  handlers.cdataBlock = TellText;
  handlers.comment = nullptr;
  handlers.processingInstruction = nullptr;
  handlers.reference = nullptr;
  xmlDoc* const withoutElements = parser.Parse(text, XmlEncoding::Utf8);
  if (telling.failure != nullptr) {
    xmlFreeDoc(withoutElements);
    std::rethrow_exception(telling.failure);
  }
  xmlFreeDoc(withoutElements);
  return parser.Fault();
}

}  // namespace krnqb
