#pragma once

#include <filesystem>

#include "database/connection.h"

namespace krnqb::company {

using database::FileAccess;
using database::Interruption;
using database::Statement;
using database::Transaction;

/// What a company file is to its users; its errors have the numbers of `company_error`.
extern const database::FileKind companyFileKind;

/// The database of a company file.
class Database : public database::Connection {
 public:
  /// See `database::Connection`.
  Database(const std::filesystem::path& file, FileAccess access, Interruption interrupted = {});
};

}  // namespace krnqb::company
