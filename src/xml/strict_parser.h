#pragma once

#include <exception>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "xml/byte_source.h"
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
/// that declares entities at the declaration, so that expanding them cannot exhaust memory, and one that
/// nests elements more than 1,000 deep, has an element with more than 1,000 attributes or declares more than
/// 1,000 namespaces around an element. Time and memory are proportional to the document.
class StrictParser {
 public:
  StrictParser();
  ~StrictParser();
  StrictParser(const StrictParser&) = delete;
  StrictParser& operator=(const StrictParser&) = delete;

  /// Returns the library's handlers, which a caller may replace before `Parse` to receive events instead of a
  /// tree. They reach the object set by `Subject` through `ForSubject`.
  _xmlSAXHandler& Handlers() noexcept;
  void Subject(void* subjectOfHandlers) noexcept { subject_ = subjectOfHandlers; }
  /// Ends the parse. For use in handlers.
  static void Stop(void* context) noexcept;
  /// Returns whether the limits admit the element that starts; otherwise ends the parse with a fault.
  static bool Admits(void* context, int attributeCount, int namespaceCount) noexcept;

  /// Calls `call` with the subject, of type `Subject`, from within the library, which no exception may cross:
  /// the first one ends the parse, and the parsing function throws it. Afterwards nothing is called.
  template <typename Subject, typename Call>
  void ForSubject(void* context, Call&& call) noexcept {
    if (failure_ != nullptr) return;
    try {
      call(*static_cast<Subject*>(subject_));
    } catch (...) {
      failure_ = std::current_exception();
      Stop(context);
    }
  }

  /// Returns the parser's only copy of a name: the handlers get elements' names by these pointers. It lives
  /// as long as the parser. Throws std::bad_alloc if memory runs out.
  const char* Interned(std::string_view name);

  /// Does the same as `Parse` in UTF-8, but reads the text where it is, without a copy: what the handlers get
  /// of it then points into it. The handler of starting elements has to ask `Admits` itself, since a call
  /// less for each element counts here.
  _xmlDoc* ParseInPlace(const std::string& source);

  /// Parses the source. Call it once. Returns the document, which the caller owns, or null with `Fault` set.
  /// Throws std::bad_alloc if memory runs out.
  _xmlDoc* Parse(std::string_view source, XmlEncoding encoding);
  /// Does the same with the bytes of a source, in the encoding that the document declares, without keeping
  /// them. What the source throws is passed on.
  _xmlDoc* ParseStream(const ByteSource& source);
  const std::optional<XmlFault>& Fault() const noexcept { return fault_; }
  /// Returns whether the library has reported anything. Of its first version of events it describes nothing,
  /// so that `Fault` may be missing.
  bool HasReport() const noexcept;

  /// Records a fault. Only the first is kept, because it usually causes the others.
  void KeepFault(long line, std::string_view message) noexcept;
  /// Makes `Parse` fail because memory ran out.
  void KeepOutOfMemory() noexcept { outOfMemory_ = true; }
  /// Returns whether the names of the document take more memory than they may.
  bool NamesExhausted() const noexcept;
  static StrictParser& Of(void* context) noexcept;
  /// Returns the line, counted from 1, that is being parsed; 0 if the parse has ended. For use in handlers.
  static long LineIn(void* context) noexcept;

 private:
  struct Limits;

  bool Accepts(std::string_view source);
  void InstallLimits() noexcept;
  _xmlDoc* Finish(_xmlDoc* parsed, const class LibraryMemory& memory);

  _xmlParserCtxt* context_;
  void (*startDocument_)(void*) = nullptr;
  void (*startElement_)(void*, const unsigned char*, const unsigned char*, const unsigned char*, int,
                        const unsigned char**, int, int, const unsigned char**) = nullptr;
  bool limitsNames_ = false;
  bool outOfMemory_ = false;
  std::optional<XmlFault> fault_;
  void* subject_ = nullptr;
  std::exception_ptr failure_;
};

/// Returns a text of the library, empty for null.
std::string_view LibraryText(const unsigned char* text) noexcept;

/// Ignores a comment. Without a handler of comments, the library describes their faults in other words.
void IgnoreComment(void* context, const unsigned char* text) noexcept;

/// What the library leaves of an ampersand in an attribute's value or a namespace, since it does not expand
/// entities.
inline constexpr std::string_view ampersandReference = "&#38;";

/// Replaces `decoded` by a value of the library, given by its begin and end, with real ampersands.
void DecodeValue(std::string& decoded, const unsigned char* begin, const unsigned char* end);

}  // namespace krnqb
