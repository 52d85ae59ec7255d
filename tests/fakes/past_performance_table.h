#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "fakes/amount_tables.h"

namespace krnqb::fakes {

/// The blocks of the past-performance table with their numbers of rows, in the table's order.
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

/// The past-performance table: in each row "name" and `columns` cells "old". The block `without` is left out.
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
