#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

#include "database/connection.h"
#include "support/text_map.h"

namespace krnqb::ledger {

/// Stores each text once, in the table "name".
class NameStore {
 public:
  /// The database must outlive the object.
  explicit NameStore(const database::Connection& database);

  /// Returns the id of a text, which is stored if it is new; 0 for the empty text.
  std::int64_t IdOf(std::string_view text);

 private:
  database::Statement insert_;
  TextMap<std::int64_t> ids_;
};

/// Reads the texts of the table "name", each once.
class NameReader {
 public:
  /// The database must outlive the object.
  explicit NameReader(const database::Connection& database);

  /// Returns the text with an id; empty for 0 and for an unknown id.
  const std::string& TextOf(std::int64_t id);

 private:
  database::Statement select_;
  std::unordered_map<std::int64_t, std::string> texts_;
};

}  // namespace krnqb::ledger
