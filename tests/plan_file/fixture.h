#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "krnqb/error.h"
#include "plan_file/file.h"

namespace krnqb::plan_file {

/// A folder of a test's own, removed with everything in it.
class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::filesystem::path& Path() const noexcept { return path_; }
  std::filesystem::path operator/(std::string_view name) const { return path_ / name; }

 private:
  std::filesystem::path path_;
};

void WriteText(const std::filesystem::path& file, std::string_view text);
std::string ReadText(const std::filesystem::path& file);

/// The error that an action ends with, or none.
template <typename Action>
std::optional<Error> ErrorOf(Action action) {
  try {
    action();
  } catch (const Error& error) {
    return error;
  }
  return std::nullopt;
}

inline constexpr std::string_view expenseTable = "20000000000000000000000000000600";
inline constexpr std::string_view actualExpenseTable = "21000000000000000000000000000600";

/// A small plan, with white space, a comment, a CDATA section and single quotes such as a planning program
/// may write.
std::string SmallPlanText();

/// Marks every table of a plan with one version, in `lastsavedid` and in the first cell of its first block.
void MarkVersion(PlanFile& plan, int version);

/// The version with which every table of the plan at `file` is marked; none when the plan does not open or
/// its tables are marked with several.
std::optional<int> WholeVersion(const std::filesystem::path& file);

}  // namespace krnqb::plan_file
