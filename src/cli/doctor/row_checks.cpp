#include "cli/doctor/row_checks.h"

#include <fmt/format.h>

#include "cli/doctor/plan_layout.h"
#include "krnqb/keyed_collection.h"
#include "plan_file/headings.h"
#include "plan_file/views/planned_names.h"

namespace krnqb::cli {
namespace {

using plan_file::PlanBlock;
using plan_file::PlanRow;

constexpr std::size_t plannedCells = 14;  // name, rate, 12 months
constexpr std::size_t actualCells = 13;

std::string NameOf(const PlanRow& row) {
  return row.empty() || plan_file::IsNamelessCell(row.front()) ? std::string() : row.front();
}

// What an import finds in the rows of all twins.
class RowFindings {
 public:
  void Compare(const PlanBlock& planned, const PlanBlock& actual, const BlockTwins& twins) {
    const std::string plannedTitle = plan_file::TableTitle(std::string(twins.plannedTable));
    const std::string actualTitle = plan_file::TableTitle(std::string(twins.actualTable));
    for (std::size_t row = 0; row < std::min(planned.rows.size(), actual.rows.size()); ++row) {
      const std::string plannedName = NameOf(planned.rows[row]);
      const std::string actualName = NameOf(actual.rows[row]);
      if (plannedName.empty() || actualName.empty() || FoldedKey(plannedName) == FoldedKey(actualName))
        continue;
      misaligned.push_back(fmt::format(R"(row {} of the block {} is "{}" in {}, but "{}" in {})", row + 1,
                                       plan_file::BlockTitle(planned.id), plannedName, plannedTitle,
                                       actualName, actualTitle));
    }
    if (planned.rows.size() == actual.rows.size()) return;
    misaligned.push_back(fmt::format("the block {} has {} rows in {}, but {} in {}",
                                     plan_file::BlockTitle(planned.id), planned.rows.size(), plannedTitle,
                                     actual.rows.size(), actualTitle));
  }

  // Closing rows receive no amounts.
  void Measure(const PlanBlock& block, std::string_view table, std::size_t cells, std::size_t closingRows) {
    const std::string title = plan_file::TableTitle(std::string(table));
    for (std::size_t row = 0; row < block.rows.size(); ++row) {
      const PlanRow& found = block.rows[row];
      const bool closes = row + closingRows >= block.rows.size();
      const std::string name =
          NameOf(found).empty() ? fmt::format("row {}", row + 1) : fmt::format("\"{}\"", found[0]);
      if (found.empty()) {
        withoutCells.push_back(fmt::format("{} of the block {} in {} has no cell", name,
                                           plan_file::BlockTitle(block.id), title));
      } else if (found.size() < cells && !closes) {
        tooShort.push_back(fmt::format("{} in {} has {} of {} cells", name, title, found.size(), cells));
      }
    }
  }

  std::vector<std::string> misaligned;
  std::vector<std::string> withoutCells;
  std::vector<std::string> tooShort;
};

}  // namespace

void CheckRows(const plan_file::PlanFile& plan, Checkup& checkup) {
  const auto product = plan.Product();
  if (!product) {
    checkup.Omit({"twins", "cells"}, "the plan's edition is unknown");
    return;
  }
  const plan_file::PlanContent content = plan_file::ReadPlanContent(plan);
  RowFindings findings;
  for (const BlockTwins& twins : TwinsOf(*product)) {
    const PlanBlock* const planned = FindBlock(content, twins.plannedTable, twins.plannedBlock);
    const PlanBlock* const actual = FindBlock(content, twins.actualTable, twins.actualBlock);
    if (planned != nullptr) findings.Measure(*planned, twins.plannedTable, plannedCells, twins.closingRows);
    if (actual != nullptr) findings.Measure(*actual, twins.actualTable, actualCells, twins.closingRows);
    if (planned != nullptr && actual != nullptr) findings.Compare(*planned, *actual, twins);
  }
  if (findings.misaligned.empty()) {
    checkup.Ok("twins", "planned and actual rows are at the same places");
  } else {
    checkup.Warn("twins", FirstOf(findings.misaligned),
                 "align the rows of the two tables, or amounts come into rows of other names");
  }
  if (!findings.withoutCells.empty()) {
    checkup.Fail("cells", FirstOf(findings.withoutCells), "give the row its cells, or delete it");
  } else if (!findings.tooShort.empty()) {
    checkup.Warn("cells", FirstOf(findings.tooShort), "add the missing cells, or their months are left out");
  } else {
    checkup.Ok("cells", "every row has a cell for every month");
  }
}

}  // namespace krnqb::cli
