#include "xml/events.h"

#include <libxml/parser.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <stdexcept>

#include "xml/strict_parser.h"

namespace krnqb {
namespace {

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

struct Forwarding {
  XmlEventHandler& handler;
  xmlSAXHandler& handlers;
  KnownNames names;
  const bool skipsUnlisted = false;
  bool receivesText = true;
  int withheld = 0;  // how many of the innermost open elements the handler has not received

  // The library does not collect text that nobody receives.
  void FollowWantsText() noexcept {
    if (receivesText == handler.WantsText()) return;
    receivesText = handler.WantsText();
    handlers.characters = receivesText ? ForwardText : nullptr;
    handlers.ignorableWhitespace = handlers.characters;
    handlers.cdataBlock = handlers.characters;
  }

  void Start(const char* name, const XmlEventAttributes& attributes) {
    const int number = name == nullptr ? XmlEventName::notListed : names.NumberOf(name);
    if (!skipsUnlisted) return handler.StartElement({number, name == nullptr ? "" : name}, attributes);
    if (number == XmlEventName::notListed && attributes.IsEmpty()) {
      ++withheld;
      return;
    }
    for (; withheld > 0; --withheld) handler.StartElement({XmlEventName::notListed, ""}, {nullptr, 0});
    handler.StartElement({number, number == XmlEventName::notListed ? "" : name}, attributes);
  }

  void End() {
    if (withheld > 0) {
      --withheld;
    } else {
      handler.EndElement();
    }
  }

  template <typename Call>
  static void To(void* context, Call&& call) noexcept {
    auto& parser = *static_cast<StrictParser*>(static_cast<xmlParserCtxt*>(context)->_private);
    parser.ForSubject<Forwarding>(context, [&](Forwarding& forwarding) {
      call(forwarding);
      forwarding.FollowWantsText();
    });
  }
};

void ForwardStart(void* context, const xmlChar* name, const xmlChar* /*prefix*/, const xmlChar* uri,
                  int namespaceCount, const xmlChar** /*namespaces*/, int attributeCount, int /*defaulted*/,
                  const xmlChar** attributes) {
  if (!StrictParser::Admits(context, attributeCount, namespaceCount)) return;
  Forwarding::To(context, [&](Forwarding& forwarding) {
    forwarding.Start(uri == nullptr ? reinterpret_cast<const char*>(name) : nullptr,
                     {attributes, attributeCount});
  });
}

void ForwardEnd(void* context, const xmlChar* /*name*/, const xmlChar* /*prefix*/, const xmlChar* /*uri*/) {
  Forwarding::To(context, [](Forwarding& forwarding) { forwarding.End(); });
}

void ForwardText(void* context, const xmlChar* text, int length) {
  Forwarding::To(context, [&](Forwarding& forwarding) {
    forwarding.handler.Text({reinterpret_cast<const char*>(text), static_cast<std::size_t>(length)});
  });
}

}  // namespace

std::optional<std::string> XmlEventAttributes::Find(std::string_view name) const {
  for (int index = 0; index < count_; ++index) {
    // Name, prefix, namespace, begin and end of the value.
    const xmlChar** const attribute = pointers_ + std::ptrdiff_t{index} * 5;
    if (attribute[1] != nullptr || reinterpret_cast<const char*>(attribute[0]) != name) continue;
    std::string value;
    DecodeValue(value, attribute[3], attribute[4]);
    return value;
  }
  return std::nullopt;
}

std::optional<XmlFault> ParseXmlEvents(const std::string& text, XmlEventHandler& handler) {
  StrictParser parser;
  xmlSAXHandler& handlers = parser.Handlers();
  const std::span<const std::string_view> vocabulary = handler.Vocabulary();
  Forwarding forwarding{handler, handlers, KnownNames(parser, vocabulary), !vocabulary.empty()};
  parser.Subject(&forwarding);
  handlers.startElementNs = ForwardStart;
  handlers.endElementNs = ForwardEnd;
  handlers.characters = ForwardText;
  handlers.ignorableWhitespace = ForwardText;
  handlers.cdataBlock = ForwardText;
  forwarding.FollowWantsText();
  handlers.comment = IgnoreComment;
  handlers.processingInstruction = nullptr;
  handlers.reference = nullptr;
  xmlFreeDoc(parser.ParseInPlace(text));
  return parser.Fault();
}

}  // namespace krnqb
