#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace krnqb::company {

enum class FileAccess { ReadOnly, ReadWrite };

/// A prepared statement. It must not outlive its database. Parameters are counted from 1, columns from 0.
/// Every operation throws Error as `Database` does.
class Statement {
 public:
  /// The text is read when the statement steps, and must live until it is reset or bound anew.
  Statement& Bind(int parameter, std::string_view text);
  Statement& Bind(int parameter, std::int64_t number);
  Statement& Bind(int parameter, double number);
  Statement& BindNothing(int parameter);

  /// Goes on to the next row; false when there are no more.
  bool Step();
  /// Makes the statement ready to run again; what was bound stays bound.
  void Reset() noexcept;
  /// Runs a statement that gives no rows, and resets it.
  void Run();

  /// The present row's text, UTF-8, valid until the next step; empty for nothing.
  std::string_view Text(int column) const;
  std::int64_t Integer(int column) const;
  bool IsNothing(int column) const;

 private:
  friend class Database;
  struct Finalize {
    void operator()(sqlite3_stmt* statement) const noexcept;
  };
  explicit Statement(sqlite3_stmt* prepared) noexcept : handle_(prepared) {}

  std::unique_ptr<sqlite3_stmt, Finalize> handle_;
};

/// One connection to a database file, which must exist. A failure is thrown as Error:
/// `company_error::cannotOpen` when the file is locked, no database, damaged or not permitted, each with its
/// own text; `unexpected` for any other.
class Database {
 public:
  /// Opens `file`, an absolute path. A lock of another program is waited for at most a quarter of a second.
  Database(const std::filesystem::path& file, FileAccess access);

  /// Runs statements that give no rows.
  void Execute(const char* statements) const;
  Statement Prepare(std::string_view statement) const;
  /// The first column of a query's first row; 0 when there is none.
  std::int64_t Integer(std::string_view query) const;

 private:
  struct Close {
    void operator()(sqlite3* connection) const noexcept;
  };
  std::unique_ptr<sqlite3, Close> handle_;
};

/// Changes that are made together: rolled back unless committed.
class Transaction {
 public:
  /// Takes the write lock at once; the database must outlive the transaction.
  explicit Transaction(const Database& changed);
  ~Transaction();
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;

  /// Makes the changes permanent. When it throws, they are rolled back.
  void Commit();

 private:
  const Database& database_;
  bool open_ = true;
};

}  // namespace krnqb::company
