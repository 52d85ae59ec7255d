#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace krnqb::company {

enum class FileAccess { ReadOnly, ReadWrite };

/// A prepared statement. It must not outlive its database. Parameters are counted from 1, columns from 0. Its
/// operations throw Error as `Database` does.
class Statement {
 public:
  /// The text must stay valid until the statement is reset or the parameter is bound again.
  Statement& Bind(int parameter, std::string_view text);
  Statement& Bind(int parameter, std::int64_t number);
  Statement& Bind(int parameter, double number);
  Statement& BindNull(int parameter);

  /// Advances to the next row; returns false if there are no more.
  bool Step();
  /// Prepares the statement to run again; bindings are kept.
  void Reset() noexcept;
  /// Runs a statement that returns no rows and resets it.
  void Run();

  /// Returns a column of the current row as UTF-8 text, valid until the next step; empty for NULL.
  std::string_view Text(int column) const;
  std::int64_t Integer(int column) const;
  bool IsNull(int column) const;

 private:
  friend class Database;
  struct Finalize {
    void operator()(sqlite3_stmt* statement) const noexcept;
  };
  explicit Statement(sqlite3_stmt* handle) noexcept : handle_(handle) {}

  std::unique_ptr<sqlite3_stmt, Finalize> handle_;
};

/// A connection to an existing database file. Throws Error `company_error::cannotOpen` if the file is locked,
/// not a database, damaged or not accessible, each with its own description, and `unexpected` for any other
/// failure.
class Database {
 public:
  /// Opens `file`, an absolute path. Waits at most a quarter of a second for another program's lock.
  Database(const std::filesystem::path& file, FileAccess access);

  /// Runs statements that return no rows.
  void Execute(const char* statements) const;
  Statement Prepare(std::string_view statement) const;
  /// Returns the first column of a query's first row, or 0 if there are no rows.
  std::int64_t Integer(std::string_view query) const;

 private:
  struct Close {
    void operator()(sqlite3* connection) const noexcept;
  };
  std::unique_ptr<sqlite3, Close> handle_;
};

/// A database transaction, rolled back unless committed.
class Transaction {
 public:
  /// Acquires the write lock at once; the database must outlive the transaction.
  explicit Transaction(const Database& database);
  ~Transaction();
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;

  /// Makes the changes permanent. If it throws, they are rolled back.
  void Commit();

 private:
  const Database& database_;
  bool open_ = true;
};

}  // namespace krnqb::company
