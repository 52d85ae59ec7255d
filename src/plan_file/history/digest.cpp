#include "plan_file/history/digest.h"

#include <nettle/sha2.h>

#include <algorithm>
#include <array>
#include <cstdint>

namespace krnqb::plan_file {
namespace {

constexpr std::string_view digits = "0123456789abcdef";

}  // namespace

std::string DigestOf(std::string_view bytes) {
  sha256_ctx context{};
  sha256_init(&context);
  sha256_update(&context, bytes.size(), reinterpret_cast<const std::uint8_t*>(bytes.data()));
  std::array<std::uint8_t, SHA256_DIGEST_SIZE> digest{};
  sha256_digest(&context, digest.size(), digest.data());
  std::string text;
  text.reserve(2 * digest.size());
  for (const std::uint8_t byte : digest) {
    text += digits[byte >> 4U];
    text += digits[byte & 0x0FU];
  }
  return text;
}

bool IsDigest(std::string_view text) noexcept {
  return text.size() == std::size_t{2} * SHA256_DIGEST_SIZE &&
         std::ranges::all_of(text, [](char digit) { return digits.find(digit) != std::string_view::npos; });
}

}  // namespace krnqb::plan_file
