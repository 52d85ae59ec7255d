#include "company/earlier_file.h"

#include <sqlite3.h>

#include <memory>
#include <stdexcept>

namespace krnqb::company::testing {
namespace {

struct Close {
  void operator()(sqlite3* connection) const noexcept { sqlite3_close(connection); }
};
using Connection = std::unique_ptr<sqlite3, Close>;

Connection Open(const std::filesystem::path& file) {
  sqlite3* connection = nullptr;
  const int result = sqlite3_open(file.c_str(), &connection);
  Connection opened(connection);
  if (result != SQLITE_OK) throw std::runtime_error("cannot open " + file.string());
  return opened;
}

void Execute(const Connection& connection, const std::string& statements) {
  if (sqlite3_exec(connection.get(), statements.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
    throw std::runtime_error(statements + ": " + sqlite3_errmsg(connection.get()));
  }
}

int Append(void* texts, int /*columns*/, char** values, char** /*names*/) {
  *static_cast<std::string*>(texts) += std::string(values[0]) + ";";
  return 0;
}

}  // namespace

void WriteEarlierFile(const std::filesystem::path& company, const std::filesystem::path& earlier) {
  const Connection connection = Open(earlier);
  Execute(connection, "PRAGMA page_size = 16384; ATTACH '" + company.string() + "' AS present; BEGIN");
  std::string schema;
  sqlite3_exec(connection.get(), "SELECT sql FROM present.sqlite_master", Append, &schema, nullptr);
  Execute(connection, schema);
  for (const std::string table : {"company", "record", "posting", "item_account"}) {
    Execute(connection, "INSERT INTO main." + table + " SELECT * FROM present." + table);
  }
  Execute(connection, "PRAGMA main.application_id = 1263616599; PRAGMA main.user_version = 1; COMMIT");
}

void ExecuteDirectly(const std::filesystem::path& database, const std::string& statements) {
  Execute(Open(database), statements);
}

}  // namespace krnqb::company::testing
