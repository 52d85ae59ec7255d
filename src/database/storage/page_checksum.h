#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace krnqb::database {

/// The size of pages, in bytes. A company's transaction with its lines takes some thousand bytes and would
/// waste much of a smaller page.
inline constexpr std::size_t pageSize = 16'384;

/// The bytes at the end of each page that hold its checksum.
inline constexpr std::size_t checksumSize = 8;

/// A whole page of a database.
using Page = std::span<unsigned char, pageSize>;
using ConstPage = std::span<const unsigned char, pageSize>;

/// Writes a page's checksum into its last bytes. Pages are numbered from 1; the number is part of the
/// checksum, so that a page in another one's place is found too.
void WriteChecksum(Page page, std::uint64_t number) noexcept;

/// Returns whether a page has the checksum of its contents and number.
bool HasItsChecksum(ConstPage page, std::uint64_t number) noexcept;

}  // namespace krnqb::database
