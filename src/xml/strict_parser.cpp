#include "xml/strict_parser.h"

#include <libxml/parser.h>

#include <limits>
#include <memory>
#include <new>

#include "xml/library_memory.h"

namespace krnqb {
namespace {

// Recovery, external subsets and entity substitution stay off because they are not listed.
constexpr int strictOptions =
    XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_BIG_LINES | XML_PARSE_HUGE;

struct FreeDocument {
  void operator()(xmlDoc* document) const noexcept { xmlFreeDoc(document); }
};

void KeepError(void* context, xmlErrorPtr error) {
  if (error == nullptr || error->level < XML_ERR_ERROR) return;
  if (error->code == XML_ERR_NO_MEMORY) return StrictParser::Of(context).KeepShortage();
  if (error->message == nullptr) return;
  std::string_view message = error->message;
  while (message.ends_with('\n')) message.remove_suffix(1);
  StrictParser::Of(context).KeepFault(error->line, message);
}

void RefuseEntity(void* context) {
  const xmlParserInput* const input = static_cast<xmlParserCtxt*>(context)->input;
  StrictParser::Of(context).KeepFault(input == nullptr ? 0 : input->line, "the document declares entities");
  StrictParser::Stop(context);
}

void RefuseEntityDeclaration(void* context, const xmlChar* /*name*/, int /*type*/,
                             const xmlChar* /*publicId*/, const xmlChar* /*systemId*/, xmlChar* /*content*/) {
  RefuseEntity(context);
}

void RefuseUnparsedEntity(void* context, const xmlChar* /*name*/, const xmlChar* /*publicId*/,
                          const xmlChar* /*systemId*/, const xmlChar* /*notation*/) {
  RefuseEntity(context);
}

}  // namespace

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

void* StrictParser::SubjectOf(void* parserContext) noexcept {
  return Of(parserContext).subject_;
}

void StrictParser::Stop(void* parserContext) noexcept {
  auto* const parser = static_cast<xmlParserCtxt*>(parserContext);
  parser->wellFormed = 0;
  xmlStopParser(parser);
}

// Called within the library, which no exception may cross.
void StrictParser::KeepFault(long line, std::string_view message) noexcept {
  try {
    if (!fault_) fault_ = XmlFault{line, std::string(message)};
  } catch (...) {
    KeepShortage();
  }
}

xmlDoc* StrictParser::Parse(std::string_view source, XmlEncoding encoding) {
  if (source.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
    KeepFault(1, "the document is larger than 2 GB");
    return nullptr;
  }
  const bool utf8 = encoding == XmlEncoding::Utf8;
  const int options = utf8 ? strictOptions | XML_PARSE_IGNORE_ENC : strictOptions;
  const LibraryMemory memory;
  std::unique_ptr<xmlDoc, FreeDocument> document(xmlCtxtReadMemory(
      context_, source.data(), static_cast<int>(source.size()), nullptr, utf8 ? "UTF-8" : nullptr, options));
  if (outOfMemory_ || memory.RanOut()) throw std::bad_alloc();
  if (document == nullptr) KeepFault(1, "the document is empty");
  if (outOfMemory_) throw std::bad_alloc();
  return fault_ ? nullptr : document.release();
}

}  // namespace krnqb
