#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "html/fragment.h"
#include "ledger/figures.h"

namespace krnqb::cli {

/// Lists what the figures of an import are made of, so many amounts at most for each sum that the lists stay
/// short together.
class TransactionLists {
 public:
  /// The ledger must outlive the object.
  TransactionLists(const ledger::LedgerFile& ledger, const std::vector<ledger::RowFigures>& rows);

  /// Returns how many amounts the lists have at most for each sum.
  std::int64_t MostPerSum() const noexcept { return most_; }

  /// Returns a row's figures, each to be opened to what it is made of. `id` is that of the row's element.
  html::Fragment Of(const ledger::RowFigures& row, const std::string& id) const;

 private:
  html::Fragment FigureList(const ledger::RowFigures& row, const ledger::Figure& figure) const;
  html::Fragment SumList(const ledger::LedgerSlot& slot, const std::string& caption) const;

  const ledger::LedgerFile& ledger_;
  std::int64_t most_ = 0;
};

/// Returns the largest limit up to `most` with which lists of these lengths have at most `together` entries;
/// at least 1.
std::int64_t LimitForAll(std::vector<std::int64_t> lengths, std::int64_t most, std::int64_t together);

}  // namespace krnqb::cli
