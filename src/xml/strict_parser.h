#pragma once

#include <memory>
#include <optional>
#include <string_view>

#include "xml/parser.h"

struct _xmlDoc;         // NOLINT: the XML library's own names
struct _xmlParserCtxt;  // NOLINT
struct _xmlSAXHandler;  // NOLINT

namespace krnqb {

/// How the encoding of a document is determined.
enum class XmlEncoding {
  Utf8,     ///< always UTF-8, whatever the document declares
  Declared  ///< by the byte order mark or the encoding declaration
};

/// Parses one document strictly, without network access, external subsets or recovery. Refuses a document
/// that declares entities at the declaration, so that expanding them cannot exhaust memory.
class StrictParser {
 public:
  StrictParser();
  ~StrictParser();
  StrictParser(const StrictParser&) = delete;
  StrictParser& operator=(const StrictParser&) = delete;

  /// Returns the library's handlers, which a caller may replace before `Parse` to receive events instead of a
  /// tree. They get the object set by `Subject` through `SubjectOf`.
  _xmlSAXHandler& Handlers() noexcept;
  void Subject(void* subjectOfHandlers) noexcept { subject_ = subjectOfHandlers; }
  static void* SubjectOf(void* context) noexcept;
  /// Ends the parse. For use in handlers.
  static void Stop(void* context) noexcept;

  /// Parses the source. Returns the document, which the caller owns, or null with `Fault` set.
  _xmlDoc* Parse(std::string_view source, XmlEncoding encoding);
  const std::optional<XmlFault>& Fault() const noexcept { return fault_; }

  /// Records a fault. Only the first is kept, because it usually causes the others.
  void KeepFault(long line, std::string_view message) noexcept;
  /// Makes `Parse` fail because memory ran out.
  void KeepShortage() noexcept { outOfMemory_ = true; }
  static StrictParser& Of(void* context) noexcept;

 private:
  _xmlParserCtxt* context_;
  std::optional<XmlFault> fault_;
  bool outOfMemory_ = false;
  void* subject_ = nullptr;
};

}  // namespace krnqb
