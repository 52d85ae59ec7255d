#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "company/records/company_record.h"
#include "company/records/database.h"
#include "company/records/ledger.h"

namespace krnqb::company {

/// The number of records of a kind, given by their element name.
struct RecordCount {
  std::string kind;
  std::int64_t count = 0;
};

enum class PutResult { Added, Replaced };

/// Stores records in a company file, within the caller's transaction. The database must outlive it.
class RecordStore {
 public:
  explicit RecordStore(const Database& database);

  /// Stores a record. A record with the same family and key is replaced and keeps its place among the entries
  /// with the same parent (transactions: with the same date); a new one comes last there. Postings and item
  /// accounts are replaced too.
  PutResult Put(const CompanyRecord& record);

  /// Sorts the changed lists into the order in which they are answered. Call it before committing.
  void OrderLists();

 private:
  void OrderList(const std::string& family);

  const Database& database_;
  Statement find_;
  Statement insert_;
  Statement replace_;
  LedgerWriter ledger_;
  std::int64_t lastNumber_;  // of the records in the order of loading
  std::set<std::string, std::less<>> changedLists_;
};

/// Counts the company's records by kind, in the order of `RecordKinds`, without empty kinds.
std::vector<RecordCount> CountRecords(const Database& database);

/// Returns the text of the company's single record of a family of settings; empty if it has none.
std::string ReadSetting(const Database& database, std::string_view family);

}  // namespace krnqb::company
