#include "database/storage/page_checksum.h"

#include <gtest/gtest.h>

#include <array>

namespace krnqb::database {
namespace {

TEST(PageChecksums, AreInTheLastEightBytes) {
  std::array<unsigned char, pageSize> page{};
  page.fill(0xAA);
  WriteChecksum(Page(page), 1);
  EXPECT_EQ(page[pageSize - checksumSize - 1], 0xAA);
  EXPECT_TRUE(HasItsChecksum(Page(page), 1));
}

// Files are exchanged between machines, so the bytes must not depend on the machine or the library's version.
TEST(PageChecksums, HaveFixedBytes) {
  std::array<unsigned char, pageSize> page{};
  WriteChecksum(Page(page), 2);
  const std::array<unsigned char, checksumSize> expected = {0x48, 0xef, 0x7e, 0x86, 0x8e, 0x30, 0xb2, 0x1e};
  EXPECT_TRUE(std::equal(expected.begin(), expected.end(), page.end() - checksumSize))
      << ::testing::PrintToString(std::vector<int>(page.end() - checksumSize, page.end()));
}

TEST(PageChecksums, FindEveryFlippedBitAndAnotherPlace) {
  std::array<unsigned char, pageSize> page{};
  for (std::size_t place = 0; place < pageSize; ++place) page[place] = static_cast<unsigned char>(place * 7);
  WriteChecksum(Page(page), 5);
  EXPECT_FALSE(HasItsChecksum(Page(page), 6));
  for (std::size_t place = 0; place < pageSize; place += 13) {
    for (unsigned bit = 1; bit < 256; bit <<= 1U) {
      page[place] = static_cast<unsigned char>(page[place] ^ bit);
      EXPECT_FALSE(HasItsChecksum(Page(page), 5)) << place;
      page[place] = static_cast<unsigned char>(page[place] ^ bit);
    }
  }
  EXPECT_TRUE(HasItsChecksum(Page(page), 5));
}

}  // namespace
}  // namespace krnqb::database
