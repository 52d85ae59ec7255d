#include "xml/events.h"

#include <libxml/parser.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <stdexcept>
#include <vector>

#include "xml/strict_parser.h"

namespace krnqb {
namespace {

// The names of a handler's vocabulary, and other names without a colon that were met, by the pointers that
// the library has for them. An open hash table: this is asked for every element.
class KnownNames {
 public:
  // What `PlainNumberOf` returns for a name with a colon.
  static constexpr int withColon = -2;

  KnownNames(StrictParser& parser, std::span<const std::string_view> vocabulary) {
    if (vocabulary.size() > mostListed) throw std::length_error("a vocabulary has too many names");
    for (std::size_t number = 0; number < vocabulary.size(); ++number) {
      if (vocabulary[number].empty() || vocabulary[number].find(':') != std::string_view::npos) continue;
      const char* const name = parser.Interned(vocabulary[number]);
      Place& place = PlaceOf(name);
      if (place.name == nullptr) Keep(place, name, static_cast<int>(number));
    }
  }

  int NumberOf(const char* name) noexcept {
    const Place& place = PlaceOf(name);
    return place.name == name ? place.number : XmlEventName::notListed;
  }

  int PlainNumberOf(const char* name) noexcept {
    Place& place = PlaceOf(name);
    if (place.name == name) return place.number;
    if (std::strchr(name, ':') != nullptr) return withColon;
    if (count_ < mostKept) Keep(place, name, XmlEventName::notListed);
    return XmlEventName::notListed;
  }

 private:
  static constexpr std::size_t mostListed = 40;
  static constexpr std::size_t mostKept = 128;
  static constexpr std::size_t placeCount = 256;

  struct Place {
    const char* name = nullptr;
    int number = XmlEventName::notListed;
  };

  // Returns the place of a name, or that at which it would be added.
  Place& PlaceOf(const char* name) noexcept {
    const auto address = reinterpret_cast<std::uintptr_t>(name);
    std::size_t place = (address ^ (address >> 8U)) % placeCount;
    // NOLINTNEXTLINE(cppcoreguidelines-pro-bounds-constant-array-index)
    while (places_[place].name != nullptr && places_[place].name != name) place = (place + 1) % placeCount;
    return places_[place];  // NOLINT(cppcoreguidelines-pro-bounds-constant-array-index)
  }

  void Keep(Place& place, const char* name, int number) noexcept {
    place = {.name = name, .number = number};
    ++count_;
  }

  std::array<Place, placeCount> places_;
  std::size_t count_ = 0;
};

// How much of a document a handler has received.
struct Received {
  std::uint64_t tags = 0;  // starts and ends of elements
  std::size_t text = 0;    // bytes since the last of them
};

void ForwardText(void* context, const xmlChar* text, int length);

struct Forwarding {
  XmlEventHandler& handler;
  xmlSAXHandler& handlers;
  KnownNames names;
  Received& received;
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

  void Start(int number, const char* name, const XmlEventAttributes& attributes) {
    if (!skipsUnlisted) return PassStart({number, name}, attributes);
    if (number == XmlEventName::notListed && attributes.IsEmpty()) {
      ++withheld;
      return;
    }
    for (; withheld > 0; --withheld) PassStart({XmlEventName::notListed, ""}, {nullptr, 0});
    PassStart({number, number == XmlEventName::notListed ? "" : name}, attributes);
  }

  void End() {
    if (withheld > 0) {
      --withheld;
      return;
    }
    received = {.tags = received.tags + 1};
    handler.EndElement();
  }

  void Text(std::string_view piece) {
    received.text += piece.size();
    handler.Text(piece);
  }

  template <typename Call>
  static void To(void* context, Call&& call) noexcept {
    auto& parser = *static_cast<StrictParser*>(static_cast<xmlParserCtxt*>(context)->_private);
    parser.ForSubject<Forwarding>(context, [&](Forwarding& forwarding) {
      call(forwarding);
      forwarding.FollowWantsText();
    });
  }

 private:
  void PassStart(const XmlEventName& name, const XmlEventAttributes& attributes) {
    received = {.tags = received.tags + 1};
    handler.StartElement(name, attributes);
  }
};

void ForwardStart(void* context, const xmlChar* name, const xmlChar* /*prefix*/, const xmlChar* uri,
                  int namespaceCount, const xmlChar** /*namespaces*/, int attributeCount, int /*defaulted*/,
                  const xmlChar** attributes) {
  if (!StrictParser::Admits(context, attributeCount, namespaceCount)) return;
  Forwarding::To(context, [&](Forwarding& forwarding) {
    const auto* const text = reinterpret_cast<const char*>(name);
    const bool plain = uri == nullptr;
    forwarding.Start(plain ? forwarding.names.NumberOf(text) : XmlEventName::notListed, plain ? text : "",
                     {attributes, attributeCount});
  });
}

void ForwardEnd(void* context, const xmlChar* /*name*/, const xmlChar* /*prefix*/, const xmlChar* /*uri*/) {
  Forwarding::To(context, [](Forwarding& forwarding) { forwarding.End(); });
}

void ForwardText(void* context, const xmlChar* text, int length) {
  Forwarding::To(context, [&](Forwarding& forwarding) {
    forwarding.Text({reinterpret_cast<const char*>(text), static_cast<std::size_t>(length)});
  });
}

// Ends the parse of a document that has to be parsed with namespaces.
struct NamespacesNeeded {};

// A document type may declare attributes that elements have without showing them.
void MeetDocumentType(void* context, const xmlChar* /*name*/, const xmlChar* /*external*/,
                      const xmlChar* /*system*/) {
  Forwarding::To(context, [](Forwarding& /*forwarding*/) { throw NamespacesNeeded(); });
}

// The attributes of a tag as the library passes them with namespaces, from names and values in turn.
std::vector<const xmlChar*> WithPlaces(const xmlChar** attributes, int count) {
  std::vector<const xmlChar*> pointers;
  for (int index = 0; index < count; ++index) {
    const xmlChar* const name = attributes[std::ptrdiff_t{2} * index];
    const xmlChar* const value = attributes[std::ptrdiff_t{2} * index + 1];
    pointers.insert(pointers.end(), {name, nullptr, nullptr, value, value + LibraryText(value).size()});
  }
  return pointers;
}

void ForwardPlainStart(void* context, const xmlChar* name, const xmlChar** attributes) {
  int count = 0;
  bool plain = true;
  for (; attributes != nullptr && attributes[std::ptrdiff_t{2} * count] != nullptr; ++count) {
    const std::string_view attribute = LibraryText(attributes[std::ptrdiff_t{2} * count]);
    plain = plain && attribute != "xmlns" && attribute.find(':') == std::string_view::npos;
  }
  if (!StrictParser::Admits(context, count, 0)) return;
  Forwarding::To(context, [&](Forwarding& forwarding) {
    const auto* const text = reinterpret_cast<const char*>(name);
    const int number = forwarding.names.PlainNumberOf(text);
    if (!plain || number == KnownNames::withColon) throw NamespacesNeeded();
    if (count == 0) return forwarding.Start(number, text, {nullptr, 0});
    std::vector<const xmlChar*> pointers = WithPlaces(attributes, count);
    forwarding.Start(number, text, {pointers.data(), count});
  });
}

void ForwardPlainEnd(void* context, const xmlChar* /*name*/) {
  Forwarding::To(context, [](Forwarding& forwarding) { forwarding.End(); });
}

// Passes on what a handler has not received from an earlier parse.
class Resumption final : public XmlEventHandler {
 public:
  Resumption(XmlEventHandler& handler, const Received& received) : handler_(handler), left_(received) {
    FollowHandler();
  }

  std::span<const std::string_view> Vocabulary() const override { return handler_.Vocabulary(); }
  void StartElement(const XmlEventName& name, const XmlEventAttributes& attributes) override {
    if (!HasReceivedTag()) handler_.StartElement(name, attributes);
    FollowHandler();
  }
  void Text(std::string_view piece) override {
    const std::size_t received = std::min(left_.text, piece.size());
    left_.text -= received;
    piece.remove_prefix(received);
    if (!piece.empty()) handler_.Text(piece);
  }
  void EndElement() override {
    if (!HasReceivedTag()) handler_.EndElement();
    FollowHandler();
  }

 private:
  bool HasReceivedTag() noexcept {
    if (left_.tags == 0) return false;
    --left_.tags;
    return true;
  }

  void FollowHandler() noexcept { WantText(left_.tags == 0 && handler_.WantsText()); }

  XmlEventHandler& handler_;
  Received left_;
};

// Every answer of QuickBooks is without namespaces. Where the library does not look for them, it takes a
// twelfth less time.
void InstallPlain(xmlSAXHandler& handlers) {
  handlers.initialized = 1;  // the first version of the library's events
  handlers.startElementNs = nullptr;
  handlers.endElementNs = nullptr;
  handlers.startElement = ForwardPlainStart;
  handlers.endElement = ForwardPlainEnd;
  handlers.internalSubset = MeetDocumentType;
}

void InstallWithNamespaces(xmlSAXHandler& handlers) {
  handlers.startElementNs = ForwardStart;
  handlers.endElementNs = ForwardEnd;
}

struct Outcome {
  std::optional<XmlFault> fault;
  bool hasReport = false;  // of anything, even of what is not a fault
};

Outcome Parse(const std::string& text, XmlEventHandler& handler, Received& received,
              void (*install)(xmlSAXHandler& handlers)) {
  StrictParser parser;
  xmlSAXHandler& handlers = parser.Handlers();
  const std::span<const std::string_view> vocabulary = handler.Vocabulary();
  Forwarding forwarding{handler, handlers, KnownNames(parser, vocabulary), received, !vocabulary.empty()};
  parser.Subject(&forwarding);
  install(handlers);
  handlers.characters = ForwardText;
  handlers.ignorableWhitespace = ForwardText;
  handlers.cdataBlock = ForwardText;
  forwarding.FollowWantsText();
  handlers.comment = IgnoreComment;
  handlers.processingInstruction = nullptr;
  handlers.reference = nullptr;
  xmlFreeDoc(parser.ParseInPlace(text));
  return {.fault = parser.Fault(), .hasReport = parser.HasReport()};
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
  Received received;
  Outcome plain;
  try {
    plain = Parse(text, handler, received, InstallPlain);
    if (!plain.fault && !plain.hasReport) return std::nullopt;
    received.tags = std::numeric_limits<std::uint64_t>::max();  // what remains is to describe the fault
  } catch (const NamespacesNeeded&) {
  }
  Resumption rest(handler, received);
  Received unused;
  const Outcome outcome = Parse(text, rest, unused, InstallWithNamespaces);
  return outcome.fault ? outcome.fault : plain.fault;
}

}  // namespace krnqb
