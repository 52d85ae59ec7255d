#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "fakes/amount_tables.h"

namespace krnqb::fakes {

/// Returns the ids of the blocks of the past-performance table with their row counts, in order.
inline const std::vector<std::pair<std::string, int>>& PastPerformanceBlocks() {
  static const std::vector<std::pair<std::string, int>> blocks = {
      {"db_pastperformance_sales", 4},
      {"db_pastperformance_shorttermassets", 4},
      {"db_pastperformance_longtermassets", 2},
      {"db_pastperformance_liabilities", 3},
      {"db_pastperformance_longtermliabilities", 1},
      {"db_pastperformance_capital", 2}};
  return blocks;
}

/// Returns the past-performance table without the block `without`. Each row has a cell "name" and `columns`
/// cells "old".
inline std::string PastPerformanceTable(int columns = 14, std::string_view without = {}) {
  std::string blocks;
  for (const auto& [id, rowCount] : PastPerformanceBlocks()) {
    if (id == without) continue;
    std::string rows;
    for (int row = 0; row < rowCount; ++row) rows += WideRow("name", columns, "old");
    blocks += AmountBlock(id, "", rows);
  }
  return "<tableitem id=\"20000000000000000000000000000800\"><tableblocks>" + blocks +
         "</tableblocks></tableitem>";
}

}  // namespace krnqb::fakes
