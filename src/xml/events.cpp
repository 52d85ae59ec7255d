#include "xml/events.h"

#include <libxml/parser.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <stdexcept>

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

// The names of a handler's vocabulary by the pointers that the library has for them. An open hash table: this
// is asked for every element.
class KnownNames {
 public:
  KnownNames(StrictParser& parser, std::span<const std::string_view> vocabulary) {
    if (vocabulary.size() > mostNames) throw std::length_error("a vocabulary has too many names");
    for (std::size_t number = 0; number < vocabulary.size(); ++number) {
      if (vocabulary[number].empty()) continue;
      const char* const name = parser.Interned(vocabulary[number]);
      Place& place = places_.at(PlaceOf(name));
      if (place.name == nullptr) place = {.name = name, .number = static_cast<int>(number)};
    }
  }

  int NumberOf(const char* name) const noexcept {
    const Place& place = places_[PlaceOf(name)];  // NOLINT(cppcoreguidelines-pro-bounds-constant-array-index)
    return place.name == name ? place.number : XmlEventName::notListed;
  }

 private:
  static constexpr std::size_t mostNames = 40;
  static constexpr std::size_t placeCount = 128;

  struct Place {
    const char* name = nullptr;
    int number = XmlEventName::notListed;
  };

  // Returns the place of a name, or that at which it would be added.
  std::size_t PlaceOf(const char* name) const noexcept {
    const auto address = reinterpret_cast<std::uintptr_t>(name);
    std::size_t place = (address ^ (address >> 7U)) % placeCount;
    // NOLINTNEXTLINE(cppcoreguidelines-pro-bounds-constant-array-index)
    while (places_[place].name != nullptr && places_[place].name != name) place = (place + 1) % placeCount;
    return place;
  }

  std::array<Place, placeCount> places_;
};

void ForwardText(void* context, const xmlChar* text, int length);

// Exceptions must not cross the library: the first one stops the parse and is rethrown afterwards.
struct Forwarding {
  XmlEventHandler& handler;
  xmlSAXHandler& handlers;
  KnownNames names;
  std::exception_ptr failure;
  bool receivesText = true;

  // The library does not collect text that nobody receives.
  void FollowWantsText() noexcept {
    if (receivesText == handler.WantsText()) return;
    receivesText = handler.WantsText();
    handlers.characters = receivesText ? ForwardText : nullptr;
    handlers.ignorableWhitespace = handlers.characters;
    handlers.cdataBlock = handlers.characters;
  }

  template <typename Call>
  static void To(void* context, Call&& call) noexcept {
    auto& forwarding = *static_cast<Forwarding*>(StrictParser::SubjectOf(context));
    if (forwarding.failure != nullptr) return;
    try {
      call(forwarding);
    } catch (...) {
      forwarding.failure = std::current_exception();
      StrictParser::Stop(context);
    }
  }
};

void ForwardStart(void* context, const xmlChar* name, const xmlChar* /*prefix*/, const xmlChar* uri,
                  int /*namespaceCount*/, const xmlChar** /*namespaces*/, int attributeCount,
                  int /*defaulted*/, const xmlChar** attributes) {
  Forwarding::To(context, [&](Forwarding& forwarding) {
    const char* const text = reinterpret_cast<const char*>(name);
    const XmlEventName eventName = uri == nullptr ? XmlEventName(forwarding.names.NumberOf(text), text)
                                                  : XmlEventName(XmlEventName::notListed, "");
    forwarding.handler.StartElement(eventName, LibraryAttributes(attributes, attributeCount));
    forwarding.FollowWantsText();
  });
}

void ForwardEnd(void* context, const xmlChar* /*name*/, const xmlChar* /*prefix*/, const xmlChar* /*uri*/) {
  Forwarding::To(context, [](Forwarding& forwarding) {
    forwarding.handler.EndElement();
    forwarding.FollowWantsText();
  });
}

void ForwardText(void* context, const xmlChar* text, int length) {
  Forwarding::To(context, [&](Forwarding& forwarding) {
    forwarding.handler.Text({reinterpret_cast<const char*>(text), static_cast<std::size_t>(length)});
  });
}

}  // namespace

std::optional<XmlFault> ParseXmlEvents(const std::string& text, XmlEventHandler& handler) {
  StrictParser parser;
  xmlSAXHandler& handlers = parser.Handlers();
  Forwarding forwarding{handler, handlers, KnownNames(parser, handler.Vocabulary()), nullptr};
  parser.Subject(&forwarding);
  handlers.startElementNs = ForwardStart;
  handlers.endElementNs = ForwardEnd;
  handlers.characters = ForwardText;
  handlers.ignorableWhitespace = ForwardText;
  handlers.cdataBlock = ForwardText;
  forwarding.FollowWantsText();
  handlers.comment = nullptr;
  handlers.processingInstruction = nullptr;
  handlers.reference = nullptr;
  xmlDoc* const withoutElements = parser.ParseInPlace(text);
  if (forwarding.failure != nullptr) {
    xmlFreeDoc(withoutElements);
    std::rethrow_exception(forwarding.failure);
  }
  xmlFreeDoc(withoutElements);
  return parser.Fault();
}

}  // namespace krnqb
