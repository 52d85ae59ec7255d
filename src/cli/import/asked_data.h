#pragma once

#include <string>

#include "cli/import/settings.h"
#include "qbxml/exchange_header.h"

namespace krnqb::cli {

/// Returns where amounts come from when the component is shown a processor of this major version.
AmountsPath PathOf(std::int16_t majorVersion) noexcept;

/// Returns what an import asks its company or recording for.
RecordedImport AskedData(const ImportSettings& settings, const ImportSource& source);

/// Returns the kinds of data as text for people: "expense accounts and past performance".
std::string ContentsText(const RecordedImport& asked);

/// Returns " from transactions", " from reports" or an empty text.
std::string_view PathText(AmountsPath path) noexcept;

/// Returns all of it as text for people: "expense accounts with amounts from transactions (January to
/// December 2002, product ald)".
std::string AskedText(const RecordedImport& asked);

}  // namespace krnqb::cli
