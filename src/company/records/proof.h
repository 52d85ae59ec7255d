#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "company/records/database.h"

namespace krnqb::company {

/// The numbers of records and postings that were compared.
struct ProvedRecords {
  std::int64_t records = 0;
  std::int64_t postings = 0;
};

/// Parses the text of each record again and compares the result with what the company stores: the columns by
/// which records are found, the postings of transactions and the accounts of items. Passes a sentence about
/// each difference to `report`.
ProvedRecords ProveRecords(const Database& database, const std::function<void(std::string)>& report);

}  // namespace krnqb::company
