#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace krnqb::profit_and_loss {

/// One record of a CSV text: its cells up to the last that is not blank.
struct CsvRecord {
  std::size_t line = 0;  ///< on which it begins, counted from 1
  std::vector<std::string> cells;
};

/// Why the records of a CSV text end early.
struct CsvFault {
  std::size_t line = 0;
  std::string what;
  std::string_view advice;
};

struct CsvText {
  std::vector<CsvRecord> records;
  std::optional<CsvFault> fault;
};

/// Returns the records of a CSV text that have a cell which is not blank. A cell may be quoted, with "" for a
/// quotation mark, and then contain line ends and separators. The records end with a fault where a quotation
/// mark is not closed or is followed by other text, where a line has more than 512 cells, and after 2,000,000
/// records or 20,000,000 cells.
CsvText ReadCsv(std::string_view text, char separator);

}  // namespace krnqb::profit_and_loss
