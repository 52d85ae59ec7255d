#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <optional>
#include <span>
#include <string_view>

#include "xml/byte_source.h"

struct _xmlParserCtxt;  // NOLINT: the XML library's own name

namespace krnqb {

/// Passes the bytes of a source to the XML library, which asks for them while it parses, and ends the
/// document where the source fails or something is beyond a limit.
class StreamFeed {
 public:
  struct Limits {
    int attributes = 0;  ///< of an element
    int namespaces = 0;  ///< declared around an element
  };

  /// `source` and `context` must outlive the feed.
  StreamFeed(const ByteSource& source, _xmlParserCtxt& context, Limits limits) noexcept
      : source_(source), context_(context), limits_(limits) {}

  /// What the library calls: `feed` is the StreamFeed. Returns the number of bytes, or -1.
  static int Read(void* feed, char* bytes, int length) noexcept;

  /// Returns whether the source has thrown.
  bool HasFailed() const noexcept { return failure_ != nullptr; }
  /// Throws what the source has thrown; call it only then.
  [[noreturn]] void RethrowFailure() const;

 private:
  std::size_t Fill(std::span<char> part);
  std::optional<std::string_view> Excess() const noexcept;
  int End() noexcept;

  const ByteSource& source_;
  _xmlParserCtxt& context_;
  Limits limits_;
  std::uint64_t total_ = 0;
  std::exception_ptr failure_;
};

}  // namespace krnqb
