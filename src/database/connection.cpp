#include "database/connection.h"

#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <memory>
#include <span>
#include <string>
#include <utility>

#include "database/failures.h"
#include "database/storage/file_system.h"
#include "krnqb/error.h"
#include "support/path_text.h"

namespace krnqb::database {
namespace {

constexpr int busyMilliseconds = 250;
constexpr int instructionsBetweenPolls = 1000;  // some microseconds

void Check(int resultCode, sqlite3* connection) {
  if (resultCode == SQLITE_OK) return;
  const char* const file = sqlite3_db_filename(connection, "main");
  ThrowFailure(
      {.code = resultCode, .file = file == nullptr ? "" : file, .message = sqlite3_errmsg(connection)},
      FileSystem::Of(connection));
}

int IsInterrupted(void* interruption) {
  return static_cast<int>((*static_cast<Interruption*>(interruption))());
}

}  // namespace

// Statements that nothing uses at the moment. Preparing one takes SQLite longer than many a statement runs.
struct IdleStatements {
  struct Finalize {
    void operator()(sqlite3_stmt* statement) const noexcept { sqlite3_finalize(statement); }
  };

  // Returns a statement, or null if none of that text is kept.
  sqlite3_stmt* Take(std::string_view text) noexcept {
    const std::span present(statements.data(), count);
    const auto found =
        std::ranges::find_if(present, [&](const auto& idle) { return sqlite3_sql(idle.get()) == text; });
    if (found == present.end()) return nullptr;
    found->swap(statements[--count]);
    return statements[count].release();
  }

  void Keep(sqlite3_stmt* statement) noexcept {
    if (count == statements.size()) {
      sqlite3_finalize(statement);
      return;
    }
    sqlite3_reset(statement);
    sqlite3_clear_bindings(statement);
    statements[count++].reset(statement);
  }

  std::array<std::unique_ptr<sqlite3_stmt, Finalize>, 16> statements{};
  std::size_t count = 0;
};

void Statement::Return::operator()(sqlite3_stmt* statement) const noexcept {
  idle->Keep(statement);
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

Statement& Statement::BindColumn(int parameter, const Statement& row, int column) {
  Check(sqlite3_bind_value(handle_.get(), parameter, sqlite3_column_value(row.handle_.get(), column)),
        sqlite3_db_handle(handle_.get()));
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
  if (text == nullptr) {  // NULL, or there was no memory to end the text with a zero
    sqlite3* const connection = sqlite3_db_handle(handle_.get());
    if (sqlite3_errcode(connection) == SQLITE_NOMEM) Check(SQLITE_NOMEM, connection);
    return {};
  }
  return {text, static_cast<std::size_t>(sqlite3_column_bytes(handle_.get(), column))};
}

std::int64_t Statement::Integer(int column) const {
  return sqlite3_column_int64(handle_.get(), column);
}

double Statement::Real(int column) const {
  return sqlite3_column_double(handle_.get(), column);
}

bool Statement::IsNull(int column) const {
  return sqlite3_column_type(handle_.get(), column) == SQLITE_NULL;
}

int Statement::Columns() const noexcept {
  return sqlite3_column_count(handle_.get());
}

// The connection is closed before its file system and the interruption that it polls are gone.
struct Connection::Handle {
  Handle(const FileKind& kind, Interruption interruption)
      : interrupted(std::move(interruption)), files(kind, interrupted) {}
  ~Handle() {
    idle.reset();
    sqlite3_close_v2(handle);
  }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;

  void Restrict() const;

  Interruption interrupted;
  FileSystem files;
  sqlite3* handle = nullptr;
  std::unique_ptr<IdleStatements> idle = std::make_unique<IdleStatements>();
};

// What the file contains is data: it may neither run functions nor attach other databases. Freed pages
// are overwritten, so that each page in the file is one that was written with its checksum.
void Connection::Handle::Restrict() const {
  using Setting = std::pair<int, int>;
  constexpr std::array settings{
      Setting{SQLITE_DBCONFIG_DEFENSIVE, 1}, Setting{SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0},
      Setting{SQLITE_DBCONFIG_ENABLE_TRIGGER, 0}, Setting{SQLITE_DBCONFIG_ENABLE_VIEW, 0}};
  for (const auto& [setting, value] : settings) {
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg): SQLite has no other function for this
    sqlite3_db_config(handle, setting, value, nullptr);
  }
  sqlite3_limit(handle, SQLITE_LIMIT_ATTACHED, 0);
  int reserved = static_cast<int>(checksumSize);
  sqlite3_file_control(handle, "main", SQLITE_FCNTL_RESERVE_BYTES, &reserved);
}

Connection::Connection(const FileKind& kind, const std::filesystem::path& file, FileAccess access,
                       Interruption interrupted)
    : handle_(std::make_unique<Handle>(kind, std::move(interrupted))) {
  const int flags = access == FileAccess::ReadOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE;
  // A connection is used by one thread, so it locks nothing.
  const int result =
      handle_->files.Open(file, flags | SQLITE_OPEN_EXRESCODE | SQLITE_OPEN_NOMUTEX, &handle_->handle);
  if (result != SQLITE_OK) {
    ThrowFailure({.code = result, .file = TextOfPath(file), .message = sqlite3_errstr(result)},
                 handle_->files);
  }
  handle_->Restrict();
  if (handle_->interrupted) {
    sqlite3_progress_handler(handle_->handle, instructionsBetweenPolls, IsInterrupted, &handle_->interrupted);
  }
  sqlite3_busy_timeout(handle_->handle, busyMilliseconds);
  // The page size has an effect on new files only.
  static_assert(pageSize == 16'384);
  Execute(
      "PRAGMA page_size = 16384; PRAGMA temp_store = MEMORY; PRAGMA cell_size_check = ON;"
      "PRAGMA secure_delete = ON; PRAGMA mmap_size = 0;");
}

Connection::~Connection() = default;
Connection::Connection(Connection&& other) noexcept = default;
Connection& Connection::operator=(Connection&& other) noexcept = default;

void Connection::Execute(const char* statements) const {
  sqlite3* const connection = handle_->handle;
  Check(sqlite3_exec(connection, statements, nullptr, nullptr, nullptr), connection);
}

Statement Connection::Prepare(std::string_view statement) const {
  if (sqlite3_stmt* idle = handle_->idle->Take(statement)) return {idle, *handle_->idle};
  sqlite3_stmt* prepared = nullptr;
  Check(sqlite3_prepare_v2(handle_->handle, statement.data(), static_cast<int>(statement.size()), &prepared,
                           nullptr),
        handle_->handle);
  return {prepared, *handle_->idle};
}

std::int64_t Connection::Integer(std::string_view query) const {
  Statement statement = Prepare(query);
  return statement.Step() ? statement.Integer(0) : 0;
}

const FileKind& Connection::Kind() const noexcept {
  return handle_->files.Kind();
}

bool Connection::HasChecksums() const noexcept {
  return handle_->files.HasChecksums();
}

bool Connection::FoundDamage() const noexcept {
  return (sqlite3_errcode(handle_->handle) & 0xFF) == SQLITE_CORRUPT &&
         handle_->files.Fault() != StorageFault::DamagedJournal;
}

Connection::Survey Connection::SurveyPages() const {
  FileSystem::Survey survey = handle_->files.SurveyPages();
  if (survey.result != SQLITE_OK) {
    ThrowFailure(
        {.code = survey.result, .file = handle_->files.Path(), .message = sqlite3_errstr(survey.result)},
        handle_->files);
  }
  return {survey.pages, std::move(survey.damaged)};
}

Transaction::Transaction(const Connection& database) : database_(database) {
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

}  // namespace krnqb::database
