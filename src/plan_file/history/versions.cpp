#include "plan_file/history/versions.h"

#include "krnqb/error.h"

namespace krnqb::plan_file {
namespace {

ListedVersion Listed(const HistoryFolder& folder, std::int32_t number) {
  ListedVersion listed{.number = number, .entry = std::nullopt, .fault = {}};
  try {
    listed.entry = folder.Describe(number);
    folder.Version(*listed.entry);
  } catch (const Error& error) {
    listed.fault = error.Description();
  }
  return listed;
}

}  // namespace

std::vector<ListedVersion> ListVersions(const HistoryFolder& folder, const HistoryState& state) {
  std::vector<ListedVersion> versions;
  for (const std::int32_t number : state.numbers) versions.push_back(Listed(folder, number));
  return versions;
}

}  // namespace krnqb::plan_file
