#include "xml/events.h"

#include <libxml/parser.h>

#include <cstddef>
#include <exception>

#include "xml/strict_parser.h"

namespace krnqb {
namespace {

// The library passes five pointers per attribute: name, prefix, namespace, begin and end of the value.
class LibraryAttributes final : public XmlEventAttributes {
 public:
  LibraryAttributes(const xmlChar** pointers, int count) : pointers_(pointers), count_(count) {}

  std::optional<std::string> Find(std::string_view name) const override {
    for (int index = 0; index < count_; ++index) {
      const xmlChar** const attribute = pointers_ + std::ptrdiff_t{index} * 5;
      if (attribute[1] != nullptr || reinterpret_cast<const char*>(attribute[0]) != name) continue;
      return Decoded({reinterpret_cast<const char*>(attribute[3]),
                      static_cast<std::size_t>(attribute[4] - attribute[3])});
    }
    return std::nullopt;
  }

 private:
  // With entities unexpanded, the library leaves an ampersand as a character reference.
  static std::string Decoded(std::string_view value) {
    constexpr std::string_view reference = "&#38;";
    std::string decoded;
    decoded.reserve(value.size());
    for (;;) {
      const std::size_t at = value.find(reference);
      decoded += value.substr(0, at);
      if (at == std::string_view::npos) return decoded;
      decoded += '&';
      value.remove_prefix(at + reference.size());
    }
  }

  const xmlChar** pointers_;
  int count_;
};

// Exceptions must not cross the library: the first one stops the parse and is rethrown afterwards.
struct Forwarding {
  XmlEventHandler& handler;
  std::exception_ptr failure;

  template <typename Call>
  static void To(void* context, Call&& call) noexcept {
    auto& forwarding = *static_cast<Forwarding*>(StrictParser::SubjectOf(context));
    if (forwarding.failure != nullptr) return;
    try {
      call(forwarding.handler);
    } catch (...) {
      forwarding.failure = std::current_exception();
      StrictParser::Stop(context);
    }
  }
};

void ForwardStart(void* context, const xmlChar* name, const xmlChar* /*prefix*/, const xmlChar* uri,
                  int /*namespaceCount*/, const xmlChar** /*namespaces*/, int attributeCount,
                  int /*defaulted*/, const xmlChar** attributes) {
  Forwarding::To(context, [&](XmlEventHandler& handler) {
    handler.StartElement(uri == nullptr ? reinterpret_cast<const char*>(name) : "",
                         LibraryAttributes(attributes, attributeCount));
  });
}

void ForwardEnd(void* context, const xmlChar* /*name*/, const xmlChar* /*prefix*/, const xmlChar* /*uri*/) {
  Forwarding::To(context, [](XmlEventHandler& handler) { handler.EndElement(); });
}

void ForwardText(void* context, const xmlChar* text, int length) {
  Forwarding::To(context, [&](XmlEventHandler& handler) {
    handler.Text({reinterpret_cast<const char*>(text), static_cast<std::size_t>(length)});
  });
}

}  // namespace

std::optional<XmlFault> ParseXmlEvents(std::string_view text, XmlEventHandler& handler) {
  StrictParser parser;
  Forwarding forwarding{handler, nullptr};
  parser.Subject(&forwarding);
  xmlSAXHandler& handlers = parser.Handlers();
  handlers.startElementNs = ForwardStart;
  handlers.endElementNs = ForwardEnd;
  handlers.characters = ForwardText;
  handlers.ignorableWhitespace = ForwardText;
  handlers.cdataBlock = ForwardText;
  handlers.comment = nullptr;
  handlers.processingInstruction = nullptr;
  handlers.reference = nullptr;
  xmlDoc* const withoutElements = parser.Parse(text, XmlEncoding::Utf8);
  if (forwarding.failure != nullptr) {
    xmlFreeDoc(withoutElements);
    std::rethrow_exception(forwarding.failure);
  }
  xmlFreeDoc(withoutElements);
  return parser.Fault();
}

}  // namespace krnqb
