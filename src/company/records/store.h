#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "company/records/database.h"
#include "company/records/document.h"
#include "company/records/ledger.h"

namespace krnqb::company {

/// How many records there are of a kind, which is their element name.
struct RecordCount {
  std::string kind;
  std::int64_t count = 0;
};

enum class PutResult { Added, Replaced };

/// Puts records into a company file, within a transaction of the caller's. The database must outlive it.
class CompanyRecords {
 public:
  explicit CompanyRecords(const Database& database);

  /// Stores a record. One of the same family and key is replaced and keeps its place among the entries with
  /// the same parent (transactions: among those of the same date); a new one comes last there. What it posts,
  /// or which accounts it names as an item, replaces what the earlier one did.
  PutResult Put(const CompanyRecord& record);

  /// Puts the lists that were touched in the order in which they are answered. Call it before committing.
  void OrderLists();

 private:
  void OrderList(const std::string& family);

  const Database& database_;
  Statement find_;
  Statement insert_;
  Statement replace_;
  LedgerWriter ledger_;
  std::int64_t nextId_;
  std::set<std::string, std::less<>> touchedLists_;
};

/// The company's records counted by kind, kinds without records left out, in the order of `RecordKinds`.
std::vector<RecordCount> CountRecords(const Database& database);

/// The text of the company's one record of a family of settings; empty when it has none.
std::string ReadSetting(const Database& database, std::string_view family);

}  // namespace krnqb::company
