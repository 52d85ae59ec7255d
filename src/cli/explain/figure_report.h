#pragma once

#include <cstddef>
#include <string>

#include "ledger/figures.h"

namespace krnqb::cli {

/// Returns the figures of a row for people: for each its cells and the lines that it is made of, and the sum
/// of the year if all of its months are there. No line is longer than `width` columns, as far as that is
/// possible.
std::string FigureReport(const ledger::LedgerFile& ledger, const ledger::RowFigures& row, std::size_t width);

}  // namespace krnqb::cli
