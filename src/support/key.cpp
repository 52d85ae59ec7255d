#include <utf8proc.h>

#include <algorithm>
#include <array>

#include "krnqb/keyed_collection.h"

namespace krnqb {
namespace {

bool IsAscii(std::string_view text) {
  return std::ranges::all_of(text,
                             [](char character) { return static_cast<unsigned char>(character) < 0x80; });
}

std::string LowerAscii(std::string_view text) {
  std::string folded(text);
  for (char& character : folded) {
    if (character >= 'A' && character <= 'Z') character = static_cast<char>(character - 'A' + 'a');
  }
  return folded;
}

}  // namespace

std::string FoldedKey(std::string_view text) {
  if (IsAscii(text)) return LowerAscii(text);
  std::string folded;
  folded.reserve(text.size());
  while (!text.empty()) {
    utf8proc_int32_t codePoint = 0;
    const auto* const bytes = reinterpret_cast<const utf8proc_uint8_t*>(text.data());
    const utf8proc_ssize_t length =
        utf8proc_iterate(bytes, static_cast<utf8proc_ssize_t>(text.size()), &codePoint);
    if (length < 1) {
      folded += text.front();
      text.remove_prefix(1);
      continue;
    }
    std::array<utf8proc_uint8_t, 4> lower{};
    const utf8proc_ssize_t written = utf8proc_encode_char(utf8proc_tolower(codePoint), lower.data());
    folded.append(reinterpret_cast<const char*>(lower.data()), static_cast<std::size_t>(written));
    text.remove_prefix(static_cast<std::size_t>(length));
  }
  return folded;
}

}  // namespace krnqb
