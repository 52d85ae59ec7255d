#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <unordered_set>
#include <vector>

#include "company/file.h"
#include "reconcile/line_keys.h"
#include "reconcile/work_table.h"
#include "support/year_month.h"

namespace krnqb::reconcile {

/// An amount that a loaded transaction posts to an account of the profit and loss.
struct PostedEntry {
  std::uint32_t key = 0;          ///< the line's, see `LineKeys`
  std::uint32_t transaction = 0;  ///< its number in the work table
  std::uint32_t line = 0;         ///< of the work table
  std::uint8_t month = 0;         ///< from 0
  bool kindRead = false;          ///< whether the import reads transactions of this kind
  bool isSale = false;            ///< whether the transaction is an invoice or a sales receipt
  bool inItemGroup = false;       ///< whether the line is in an item group
  bool isCost = false;            ///< whether it is a cost of sale
  ExactAmount amount = {};
};

/// An account whose balance the loaded transactions do not explain.
struct UnexplainedBalance {
  std::string account;  ///< full name
  ExactAmount balance;
  ExactAmount posted;
};

/// What a company's loaded transactions post in twelve months.
struct PostedEntries {
  std::vector<PostedEntry> entries;
  std::unordered_set<std::uint32_t> pendingSales;  ///< transactions that post nothing yet, by number
  std::vector<UnexplainedBalance> balances;
};

/// Reads the entries of the twelve months from `start`, adds them to the sums of the work table, and returns
/// them. Throws Error as `CompanyFile` does.
PostedEntries ReadPostedEntries(const company::CompanyFile& company, const YearMonth& start, WorkTable& table,
                                LineKeys& keys);

}  // namespace krnqb::reconcile
