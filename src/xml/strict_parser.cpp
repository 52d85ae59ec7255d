#include "xml/strict_parser.h"

#include <libxml/parser.h>
#include <libxml/parserInternals.h>

#include <limits>
#include <memory>
#include <new>
#include <utility>

#include "xml/attribute_count.h"
#include "xml/library_memory.h"
#include "xml/stream_feed.h"

namespace krnqb {
namespace {

// Recovery, external subsets and entity substitution stay off because they are not listed.
constexpr int strictOptions =
    XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_BIG_LINES | XML_PARSE_HUGE;

// A plan or an answer has about 10 levels, 5 attributes and no namespace. The library and the walkers of
// trees take time or stack for each.
constexpr int mostLevels = 1000;
constexpr int mostAttributes = 1000;
constexpr int mostNamespaces = 1000;

// In bytes. Bounds the attributes of a tag in an encoding in which `FindCrowdedTag` finds none.
constexpr std::size_t mostNames = std::size_t{64} * 1024;

struct FreeDocument {
  void operator()(xmlDoc* document) const noexcept { xmlFreeDoc(document); }
};

void KeepError(void* context, xmlErrorPtr error) {
  if (error == nullptr || error->level < XML_ERR_ERROR) return;
  StrictParser& parser = StrictParser::Of(context);
  // The library reports that it may not keep another name like a lack of memory.
  if (parser.NamesExhausted() && (error->code == XML_ERR_NO_MEMORY || error->code == XML_ERR_NAME_REQUIRED)) {
    return parser.KeepFault(error->line, "the document has too many different names");
  }
  if (error->code == XML_ERR_NO_MEMORY) return parser.KeepOutOfMemory();
  if (error->message == nullptr) return;
  // A document is not required to be valid.
  if (error->domain == XML_FROM_VALID || error->domain == XML_FROM_DTD) return;
  std::string_view message = error->message;
  while (message.ends_with('\n')) message.remove_suffix(1);
  parser.KeepFault(error->line, message);
}

void Refuse(void* context, std::string_view reason) {
  StrictParser::Of(context).KeepFault(StrictParser::LineIn(context), reason);
  StrictParser::Stop(context);
}

void RefuseEntityDeclaration(void* context, const xmlChar* /*name*/, int /*type*/,
                             const xmlChar* /*publicId*/, const xmlChar* /*systemId*/, xmlChar* /*content*/) {
  Refuse(context, "the document declares entities");
}

void RefuseUnparsedEntity(void* context, const xmlChar* /*name*/, const xmlChar* /*publicId*/,
                          const xmlChar* /*systemId*/, const xmlChar* /*notation*/) {
  Refuse(context, "the document declares entities");
}

}  // namespace

// The library calls these before the handlers of the parser's user.
struct StrictParser::Limits {
  static void StartDocument(void* context) {
    const StrictParser& parser = Of(context);
    // The option for large texts has lifted this limit.
    if (parser.limitsNames_) xmlDictSetLimit(parser.context_->dict, mostNames);
    parser.startDocument_(context);
  }

  static void StartElement(void* context, const xmlChar* name, const xmlChar* prefix, const xmlChar* uri,
                           int namespaceCount, const xmlChar** namespaces, int attributeCount, int defaulted,
                           const xmlChar** attributes) {
    if (!Admits(context, attributeCount, namespaceCount)) return;
    // Identifiers mean nothing here, and may occur twice. Set earlier, this would load external subsets.
    static_cast<xmlParserCtxt*>(context)->loadsubset |= XML_SKIP_IDS;
    Of(context).startElement_(context, name, prefix, uri, namespaceCount, namespaces, attributeCount,
                              defaulted, attributes);
  }
};

StrictParser::StrictParser() : context_(xmlNewParserCtxt()) {
  if (context_ == nullptr) throw std::bad_alloc();
  context_->_private = this;
  context_->sax->serror = KeepError;
  context_->sax->entityDecl = RefuseEntityDeclaration;
  context_->sax->unparsedEntityDecl = RefuseUnparsedEntity;
}

StrictParser::~StrictParser() {
  xmlFreeParserCtxt(context_);
}

xmlSAXHandler& StrictParser::Handlers() noexcept {
  return *context_->sax;
}

StrictParser& StrictParser::Of(void* parserContext) noexcept {
  return *static_cast<StrictParser*>(static_cast<xmlParserCtxt*>(parserContext)->_private);
}

bool StrictParser::Admits(void* parserContext, int attributeCount, int namespaceCount) noexcept {
  const auto* const parser = static_cast<const xmlParserCtxt*>(parserContext);
  const int declarations = attributeCount + namespaceCount;
  if (parser->nameNr < mostLevels && declarations <= mostAttributes && parser->nsNr / 2 <= mostNamespaces) {
    return true;
  }
  Refuse(parserContext, parser->nameNr >= mostLevels ? "elements are nested more than 1,000 deep"
                        : declarations > mostAttributes
                            ? "an element has more than 1,000 attributes"
                            : "more than 1,000 namespaces are declared around an element");
  return false;
}

void StrictParser::Stop(void* parserContext) noexcept {
  auto* const parser = static_cast<xmlParserCtxt*>(parserContext);
  parser->wellFormed = 0;
  xmlStopParser(parser);
}

// Called within the library, which no exception may cross.
void StrictParser::KeepFault(long line, std::string_view message) noexcept {
  if (fault_ || outOfMemory_) return;
  try {
    fault_ = XmlFault{line, std::string(message)};
  } catch (...) {
    KeepOutOfMemory();
  }
}

bool StrictParser::NamesExhausted() const noexcept {
  return limitsNames_ && xmlDictGetUsage(context_->dict) > mostNames;
}

bool StrictParser::HasReport() const noexcept {
  return context_->lastError.code != XML_ERR_OK;
}

const char* StrictParser::Interned(std::string_view name) {
  const xmlChar* const interned = xmlDictLookup(context_->dict, reinterpret_cast<const xmlChar*>(name.data()),
                                                static_cast<int>(name.size()));
  if (interned == nullptr) throw std::bad_alloc();
  return reinterpret_cast<const char*>(interned);
}

long StrictParser::LineIn(void* parserContext) noexcept {
  const xmlParserInput* const input = static_cast<xmlParserCtxt*>(parserContext)->input;
  return input == nullptr ? 0 : input->line;
}

// Refuses what the library would take too long for.
bool StrictParser::Accepts(std::string_view source) {
  if (source.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
    KeepFault(1, "the document has 2 GiB or more");
    return false;
  }
  if (const std::optional<long> line = FindCrowdedTag(source, mostAttributes)) {
    KeepFault(*line, "an element has more than 1,000 attributes");
    return false;
  }
  return true;
}

// Puts the limits before the handlers.
void StrictParser::InstallLimits() noexcept {
  startDocument_ = context_->sax->startDocument;
  startElement_ = context_->sax->startElementNs;
  context_->sax->startDocument = Limits::StartDocument;
  context_->sax->startElementNs = Limits::StartElement;
}

xmlDoc* StrictParser::Finish(xmlDoc* parsed, const LibraryMemory& memory) {
  std::unique_ptr<xmlDoc, FreeDocument> document(parsed);
  if (failure_ != nullptr) std::rethrow_exception(std::exchange(failure_, nullptr));
  if (memory.RanOut() && !NamesExhausted()) KeepOutOfMemory();
  if (document == nullptr) KeepFault(1, "the document is empty");
  if (outOfMemory_) throw std::bad_alloc();
  // The document shares the names; what is added to it later has no limit.
  if (document != nullptr && document->dict != nullptr) xmlDictSetLimit(document->dict, 0);
  return fault_ ? nullptr : document.release();
}

xmlDoc* StrictParser::ParseInPlace(const std::string& source) {
  if (!Accepts(source)) return nullptr;
  const LibraryMemory memory;
  constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
  std::string_view text = source;
  if (text.starts_with(byteOrderMark)) text.remove_prefix(byteOrderMark.size());
  xmlCtxtUseOptions(context_, strictOptions | XML_PARSE_IGNORE_ENC);
  // Known already, the encoding is not guessed.
  context_->encoding = xmlCharStrdup("UTF-8");
  // An input without a buffer is never moved or freed by the library.
  xmlParserInput* const input = xmlNewInputStream(context_);
  if (input == nullptr) throw std::bad_alloc();
  input->base = input->cur = reinterpret_cast<const xmlChar*>(text.data());
  input->end = input->base + text.size();
  input->length = static_cast<int>(text.size());
  if (inputPush(context_, input) < 0) {
    xmlFreeInputStream(input);
    throw std::bad_alloc();
  }
  xmlParseDocument(context_);
  xmlDoc* const document = std::exchange(context_->myDoc, nullptr);
  if (context_->wellFormed != 0) return Finish(document, memory);
  xmlFreeDoc(document);
  return Finish(nullptr, memory);
}

xmlDoc* StrictParser::Parse(std::string_view source, XmlEncoding encoding) {
  if (!Accepts(source)) return nullptr;
  const bool utf8 = encoding == XmlEncoding::Utf8;
  limitsNames_ = !utf8;
  InstallLimits();
  const int options = utf8 ? strictOptions | XML_PARSE_IGNORE_ENC : strictOptions;
  const LibraryMemory memory;
  return Finish(xmlCtxtReadMemory(context_, source.data(), static_cast<int>(source.size()), nullptr,
                                  utf8 ? "UTF-8" : nullptr, options),
                memory);
}

xmlDoc* StrictParser::ParseStream(const ByteSource& source) {
  InstallLimits();
  limitsNames_ = true;
  const LibraryMemory memory;
  StreamFeed feed(source, *context_, {.attributes = mostAttributes, .namespaces = mostNamespaces});
  xmlDoc* const document =
      xmlCtxtReadIO(context_, StreamFeed::Read, nullptr, &feed, nullptr, nullptr, strictOptions);
  if (feed.HasFailed()) {
    xmlFreeDoc(document);
    feed.RethrowFailure();
  }
  return Finish(document, memory);
}

std::string_view LibraryText(const unsigned char* text) noexcept {
  return text == nullptr ? std::string_view() : std::string_view(reinterpret_cast<const char*>(text));
}

void IgnoreComment(void* /*context*/, const unsigned char* /*text*/) noexcept {}

void DecodeValue(std::string& decoded, const unsigned char* begin, const unsigned char* end) {
  std::string_view value(reinterpret_cast<const char*>(begin), static_cast<std::size_t>(end - begin));
  decoded.clear();
  for (;;) {
    const std::size_t at = value.find(ampersandReference);
    decoded += value.substr(0, at);
    if (at == std::string_view::npos) return;
    decoded += '&';
    value.remove_prefix(at + ampersandReference.size());
  }
}

}  // namespace krnqb
