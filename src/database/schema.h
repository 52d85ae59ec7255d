#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <string_view>

#include "database/connection.h"

namespace krnqb::database {

/// A table or an index.
struct SchemaPart {
  std::string_view type;  ///< "table" or "index"
  std::string_view name;
  std::string_view table;  ///< the table that it belongs to
  std::string_view sql;    ///< as the database keeps it
};

/// Creates the parts of a schema, in their order.
void CreateParts(const Connection& database, std::span<const SchemaPart> parts);

/// Throws Error `FileKind::cannotOpen` unless a database contains these parts and nothing else, such as a
/// view or a trigger. `file` is named in the description.
void CheckParts(const Connection& database, std::span<const SchemaPart> parts,
                const std::filesystem::path& file);

/// Throws Error `FileKind::cannotOpen` that says what is wrong with the contents of a file, such as "has the
/// unknown layout 7", and what to do about it.
[[noreturn]] void RefuseContents(const FileKind& kind, const std::filesystem::path& file,
                                 std::string_view reason);

}  // namespace krnqb::database
