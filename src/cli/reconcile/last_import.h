#pragma once

#include <filesystem>
#include <optional>

#include "plan_file/history/entry.h"

namespace krnqb::cli {

/// The last import into a plan, as its history describes it.
struct KnownImport {
  plan_file::ImportFacts facts;
  bool asWritten = false;  ///< whether the plan is still what the import wrote
};

/// Returns the import whose result a plan is; nullopt if its history does not know one.
std::optional<KnownImport> ReadLastImport(const std::filesystem::path& plan);

}  // namespace krnqb::cli
