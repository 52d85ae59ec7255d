#include "company/records/database.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include <string>

#include "company/records/errors.h"
#include "krnqb/error.h"

namespace krnqb::company {
namespace {

constexpr int busyMilliseconds = 250;

[[noreturn]] void Fail(int resultCode, const std::string& file, const char* message) {
  switch (resultCode & 0xFF) {  // the low byte is the kind of failure, the rest its details
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      throw Error(company_error::cannotOpen,
                  fmt::format("The company file {} is locked: another program is using it.", file));
    case SQLITE_NOTADB:
      throw Error(company_error::cannotOpen, fmt::format("The file {} is not a company file.", file));
    case SQLITE_CORRUPT:
      throw Error(company_error::cannotOpen,
                  fmt::format("The company file {} is damaged: {}.", file, message));
    case SQLITE_CANTOPEN:
    case SQLITE_PERM:
    case SQLITE_AUTH:
      throw Error(company_error::cannotOpen,
                  fmt::format("The company file {} cannot be opened: {}.", file, message));
    case SQLITE_READONLY:
      throw Error(company_error::cannotOpen,
                  fmt::format("The company file {} cannot be written: {}.", file, message));
    default:
      throw Error(company_error::unexpected,
                  fmt::format("An operation on the company file {} failed: {}.", file, message));
  }
}

void Check(int resultCode, sqlite3* connection) {
  if (resultCode == SQLITE_OK) return;
  const char* const file = sqlite3_db_filename(connection, "main");
  Fail(resultCode, file == nullptr ? "" : file, sqlite3_errmsg(connection));
}

}  // namespace

void Statement::Finalize::operator()(sqlite3_stmt* statement) const noexcept {
  sqlite3_finalize(statement);
}

Statement& Statement::Bind(int parameter, std::string_view text) {
  const char* const begin = text.data() == nullptr ? "" : text.data();  // a null pointer would bind NULL
  Check(sqlite3_bind_text64(handle_.get(), parameter, begin, text.size(), nullptr, SQLITE_UTF8),
        sqlite3_db_handle(handle_.get()));
  return *this;
}

Statement& Statement::Bind(int parameter, std::int64_t number) {
  Check(sqlite3_bind_int64(handle_.get(), parameter, number), sqlite3_db_handle(handle_.get()));
  return *this;
}

Statement& Statement::Bind(int parameter, double number) {
  Check(sqlite3_bind_double(handle_.get(), parameter, number), sqlite3_db_handle(handle_.get()));
  return *this;
}

Statement& Statement::BindNull(int parameter) {
  Check(sqlite3_bind_null(handle_.get(), parameter), sqlite3_db_handle(handle_.get()));
  return *this;
}

bool Statement::Step() {
  const int result = sqlite3_step(handle_.get());
  if (result == SQLITE_ROW) return true;
  if (result != SQLITE_DONE) Check(result, sqlite3_db_handle(handle_.get()));
  return false;
}

void Statement::Reset() noexcept {
  sqlite3_reset(handle_.get());
}

void Statement::Run() {
  Step();
  Reset();
}

std::string_view Statement::Text(int column) const {
  const auto* const text = reinterpret_cast<const char*>(sqlite3_column_text(handle_.get(), column));
  if (text == nullptr) return {};
  return {text, static_cast<std::size_t>(sqlite3_column_bytes(handle_.get(), column))};
}

std::int64_t Statement::Integer(int column) const {
  return sqlite3_column_int64(handle_.get(), column);
}

bool Statement::IsNull(int column) const {
  return sqlite3_column_type(handle_.get(), column) == SQLITE_NULL;
}

void Database::Close::operator()(sqlite3* connection) const noexcept {
  sqlite3_close_v2(connection);
}

Database::Database(const std::filesystem::path& file, FileAccess access) {
  const int flags = access == FileAccess::ReadOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE;
  sqlite3* connection = nullptr;
  const int result = sqlite3_open_v2(file.c_str(), &connection, flags | SQLITE_OPEN_EXRESCODE, nullptr);
  handle_.reset(connection);  // a failed connection must be closed too
  if (result != SQLITE_OK) Fail(result, file.string(), sqlite3_errstr(result));
  sqlite3_busy_timeout(connection, busyMilliseconds);
}

void Database::Execute(const char* statements) const {
  Check(sqlite3_exec(handle_.get(), statements, nullptr, nullptr, nullptr), handle_.get());
}

Statement Database::Prepare(std::string_view statement) const {
  sqlite3_stmt* prepared = nullptr;
  Check(sqlite3_prepare_v2(handle_.get(), statement.data(), static_cast<int>(statement.size()), &prepared,
                           nullptr),
        handle_.get());
  return Statement(prepared);
}

std::int64_t Database::Integer(std::string_view query) const {
  Statement statement = Prepare(query);
  return statement.Step() ? statement.Integer(0) : 0;
}

Transaction::Transaction(const Database& database) : database_(database) {
  database_.Execute("BEGIN IMMEDIATE");
}

Transaction::~Transaction() {
  if (!open_) return;
  try {
    database_.Execute("ROLLBACK");
  } catch (const Error&) {
    // Some failures have already rolled back; otherwise the next reader of the file does.
  }
}

void Transaction::Commit() {
  database_.Execute("COMMIT");
  open_ = false;
}

}  // namespace krnqb::company
