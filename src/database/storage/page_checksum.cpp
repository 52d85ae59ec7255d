#include "database/storage/page_checksum.h"

#include <xxhash.h>

#include <cstring>

namespace krnqb::database {
namespace {

// The same bytes on every machine.
XXH64_canonical_t ChecksumOf(ConstPage page, std::uint64_t number) noexcept {
  XXH64_canonical_t checksum{};
  XXH64_canonicalFromHash(&checksum, XXH3_64bits_withSeed(page.data(), pageSize - checksumSize, number));
  return checksum;
}

}  // namespace

void WriteChecksum(Page page, std::uint64_t number) noexcept {
  const XXH64_canonical_t checksum = ChecksumOf(page, number);
  static_assert(sizeof checksum == checksumSize);
  std::memcpy(page.last<checksumSize>().data(), &checksum, checksumSize);
}

bool HasItsChecksum(ConstPage page, std::uint64_t number) noexcept {
  const XXH64_canonical_t checksum = ChecksumOf(page, number);
  return std::memcmp(page.last<checksumSize>().data(), &checksum, checksumSize) == 0;
}

}  // namespace krnqb::database
