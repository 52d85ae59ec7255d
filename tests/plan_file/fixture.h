#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "plan_file/file.h"
#include "temporary_folder.h"
#include "thrown_error.h"

namespace krnqb::plan_file {

using tests::ErrorOf;
using tests::ReadText;
using tests::TemporaryFolder;
using tests::WriteText;

inline constexpr std::string_view expenseTable = "20000000000000000000000000000600";
inline constexpr std::string_view actualExpenseTable = "21000000000000000000000000000600";

/// Returns a small plan with white space, a comment, a CDATA section and single quotes, as a planning program
/// may write them.
std::string SmallPlanText();

/// Marks every table of a plan with one version, in `lastsavedid` and in the first cell of its first block.
void MarkVersion(PlanFile& plan, int version);

/// Returns the version with which every table of the plan at `file` is marked; nullopt if the plan cannot be
/// opened or its tables are marked with different versions.
std::optional<int> WholeVersion(const std::filesystem::path& file);

}  // namespace krnqb::plan_file
