#pragma once

#include <memory>
#include <optional>
#include <string_view>

#include "xml/parser.h"

struct _xmlDoc;         // NOLINT: the XML library's own names
struct _xmlParserCtxt;  // NOLINT
struct _xmlSAXHandler;  // NOLINT

namespace krnqb {

/// How a document says what its bytes mean.
enum class XmlEncoding {
  Utf8,     ///< it is UTF-8, whatever it declares
  Declared  ///< by its byte order mark or declaration
};

/// One parse of one document: strict, without network, external subsets or recovery. Documents that declare
/// entities are refused at the declaration, before one can be expanded into more than memory holds.
class StrictParser {
 public:
  StrictParser();
  ~StrictParser();
  StrictParser(const StrictParser&) = delete;
  StrictParser& operator=(const StrictParser&) = delete;

  /// The library's handlers, for a caller that wants events in place of a tree; set before `Parse`. `subject`
  /// reaches them through `SubjectOf`.
  _xmlSAXHandler& Handlers() noexcept;
  void Subject(void* subjectOfHandlers) noexcept { subject_ = subjectOfHandlers; }
  static void* SubjectOf(void* context) noexcept;
  /// Ends the parse from inside a handler.
  static void Stop(void* context) noexcept;

  /// Parses the source; gives the document, which the caller owns, or null with `Fault` set.
  _xmlDoc* Parse(std::string_view source, XmlEncoding encoding);
  const std::optional<XmlFault>& Fault() const noexcept { return fault_; }

  /// Keeps the first fault of the document: those that follow come from it.
  void KeepFault(long line, std::string message);
  static StrictParser& Of(void* context) noexcept;

 private:
  _xmlParserCtxt* context_;
  std::optional<XmlFault> fault_;
  void* subject_ = nullptr;
};

}  // namespace krnqb
