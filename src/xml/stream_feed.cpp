#include "xml/stream_feed.h"

#include <libxml/parser.h>

#include <limits>

#include "xml/strict_parser.h"

namespace krnqb {
namespace {

constexpr std::uint64_t mostBytes = std::numeric_limits<int>::max();

// The library keeps five pointers for an attribute and two for a namespace. The room for attributes is at
// most doubled when it is too small, so more than this is asked for only beyond the limit.
constexpr int mostRoomForAttribute = 11;
constexpr int pointersOfNamespace = 2;

}  // namespace

// An end that is not the document's own is not well-formed. The parse is not stopped, because that would free
// the buffer that is being filled.
int StreamFeed::End() noexcept {
  context_.wellFormed = 0;
  context_.disableSAX = 1;
  return -1;
}

void StreamFeed::RethrowFailure() const {
  std::rethrow_exception(failure_);
}

// The library compares each attribute of a tag with every other one, but only once it has read all of them.
// Until then it asks for more bytes, so a tag with far too many is noticed here.
std::optional<std::string_view> StreamFeed::Excess() const noexcept {
  if (context_.maxatts > mostRoomForAttribute * limits_.attributes)
    return "an element has more than 1,000 attributes";
  if (context_.nsNr > pointersOfNamespace * (limits_.namespaces + limits_.attributes))
    return "more than 1,000 namespaces are declared around an element";
  if (total_ > mostBytes) return "the document has 2 GiB or more";
  return std::nullopt;
}

// The library recognizes an encoding only in a first part of several bytes.
std::size_t StreamFeed::Fill(std::span<char> part) {
  std::size_t filled = 0;
  while (filled < part.size()) {
    const std::size_t length = source_(part.subspan(filled));
    if (length == 0) break;
    filled += length;
  }
  return filled;
}

int StreamFeed::Read(void* feed, char* bytes, int length) noexcept {
  auto& self = *static_cast<StreamFeed*>(feed);
  try {
    const std::size_t read = self.Fill({bytes, static_cast<std::size_t>(length)});
    self.total_ += read;
    const std::optional<std::string_view> excess = self.Excess();
    if (!excess) return static_cast<int>(read);
    StrictParser::Of(&self.context_).KeepFault(StrictParser::LineIn(&self.context_), *excess);
  } catch (...) {
    self.failure_ = std::current_exception();
  }
  return self.End();
}

}  // namespace krnqb
