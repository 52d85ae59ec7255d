#include "company/records/schema.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdint>

#include "company/records/errors.h"
#include "company/records/failures.h"
#include "company/records/versions.h"
#include "company/storage/format.h"
#include "krnqb/error.h"

namespace krnqb::company {
namespace {

struct SchemaPart {
  std::string_view type;
  std::string_view name;
  std::string_view table;
  std::string_view sql;  // as the database keeps it
};

// Record ids increase in the order of loading. The position is the place in the list or, for transactions,
// which are ordered by date first, the id. List records have no date, so one index orders both. Reports are
// sums over postings and the accounts of items; the index on postings covers all columns of a sum.
constexpr std::array parts = {
    SchemaPart{"table", "company", "company", R"(CREATE TABLE company (
    processor_version TEXT NOT NULL))"},
    SchemaPart{"table", "record", "record", R"(CREATE TABLE record (
    id           INTEGER PRIMARY KEY,
    family       TEXT NOT NULL,
    kind         TEXT NOT NULL,
    key          TEXT NOT NULL,
    parent_key   TEXT NOT NULL,
    account_type TEXT,
    txn_date     TEXT,
    position     INTEGER NOT NULL,
    lines_begin  INTEGER NOT NULL,
    lines_end    INTEGER NOT NULL,
    xml          TEXT NOT NULL))"},
    SchemaPart{"index", "record_by_key", "record",
               "CREATE UNIQUE INDEX record_by_key ON record (family, key)"},
    SchemaPart{"index", "record_in_order", "record",
               "CREATE INDEX record_in_order ON record (family, txn_date, position)"},
    SchemaPart{"index", "record_by_account_type", "record",
               "CREATE INDEX record_by_account_type ON record (account_type, position) WHERE account_type IS "
               "NOT NULL"},
    SchemaPart{"index", "record_by_kind", "record", "CREATE INDEX record_by_kind ON record (kind)"},
    SchemaPart{"table", "posting", "posting", R"(CREATE TABLE posting (
    record_id INTEGER NOT NULL,
    number    INTEGER NOT NULL,
    target    INTEGER NOT NULL,
    key       TEXT NOT NULL,
    txn_date  TEXT NOT NULL,
    amount    INTEGER NOT NULL,
    quantity  REAL NOT NULL,
    PRIMARY KEY (record_id, number)) WITHOUT ROWID)"},
    SchemaPart{"index", "posting_by_target", "posting",
               "CREATE INDEX posting_by_target ON posting (target, key, txn_date, amount, quantity)"},
    SchemaPart{"table", "item_account", "item_account", R"(CREATE TABLE item_account (
    item      TEXT NOT NULL,
    target    INTEGER NOT NULL,
    account   TEXT NOT NULL,
    unit_cost REAL))"},
    SchemaPart{"index", "item_account_by_item", "item_account",
               "CREATE INDEX item_account_by_item ON item_account (item)"},
    SchemaPart{"index", "item_account_by_account", "item_account",
               "CREATE INDEX item_account_by_account ON item_account (account)"},
};

constexpr std::array<std::string_view, 3> recordTables = {"record", "posting", "item_account"};

[[noreturn]] void RefuseSchema(const std::filesystem::path& file, const std::string& reason) {
  throw CompanyNeedsRepair(
      fmt::format("The company file {} {}; restore a copy of the file", file.string(), reason));
}

void CheckLayout(const Database& database, const std::filesystem::path& file) {
  const std::int64_t layout = database.Integer("PRAGMA user_version");
  if (database.Integer("PRAGMA application_id") != companyMark) {
    throw Error(company_error::cannotOpen, fmt::format("The file {} is not a company file.", file.string()));
  }
  if (layout > presentLayout) {
    throw Error(
        company_error::cannotOpen,
        fmt::format("The company file {} was written by a newer version of this program.", file.string()));
  }
  if (layout != presentLayout && layout != layoutWithoutChecksums) {
    RefuseSchema(file, fmt::format("has the unknown layout {}", layout));
  }
  if (database.HasChecksums() != (layout == presentLayout)) {
    RefuseSchema(file, fmt::format("has layout {}, but its pages {} checksums", layout,
                                   database.HasChecksums() ? "have" : "lack"));
  }
}

}  // namespace

void CreateSchema(const Database& database, std::string_view processorVersion) {
  Transaction transaction(database);
  database.Execute(
      fmt::format("PRAGMA application_id = {}; PRAGMA user_version = {};", companyMark, presentLayout)
          .c_str());
  for (const SchemaPart& part : parts) database.Execute(std::string(part.sql).c_str());
  database.Prepare("INSERT INTO company (processor_version) VALUES (?1)").Bind(1, processorVersion).Run();
  transaction.Commit();
}

void CheckSchema(const Database& database, const std::filesystem::path& file) {
  CheckLayout(database, file);
  std::size_t found = 0;
  Statement schema = database.Prepare("SELECT type, name, tbl_name, sql FROM sqlite_master");
  while (schema.Step()) {
    const auto* const part = std::ranges::find(parts, schema.Text(1), &SchemaPart::name);
    if (part == parts.end()) {
      RefuseSchema(file, fmt::format("contains the {} \"{}\", which this program has not written",
                                     schema.Text(0), schema.Text(1)));
    }
    if (schema.Text(0) != part->type || schema.Text(2) != part->table || schema.Text(3) != part->sql) {
      RefuseSchema(file,
                   fmt::format("has another {} \"{}\" than this program writes", part->type, part->name));
    }
    ++found;
  }
  if (found != parts.size()) {
    RefuseSchema(file, fmt::format("has {} of {} tables and indexes", found, parts.size()));
  }
}

std::span<const std::string_view> RecordTables() noexcept {
  return recordTables;
}

std::string ReadProcessorVersion(const Database& database) {
  Statement statement = database.Prepare("SELECT processor_version FROM company");
  std::string version(statement.Step() ? statement.Text(0) : std::string_view());
  if (VersionOrder(version)) return version;
  throw Error(company_error::cannotOpen,
              fmt::format("The company file has the unknown qbXML version \"{}\".", version));
}

}  // namespace krnqb::company
