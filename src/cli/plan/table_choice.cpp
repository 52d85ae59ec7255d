#include "cli/plan/table_choice.h"

#include <fmt/format.h>

#include <vector>

#include "cli/console/failure.h"
#include "cli/console/nearest_names.h"
#include "krnqb/keyed_collection.h"
#include "plan_file/headings.h"

namespace krnqb::cli {
namespace {

Failure NoSuchTable(const std::string& file, const std::string& typed, const std::vector<std::string>& ids) {
  std::vector<std::string> titles;
  for (const std::string& id : ids) titles.push_back(plan_file::TableTitle(id));
  std::vector<std::string> nearest = NearestNames(typed, titles);
  if (nearest.empty()) nearest = NearestNames(typed, ids);
  std::string remedy = "the plan has no tables";
  if (!nearest.empty()) {
    remedy = fmt::format("did you mean {}?", AlternativesText(nearest));
  } else if (!titles.empty()) {
    remedy = fmt::format("its tables are \"{}\"", fmt::join(titles, "\", \""));
  }
  return CommandFailure("showing the plan failed", fmt::format("{} has no table \"{}\"", file, typed),
                        remedy);
}

}  // namespace

std::optional<std::string> ChosenTable(const plan_file::PlanFile& plan, const std::string& file,
                                       const std::optional<std::string>& typed) {
  if (!typed) return std::nullopt;
  const std::string folded = FoldedKey(*typed);
  const std::vector<std::string> ids = plan.TableIds();
  std::vector<std::string> titled;
  for (const std::string& id : ids) {
    if (id == *typed) return id;
    const bool named = FoldedKey(plan_file::TableTitle(id)) == folded || FoldedKey(id) == folded;
    if (named) titled.push_back(id);
  }
  if (titled.empty()) throw NoSuchTable(file, *typed, ids);
  if (titled.size() > 1) {
    throw CommandFailure("showing the plan failed", fmt::format("{} has several tables \"{}\"", file, *typed),
                         fmt::format("give the id: {}", AlternativesText(titled)));
  }
  return titled.front();
}

}  // namespace krnqb::cli
