#pragma once

#include <filesystem>
#include <set>
#include <string>

namespace krnqb::bench {

struct ImportRun {
  std::filesystem::path company;
  std::filesystem::path plan;         ///< of product ald; the year before its start is imported
  std::filesystem::path requestFile;  ///< receives the requests sent; none if empty
  std::set<std::string> months;       ///< the months (YYYY-MM) that have transactions; all if empty
};

/// Imports income and expenses with all balances, saves the plan, and prints the cost of the import outside
/// the request processor. Throws Error if the import fails.
void RunImport(const ImportRun& run);

}  // namespace krnqb::bench
