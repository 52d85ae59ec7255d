#include "company/records/schema.h"

#include <fmt/format.h>

#include <array>
#include <cstdint>

#include "company/records/errors.h"
#include "company/records/versions.h"
#include "database/schema.h"
#include "database/storage/format.h"
#include "krnqb/error.h"
#include "support/path_text.h"

namespace krnqb::company {
namespace {

using database::companyMark;
using database::layoutWithoutChecksums;
using database::presentLayout;
using database::SchemaPart;

// Record ids increase in the order of loading, those of each kind of transaction in a range of its own. The
// position is the place in the list or, for transactions, which are ordered by date first, that in the order
// of loading. List records have no date, so one index orders both. Reports are sums over postings and the
// accounts of items; the index on postings covers all columns of a sum.
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

void CheckLayout(const Database& database, const std::filesystem::path& file) {
  const std::int64_t layout = database.Integer("PRAGMA user_version");
  if (database.Integer("PRAGMA application_id") != companyMark) {
    throw Error(company_error::cannotOpen,
                fmt::format("The file {} is not a company file.", TextOfPath(file)));
  }
  if (layout > presentLayout) {
    throw Error(
        company_error::cannotOpen,
        fmt::format("The company file {} was written by a newer version of this program.", TextOfPath(file)));
  }
  if (layout != presentLayout && layout != layoutWithoutChecksums) {
    RefuseContents(companyFileKind, file, fmt::format("has the unknown layout {}", layout));
  }
  if (database.HasChecksums() != (layout == presentLayout)) {
    RefuseContents(companyFileKind, file,
                   fmt::format("has layout {}, but its pages {} checksums", layout,
                               database.HasChecksums() ? "have" : "lack"));
  }
}

}  // namespace

void CreateSchema(const Database& database, std::string_view processorVersion) {
  Transaction transaction(database);
  database.Execute(
      fmt::format("PRAGMA application_id = {}; PRAGMA user_version = {};", companyMark, presentLayout)
          .c_str());
  CreateParts(database, parts);
  database.Prepare("INSERT INTO company (processor_version) VALUES (?1)").Bind(1, processorVersion).Run();
  transaction.Commit();
}

void CheckSchema(const Database& database, const std::filesystem::path& file) {
  CheckLayout(database, file);
  CheckParts(database, parts, file);
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
