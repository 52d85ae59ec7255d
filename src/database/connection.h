#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string_view>
#include <vector>

#include "database/storage/file_kind.h"
#include "database/storage/interruption.h"

struct sqlite3;
struct sqlite3_stmt;

namespace krnqb::database {

enum class FileAccess { ReadOnly, ReadWrite };

struct IdleStatements;

/// A prepared statement. It must not outlive its connection, which keeps it for the next one of the same
/// text. Parameters are counted from 1, columns from 0. Its operations throw Error as `Connection` does.
class Statement {
 public:
  /// The text must stay valid until the statement is reset or the parameter is bound again.
  Statement& Bind(int parameter, std::string_view text);
  Statement& Bind(int parameter, std::int64_t number);
  Statement& Bind(int parameter, double number);
  Statement& BindNull(int parameter);
  /// Binds the value in a column of another statement's current row.
  Statement& BindColumn(int parameter, const Statement& row, int column);

  /// Advances to the next row; returns false if there are no more.
  bool Step();
  /// Prepares the statement to run again; bindings are kept.
  void Reset() noexcept;
  /// Runs a statement that returns no rows and resets it.
  void Run();

  /// Returns a column of the current row as UTF-8 text, valid until the next step; empty for NULL.
  std::string_view Text(int column) const;
  std::int64_t Integer(int column) const;
  /// Returns a column of the current row as a floating-point number; 0 for NULL.
  double Real(int column) const;
  bool IsNull(int column) const;
  /// Returns the number of columns of a row.
  int Columns() const noexcept;

 private:
  friend class Connection;
  struct Return {
    IdleStatements* idle;
    void operator()(sqlite3_stmt* statement) const noexcept;
  };
  Statement(sqlite3_stmt* handle, IdleStatements& idle) noexcept : handle_(handle, Return{&idle}) {}

  std::unique_ptr<sqlite3_stmt, Return> handle_;
};

/// A connection to an existing database file, through a file system that has only this file and its journal.
/// The connection runs nothing that the file itself contains, such as triggers, and keeps temporary data in
/// memory. An empty file becomes a database whose pages have checksums.
///
/// Throws Error `FileKind::cannotOpen` if the file is locked, not a database, damaged or not accessible,
/// each with its own description, 7 if memory runs out, `unspecified` with the description "interrupted" if
/// `interrupted` says so, and `FileKind::unexpected` for any other failure. Descriptions name the kind of
/// file.
class Connection {
 public:
  /// Opens `file`, an absolute path. Waits at most a quarter of a second for another program's lock. Every
  /// statement ends soon after `interrupted` returns true; it must be valid as long as the connection, as
  /// must `kind`.
  Connection(const FileKind& kind, const std::filesystem::path& file, FileAccess access,
             Interruption interrupted = {});
  ~Connection();
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  Connection(Connection&& other) noexcept;
  Connection& operator=(Connection&& other) noexcept;

  /// Runs statements that return no rows.
  void Execute(const char* statements) const;
  Statement Prepare(std::string_view statement) const;
  /// Returns the first column of a query's first row, or 0 if there are no rows.
  std::int64_t Integer(std::string_view query) const;

  /// Returns what kind of file this is.
  const FileKind& Kind() const noexcept;

  /// Returns whether the file's pages have checksums; known once anything has been read.
  bool HasChecksums() const noexcept;

  /// Returns whether the last operation failed because the file is damaged.
  bool FoundDamage() const noexcept;

  struct Survey {
    std::int64_t pages = 0;
    std::vector<std::int64_t> damaged;  ///< counted from 1
  };
  /// Reads all pages of the file, including unused ones, and checks them if they have checksums.
  Survey SurveyPages() const;

 private:
  struct Handle;
  std::unique_ptr<Handle> handle_;
};

/// A database transaction, rolled back unless committed.
class Transaction {
 public:
  /// Acquires the write lock at once; the database must outlive the transaction.
  explicit Transaction(const Connection& database);
  ~Transaction();
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;

  /// Makes the changes permanent. If it throws, they are rolled back.
  void Commit();

 private:
  const Connection& database_;
  bool open_ = true;
};

}  // namespace krnqb::database
