#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace krnqb::database {

/// The numbers in a database's header that mark it as a company, "KQBW", or as a ledger, "KQBL".
inline constexpr std::uint32_t companyMark = 0x4B51'4257;
inline constexpr std::uint32_t ledgerMark = 0x4B51'424C;

/// The layouts of company files. They have the same tables; since the second one, pages have checksums.
inline constexpr std::uint32_t layoutWithoutChecksums = 1;
inline constexpr std::uint32_t presentLayout = 2;

/// How the pages of a database are stored.
enum class PageFormat {
  Plain,         ///< without checksums: a company of the first layout, or another program's database
  Checked,       ///< every page has a checksum
  WriteAheadLog  ///< marked as having a write-ahead log, which this program's files never have
};

inline constexpr std::size_t headerSize = 100;
using DatabaseHeader = std::array<unsigned char, headerSize>;

/// Returns whether the header is that of a database with this mark.
bool HasMark(const DatabaseHeader& header, std::uint32_t mark) noexcept;

/// Returns how the pages of the database with this header are stored. A damaged header does not make a file
/// with checksums pass for one without: more than one bit of it would have to change.
PageFormat FormatOf(const DatabaseHeader& header) noexcept;

/// Returns whether the header, read from a page with its checksum, leaves the room for checksums that it
/// should.
bool HasRoomForChecksums(const DatabaseHeader& header) noexcept;

}  // namespace krnqb::database
