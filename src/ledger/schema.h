#pragma once

#include <cstdint>
#include <filesystem>

#include "database/connection.h"

namespace krnqb::ledger {

/// The layout of ledgers that this program writes and reads.
inline constexpr std::int64_t presentLayout = 1;

/// The errors about ledgers have the number of a path or file that cannot be used.
inline constexpr std::int32_t unusableFile = 75;

/// What a ledger is to its users.
extern const database::FileKind ledgerFileKind;

/// Creates the tables of a ledger in an empty database.
void CreateTables(const database::Connection& database);

/// Creates the indexes of a ledger. That takes less time when its tables are complete.
void CreateIndexes(const database::Connection& database);

/// Throws Error `unusableFile` if a database is not a ledger, has a layout that this program does not know,
/// or contains anything but these tables and indexes. The description names `file`.
void CheckSchema(const database::Connection& database, const std::filesystem::path& file);

}  // namespace krnqb::ledger
