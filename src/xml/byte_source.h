#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <span>
#include <string_view>

namespace krnqb {

/// Copies the next bytes of a document into `part`, which is not empty, and returns their number, 0 at the
/// end. May throw.
using ByteSource = std::function<std::size_t(std::span<char> part)>;

/// Returns a source of the bytes of a text, which must outlive it.
inline ByteSource BytesOf(std::string_view text) {
  return [rest = text](std::span<char> part) mutable {
    const std::size_t length = std::min(rest.size(), part.size());
    std::copy_n(rest.begin(), length, part.begin());
    rest.remove_prefix(length);
    return length;
  };
}

}  // namespace krnqb
