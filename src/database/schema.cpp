#include "database/schema.h"

#include <fmt/format.h>

#include <algorithm>

#include "database/failures.h"
#include "support/path_text.h"

namespace krnqb::database {

void RefuseContents(const FileKind& kind, const std::filesystem::path& file, std::string_view reason) {
  throw NeedsRepair(kind, fmt::format("The {} {} {}; {}", kind.name, TextOfPath(file), reason,
                                      TextAbout(TextOfPath(file), kind.restoreRemedy)));
}

void CreateParts(const Connection& database, std::span<const SchemaPart> parts) {
  for (const SchemaPart& part : parts) database.Execute(std::string(part.sql).c_str());
}

void CheckParts(const Connection& database, std::span<const SchemaPart> parts,
                const std::filesystem::path& file) {
  const FileKind& kind = database.Kind();
  std::size_t found = 0;
  Statement schema = database.Prepare("SELECT type, name, tbl_name, sql FROM sqlite_master");
  while (schema.Step()) {
    const auto part = std::ranges::find(parts, schema.Text(1), &SchemaPart::name);
    if (part == parts.end()) {
      RefuseContents(kind, file,
                     fmt::format("contains the {} \"{}\", which this program has not written", schema.Text(0),
                                 schema.Text(1)));
    }
    if (schema.Text(0) != part->type || schema.Text(2) != part->table || schema.Text(3) != part->sql) {
      RefuseContents(kind, file,
                     fmt::format("has another {} \"{}\" than this program writes", part->type, part->name));
    }
    ++found;
  }
  if (found != parts.size()) {
    RefuseContents(kind, file, fmt::format("has {} of {} tables and indexes", found, parts.size()));
  }
}

}  // namespace krnqb::database
