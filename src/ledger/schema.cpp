#include "ledger/schema.h"

#include <fmt/format.h>

#include <array>
#include <vector>

#include "database/schema.h"
#include "database/storage/format.h"
#include "krnqb/error.h"
#include "support/path_text.h"

namespace krnqb::ledger {
namespace {

using database::SchemaPart;

// Texts that occur again and again, such as the names of accounts, are in the table "name"; other tables hold
// their ids, 0 for a missing text. The lines of a document have consecutive numbers. A booking without a text
// of its own has that of its line. Enumerations are stored as their numbers.
constexpr std::array tables = {
    SchemaPart{"table", "fact", "fact", R"(CREATE TABLE fact (
    name  TEXT NOT NULL PRIMARY KEY,
    value TEXT NOT NULL) WITHOUT ROWID)"},
    SchemaPart{"table", "name", "name", R"(CREATE TABLE name (
    id   INTEGER PRIMARY KEY,
    text TEXT NOT NULL))"},
    SchemaPart{"table", "document", "document", R"(CREATE TABLE document (
    id             INTEGER PRIMARY KEY,
    request        INTEGER NOT NULL,
    past_period    INTEGER,
    first_line     INTEGER NOT NULL,
    transaction_id TEXT NOT NULL,
    txn_date       TEXT NOT NULL,
    number         TEXT NOT NULL,
    party          INTEGER NOT NULL))"},
    SchemaPart{"table", "line", "line", R"(CREATE TABLE line (
    number       INTEGER PRIMARY KEY,
    document     INTEGER NOT NULL,
    month        INTEGER NOT NULL,
    line_id      TEXT NOT NULL,
    element      INTEGER NOT NULL,
    customer     INTEGER NOT NULL,
    account      INTEGER NOT NULL,
    account_name INTEGER NOT NULL,
    item         INTEGER NOT NULL,
    item_name    INTEGER NOT NULL,
    amount       TEXT NOT NULL,
    quantity     TEXT NOT NULL))"},
    SchemaPart{"table", "slot", "slot", R"(CREATE TABLE slot (
    id           INTEGER PRIMARY KEY,
    amount_group INTEGER NOT NULL,
    name         INTEGER NOT NULL,
    number       INTEGER NOT NULL,
    past_period  INTEGER))"},
    SchemaPart{"table", "booking", "booking", R"(CREATE TABLE booking (
    id           INTEGER PRIMARY KEY,
    slot         INTEGER NOT NULL,
    rule         INTEGER NOT NULL,
    amount       REAL NOT NULL,
    replaces     INTEGER NOT NULL,
    line         INTEGER,
    account      INTEGER NOT NULL,
    account_name INTEGER NOT NULL,
    text         TEXT,
    quantity     REAL,
    average_cost REAL,
    billed_line  INTEGER,
    billed_again INTEGER NOT NULL,
    request      INTEGER NOT NULL,
    from_date    INTEGER NOT NULL,
    to_date      INTEGER NOT NULL))"},
    SchemaPart{"table", "left_out", "left_out", R"(CREATE TABLE left_out (
    id           INTEGER PRIMARY KEY,
    line         INTEGER,
    reason       INTEGER NOT NULL,
    kind         INTEGER NOT NULL,
    past_period  INTEGER,
    request      INTEGER NOT NULL,
    from_date    INTEGER NOT NULL,
    to_date      INTEGER NOT NULL,
    source       INTEGER NOT NULL,
    account      INTEGER NOT NULL,
    account_name INTEGER NOT NULL,
    amount       TEXT NOT NULL))"},
    SchemaPart{"table", "cell", "cell", R"(CREATE TABLE cell (
    id            INTEGER PRIMARY KEY,
    content       INTEGER NOT NULL,
    plan_table    INTEGER NOT NULL,
    block         INTEGER NOT NULL,
    row_name      INTEGER NOT NULL,
    row_number    INTEGER NOT NULL,
    column_number INTEGER NOT NULL,
    number        INTEGER NOT NULL,
    text          TEXT NOT NULL))"},
    SchemaPart{"table", "term", "term", R"(CREATE TABLE term (
    cell       INTEGER NOT NULL,
    position   INTEGER NOT NULL,
    slot       INTEGER NOT NULL,
    subtracted INTEGER NOT NULL,
    PRIMARY KEY (cell, position)) WITHOUT ROWID)"},
};

constexpr std::array indexes = {
    SchemaPart{"index", "document_by_transaction", "document",
               "CREATE INDEX document_by_transaction ON document (transaction_id)"},
    SchemaPart{"index", "booking_by_slot", "booking", "CREATE INDEX booking_by_slot ON booking (slot)"},
    SchemaPart{"index", "booking_by_line", "booking",
               "CREATE INDEX booking_by_line ON booking (line) WHERE line IS NOT NULL"},
    SchemaPart{"index", "booking_by_billed_line", "booking",
               "CREATE INDEX booking_by_billed_line ON booking (billed_line) WHERE billed_line IS NOT NULL"},
    SchemaPart{"index", "left_out_by_line", "left_out",
               "CREATE INDEX left_out_by_line ON left_out (line) WHERE line IS NOT NULL"},
};

}  // namespace

constinit const database::FileKind ledgerFileKind = {
    .name = "ledger",
    .plural = "ledgers",
    .writer = "import",
    .restoreRemedy = "run the import again with --ledger {0}",
    .damageRemedy = "run the import again with --ledger {0}",
    .journalRemedy = "remove it",
    .unfinishedWriting =
        "A journal is beside the ledger {0}, which no import leaves there; remove "
        "{0}-journal and run the import again with --ledger {0}",
    .cannotOpen = unusableFile,
    .unexpected = error_number::internalError};

void CreateTables(const database::Connection& database) {
  database.Execute(fmt::format("PRAGMA application_id = {}; PRAGMA user_version = {};", database::ledgerMark,
                               presentLayout)
                       .c_str());
  CreateParts(database, tables);
}

void CreateIndexes(const database::Connection& database) {
  CreateParts(database, indexes);
}

void CheckSchema(const database::Connection& database, const std::filesystem::path& file) {
  const std::int64_t layout = database.Integer("PRAGMA user_version");
  if (database.Integer("PRAGMA application_id") != database::ledgerMark) {
    throw Error(unusableFile, fmt::format("The file {} is not a ledger.", TextOfPath(file)));
  }
  if (layout != presentLayout) {
    database::RefuseContents(ledgerFileKind, file, fmt::format("has the unknown layout {}", layout));
  }
  std::vector<SchemaPart> parts(tables.begin(), tables.end());
  parts.insert(parts.end(), indexes.begin(), indexes.end());
  CheckParts(database, parts, file);
}

}  // namespace krnqb::ledger
