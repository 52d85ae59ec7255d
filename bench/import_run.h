#pragma once

#include <filesystem>
#include <set>
#include <string>

namespace krnqb::bench {

struct ImportRun {
  std::filesystem::path company;
  std::filesystem::path plan;         ///< of product ald; the amounts are those of the year before its start
  std::filesystem::path requestFile;  ///< gets the requests that were sent; none when empty
  std::set<std::string> months;       ///< the months (YYYY-MM) that have transactions; all when empty
};

/// Imports income and expenses with all balances, saves the plan, and prints what the import took outside the
/// request processor. Error when the import failed.
void RunImport(const ImportRun& run);

}  // namespace krnqb::bench
