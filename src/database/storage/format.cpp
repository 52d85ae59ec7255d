#include "database/storage/format.h"

#include <cstring>
#include <string_view>

#include "database/storage/page_checksum.h"

namespace krnqb::database {
namespace {

constexpr std::string_view databaseMark{"SQLite format 3\0", 16};

// Places in a database's header; numbers are stored with their highest byte first.
constexpr std::size_t pageSizePlace = 16;  // two bytes
constexpr std::size_t writeVersionPlace = 18;
constexpr std::size_t readVersionPlace = 19;
constexpr std::size_t reservedBytesPlace = 20;
constexpr std::size_t layoutPlace = 60;
constexpr std::size_t applicationPlace = 68;

constexpr unsigned char journalVersion = 1;  // 2 means a write-ahead log

std::uint32_t NumberAt(const DatabaseHeader& header, std::size_t place) noexcept {
  std::uint32_t number = 0;
  for (std::size_t index = place; index < place + 4; ++index) number = number << 8 | header[index];
  return number;
}

bool HasWriteAheadLog(const DatabaseHeader& header) noexcept {
  return header[writeVersionPlace] != journalVersion || header[readVersionPlace] != journalVersion;
}

bool IsChecked(const DatabaseHeader& header) noexcept {
  const bool reserves = header[reservedBytesPlace] == checksumSize;
  const std::uint32_t mark = NumberAt(header, applicationPlace);
  if (mark == ledgerMark) return true;
  if (mark != companyMark) return reserves;
  return reserves || NumberAt(header, layoutPlace) != layoutWithoutChecksums;
}

bool IsDatabase(const DatabaseHeader& header) noexcept {
  return std::memcmp(header.data(), databaseMark.data(), databaseMark.size()) == 0;
}

}  // namespace

bool HasMark(const DatabaseHeader& header, std::uint32_t mark) noexcept {
  return IsDatabase(header) && NumberAt(header, applicationPlace) == mark;
}

PageFormat FormatOf(const DatabaseHeader& header) noexcept {
  if (!IsDatabase(header)) return PageFormat::Plain;
  if (HasWriteAheadLog(header)) return PageFormat::WriteAheadLog;
  return IsChecked(header) ? PageFormat::Checked : PageFormat::Plain;
}

bool HasRoomForChecksums(const DatabaseHeader& header) noexcept {
  return header[reservedBytesPlace] == checksumSize &&
         (header[pageSizePlace] << 8 | header[pageSizePlace + 1]) == static_cast<int>(pageSize);
}

}  // namespace krnqb::database
