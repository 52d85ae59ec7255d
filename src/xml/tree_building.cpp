#include "xml/tree_building.h"

#include <libxml/parser.h>

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace krnqb {
namespace {

// The library's names, which it passes by its only copies of their parts, and those of the tree. Nearly every
// name is found at its place, without a look at its text.
class NamesSeen {
 public:
  explicit NamesSeen(XmlTree& tree) : tree_(tree) {}

  const XmlName* Of(const xmlChar* local, const xmlChar* prefix, const xmlChar* uri) {
    const auto address = reinterpret_cast<std::uintptr_t>(local);
    Place& place = places_[(address ^ (address >> 7U)) % placeCount];  // NOLINT: the remainder is in bounds
    if (place.local != local || place.prefix != prefix || place.uri != uri) {
      place = {.local = local,
               .prefix = prefix,
               .uri = uri,
               .name = tree_.NameOf(
                   {.prefix = LibraryText(prefix), .local = LibraryText(local), .uri = LibraryText(uri)})};
    }
    return place.name;
  }

 private:
  static constexpr std::size_t placeCount = 256;

  struct Place {
    const xmlChar* local = nullptr;
    const xmlChar* prefix = nullptr;
    const xmlChar* uri = nullptr;
    const XmlName* name = nullptr;
  };

  XmlTree& tree_;
  std::array<Place, placeCount> places_{};
};

// Makes nodes of what the parser reads.
class Builder {
 public:
  explicit Builder(XmlTree& tree) : tree_(tree), names_(tree) {}

  XmlTreeNode* Root() const noexcept { return root_; }
  bool InElement() const noexcept { return open_ != nullptr; }

  void Start(const XmlName* name, long line) {
    AddPending();
    XmlTreeNode* const element = tree_.NewNode(XmlNodeKind::Element, name, line);
    if (open_ == nullptr) {
      root_ = element;
    } else {
      element->LinkInto(open_, nullptr);
    }
    open_ = element;
  }

  void InTag(XmlNodeKind kind, const XmlName* name, std::string_view text) {
    XmlTreeNode* const node = tree_.NewNode(kind, name, open_->Line());
    node->Hold(tree_.Kept(text));
    node->LinkInto(open_, nullptr);
  }

  void End() {
    if (pending_ == Pending::Text && open_->First() == nullptr) {
      open_->Hold(tree_.Kept(text_));
      Forget();
    } else {
      AddPending();
    }
    open_ = open_->Parent();
  }

  // Adjoining pieces become one text, adjoining CDATA sections one section.
  void Add(XmlNodeKind kind, std::string_view piece) {
    const Pending added = kind == XmlNodeKind::Text ? Pending::Text : Pending::CharacterData;
    if (pending_ != added) AddPending();
    pending_ = added;
    text_ += piece;
  }

  void AddWhole(XmlNodeKind kind, std::string_view text) {
    AddPending();
    tree_.NewText(kind, tree_.Kept(text))->LinkInto(open_, nullptr);
  }

  NamesSeen& Names() noexcept { return names_; }

 private:
  enum class Pending : std::uint8_t { Nothing, Text, CharacterData };

  void AddPending() {
    if (pending_ == Pending::Nothing) return;
    const XmlNodeKind kind = pending_ == Pending::Text ? XmlNodeKind::Text : XmlNodeKind::CharacterData;
    tree_.NewText(kind, tree_.Kept(text_))->LinkInto(open_, nullptr);
    Forget();
  }

  void Forget() noexcept {
    pending_ = Pending::Nothing;
    text_.clear();
  }

  XmlTree& tree_;
  NamesSeen names_;
  XmlTreeNode* root_ = nullptr;
  XmlTreeNode* open_ = nullptr;  // the innermost open element
  Pending pending_ = Pending::Nothing;
  std::string text_;
};

template <typename Call>
void ToBuilder(void* context, Call&& call) noexcept {
  StrictParser::Of(context).ForSubject<Builder>(context, call);
}

void Start(void* context, const xmlChar* local, const xmlChar* prefix, const xmlChar* uri, int namespaceCount,
           const xmlChar** namespaces, int attributeCount, int defaulted, const xmlChar** attributes) {
  ToBuilder(context, [&](Builder& builder) {
    const xmlParserInput* const input = static_cast<xmlParserCtxt*>(context)->input;
    NamesSeen& names = builder.Names();
    builder.Start(names.Of(local, prefix, uri), input == nullptr ? 0 : input->line);
    for (int index = 0; index < namespaceCount; ++index) {
      const xmlChar** const declared = namespaces + std::ptrdiff_t{index} * 2;
      static constexpr xmlChar noPrefix = 0;
      const xmlChar* const name = declared[0] == nullptr ? &noPrefix : declared[0];
      builder.InTag(XmlNodeKind::Namespace, names.Of(name, nullptr, nullptr), LibraryText(declared[1]));
    }
    std::string value;
    for (int index = 0; index < attributeCount; ++index) {
      const xmlChar** const attribute = attributes + std::ptrdiff_t{index} * 5;
      // Those that the document type declares are last.
      const bool isDefault = index >= attributeCount - defaulted;
      DecodeValue(value, attribute[3], attribute[4]);
      builder.InTag(isDefault ? XmlNodeKind::DefaultAttribute : XmlNodeKind::Attribute,
                    names.Of(attribute[0], attribute[1], attribute[2]), value);
    }
  });
}

void End(void* context, const xmlChar* /*local*/, const xmlChar* /*prefix*/, const xmlChar* /*uri*/) {
  ToBuilder(context, [](Builder& builder) { builder.End(); });
}

void Characters(void* context, const xmlChar* text, int length) {
  ToBuilder(context, [&](Builder& builder) {
    builder.Add(XmlNodeKind::Text, {reinterpret_cast<const char*>(text), static_cast<std::size_t>(length)});
  });
}

void CharacterData(void* context, const xmlChar* text, int length) {
  ToBuilder(context, [&](Builder& builder) {
    builder.Add(XmlNodeKind::CharacterData,
                {reinterpret_cast<const char*>(text), static_cast<std::size_t>(length)});
  });
}

// What surrounds the document element belongs to no element.
void Comment(void* context, const xmlChar* text) {
  ToBuilder(context, [&](Builder& builder) {
    if (builder.InElement()) builder.AddWhole(XmlNodeKind::Comment, LibraryText(text));
  });
}

void Instruction(void* context, const xmlChar* target, const xmlChar* data) {
  ToBuilder(context, [&](Builder& builder) {
    if (!builder.InElement()) return;
    std::string text(LibraryText(target));
    if (data != nullptr) text.append(1, ' ').append(LibraryText(data));
    builder.AddWhole(XmlNodeKind::Instruction, text);
  });
}

}  // namespace

XmlTreeNode* BuildTree(StrictParser& parser, std::string_view source, XmlEncoding encoding, XmlTree& tree) {
  Builder builder(tree);
  parser.Subject(&builder);
  xmlSAXHandler& handlers = parser.Handlers();
  handlers.startElementNs = Start;
  handlers.endElementNs = End;
  handlers.characters = Characters;
  handlers.ignorableWhitespace = Characters;
  handlers.cdataBlock = CharacterData;
  handlers.comment = Comment;
  handlers.processingInstruction = Instruction;
  handlers.reference = nullptr;
  xmlDoc* const withoutElements = parser.Parse(source, encoding);
  const bool parsed = withoutElements != nullptr;
  xmlFreeDoc(withoutElements);
  return parsed ? builder.Root() : nullptr;
}

}  // namespace krnqb
