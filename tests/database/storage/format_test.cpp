#include "database/storage/format.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string_view>

namespace krnqb::database {
namespace {

DatabaseHeader Header(unsigned char reserved, unsigned char layout, std::string_view mark = "KQBW") {
  DatabaseHeader header{};
  const std::string_view text{"SQLite format 3\0\x40\0\x01\x01", 20};
  std::ranges::copy(text, header.begin());
  header[20] = reserved;
  header[63] = layout;
  std::ranges::copy(mark, header.begin() + 68);
  return header;
}

TEST(PageFormats, AreKnownFromTheHeader) {
  EXPECT_EQ(FormatOf(Header(0, 1)), PageFormat::Plain);
  EXPECT_EQ(FormatOf(Header(8, 2)), PageFormat::Checked);
  EXPECT_EQ(FormatOf(Header(0, 2, "none")), PageFormat::Plain);
  EXPECT_EQ(FormatOf(DatabaseHeader{}), PageFormat::Plain);
}

TEST(PageFormats, OfCompaniesWithChecksumsStayCheckedIfABitOfTheHeaderFlips) {
  for (std::size_t place = 16; place < headerSize; ++place) {
    for (unsigned bit = 1; bit < 256; bit <<= 1U) {
      DatabaseHeader header = Header(8, 2);
      header[place] = static_cast<unsigned char>(header[place] ^ bit);
      EXPECT_NE(FormatOf(header), PageFormat::Plain) << place;
    }
  }
}

TEST(PageFormats, OfLedgersAreAlwaysChecked) {
  EXPECT_EQ(FormatOf(Header(0, 1, "KQBL")), PageFormat::Checked);
  EXPECT_EQ(FormatOf(Header(8, 1, "KQBL")), PageFormat::Checked);
}

TEST(PageFormats, WithAWriteAheadLogAreRecognized) {
  for (const std::size_t place : {18U, 19U}) {
    DatabaseHeader header = Header(0, 1);
    header[place] = 2;
    EXPECT_EQ(FormatOf(header), PageFormat::WriteAheadLog);
  }
}

TEST(PageFormats, LeaveRoomForChecksums) {
  EXPECT_TRUE(HasRoomForChecksums(Header(8, 2)));
  EXPECT_FALSE(HasRoomForChecksums(Header(0, 2)));
  DatabaseHeader header = Header(8, 2);
  header[16] = 0x10;
  EXPECT_FALSE(HasRoomForChecksums(header));
}

}  // namespace
}  // namespace krnqb::database
