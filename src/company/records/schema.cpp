#include "company/records/schema.h"

#include <fmt/format.h>

#include <cstdint>

#include "company/records/errors.h"
#include "company/records/versions.h"
#include "krnqb/error.h"

namespace krnqb::company {
namespace {

constexpr std::int64_t applicationId = 0x4B51'4257;  // "KQBW"
constexpr std::int64_t schemaVersion = 1;

// Record ids increase in the order of loading. The position is the place in the list or, for transactions,
// which are ordered by date first, the id. List records have no date, so one index orders both. Reports are
// sums over postings and the accounts of items; the index on postings covers all columns of a sum.
constexpr const char* tables = R"(
  CREATE TABLE company (
    processor_version TEXT NOT NULL);
  CREATE TABLE record (
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
    xml          TEXT NOT NULL);
  CREATE UNIQUE INDEX record_by_key ON record (family, key);
  CREATE INDEX record_in_order ON record (family, txn_date, position);
  CREATE INDEX record_by_account_type ON record (account_type, position) WHERE account_type IS NOT NULL;
  CREATE INDEX record_by_kind ON record (kind);
  CREATE TABLE posting (
    record_id INTEGER NOT NULL,
    number    INTEGER NOT NULL,
    target    INTEGER NOT NULL,
    key       TEXT NOT NULL,
    txn_date  TEXT NOT NULL,
    amount    INTEGER NOT NULL,
    quantity  REAL NOT NULL,
    PRIMARY KEY (record_id, number)) WITHOUT ROWID;
  CREATE INDEX posting_by_target ON posting (target, key, txn_date, amount, quantity);
  CREATE TABLE item_account (
    item      TEXT NOT NULL,
    target    INTEGER NOT NULL,
    account   TEXT NOT NULL,
    unit_cost REAL);
  CREATE INDEX item_account_by_item ON item_account (item);
  CREATE INDEX item_account_by_account ON item_account (account);
)";

}  // namespace

void CreateSchema(const Database& database, std::string_view processorVersion) {
  // A transaction with its lines takes some thousand bytes and would waste much of the default page of 4096.
  database.Execute("PRAGMA page_size = 16384");
  Transaction transaction(database);
  database.Execute(
      fmt::format("PRAGMA application_id = {}; PRAGMA user_version = {};", applicationId, schemaVersion)
          .c_str());
  database.Execute(tables);
  database.Prepare("INSERT INTO company (processor_version) VALUES (?1)").Bind(1, processorVersion).Run();
  transaction.Commit();
}

void CheckSchema(const Database& database, const std::filesystem::path& file) {
  if (database.Integer("PRAGMA application_id") != applicationId) {
    throw Error(company_error::cannotOpen, fmt::format("The file {} is not a company file.", file.string()));
  }
  if (database.Integer("PRAGMA user_version") != schemaVersion) {
    throw Error(
        company_error::cannotOpen,
        fmt::format("The company file {} was written by a newer version of this program.", file.string()));
  }
}

std::string ReadProcessorVersion(const Database& database) {
  Statement statement = database.Prepare("SELECT processor_version FROM company");
  std::string version(statement.Step() ? statement.Text(0) : std::string_view());
  if (VersionOrder(version)) return version;
  throw Error(company_error::cannotOpen,
              fmt::format("The company file has the unknown qbXML version \"{}\".", version));
}

}  // namespace krnqb::company
