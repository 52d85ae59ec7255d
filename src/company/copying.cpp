#include "company/copying.h"

#include <fmt/format.h>

#include <string>

#include "company/records/schema.h"

namespace krnqb::company {
namespace {

void CopyTable(const Database& from, const Database& to, std::string_view table) {
  Statement rows = from.Prepare(fmt::format("SELECT * FROM {}", table));
  const int columns = rows.Columns();
  std::string parameters = "?";
  for (int column = 1; column < columns; ++column) parameters += ", ?";
  Statement insert = to.Prepare(fmt::format("INSERT INTO {} VALUES ({})", table, parameters));
  while (rows.Step()) {
    for (int column = 0; column < columns; ++column) insert.BindColumn(column + 1, rows, column);
    insert.Run();
  }
}

}  // namespace

void CopyCompany(const Database& company, const std::filesystem::path& copy,
                 const Interruption& interrupted) {
  const Database written(copy, FileAccess::ReadWrite, interrupted);
  written.Execute("PRAGMA journal_mode = MEMORY; PRAGMA cache_size = -65536");
  CreateSchema(written, ReadProcessorVersion(company));
  Transaction transaction(written);
  for (const std::string_view table : RecordTables()) CopyTable(company, written, table);
  transaction.Commit();
}

}  // namespace krnqb::company
