#include "cli/doctor/plan_checks.h"

#include <fmt/format.h>

#include <limits>
#include <vector>

#include "cli/console/failure.h"
#include "cli/doctor/plan_layout.h"
#include "cli/import/file_guard.h"
#include "plan/table_identifiers.h"
#include "plan_file/content.h"
#include "plan_file/headings.h"
#include "support/number_text.h"
#include "support/path_text.h"

namespace krnqb::cli {
namespace {

using plan_file::PlanBlock;
using plan_file::PlanContent;

// The files must differ as those of an import must.
void RequireOwnFiles(const CompanyChoice& company, const std::string& planFile) {
  ImportCommand import;
  static_cast<CompanyChoice&>(import) = company;
  import.planFile = planFile;
  import.quiet = true;
  CheckImportFiles(import);
}

bool IsStartRow(const std::string& text) {
  const auto number = ConvertToDouble(text);
  return number && *number >= 1 && *number <= std::numeric_limits<std::int32_t>::max();
}

// What is wrong with a table that an import writes; empty if nothing is.
std::string FaultOf(const PlanContent& content, const NeededBlock& needed) {
  const auto* const table = FindTable(content, needed.table);
  const std::string title = plan_file::TableTitle(std::string(needed.table));
  if (table == nullptr) return fmt::format("the table {} is missing", title);
  const PlanBlock* const block = FindBlock(content, needed.table, needed.block);
  if (block == nullptr)
    return fmt::format("the block {} of {} is missing", plan_file::BlockTitle(needed.block), title);
  if (block->rows.empty())
    return fmt::format("the block {} of {} has no row", plan_file::BlockTitle(needed.block), title);
  return {};
}

// The planned blocks whose formulas would refer to the wrong rows.
std::vector<std::string> FalseStarts(const PlanContent& content, const std::vector<NeededBlock>& blocks) {
  std::vector<std::string> faults;
  for (const NeededBlock& needed : blocks) {
    if (!needed.planned) continue;
    const PlanBlock* const block = FindBlock(content, needed.table, needed.block);
    if (block == nullptr || IsStartRow(block->startRow)) continue;
    faults.push_back(
        fmt::format("the startrow of the block {} of {} is {}", plan_file::BlockTitle(needed.block),
                    plan_file::TableTitle(std::string(needed.table)),
                    block->startRow.empty() ? "missing" : fmt::format("\"{}\"", block->startRow)));
  }
  return faults;
}

}  // namespace

std::shared_ptr<plan_file::PlanFile> CheckPlan(const CompanyChoice& company, const std::string& planFile,
                                               Checkup& checkup) {
  std::shared_ptr<plan_file::PlanFile> plan;
  try {
    plan = plan_file::PlanFile::Open(PathFrom(planFile));
    RequireOwnFiles(company, planFile);
  } catch (...) {
    checkup.FailCaught("plan", "give another plan");
    return plan;
  }
  const auto product = plan->Product();
  const auto start = plan->Start();
  if (!product) {
    checkup.Fail("plan", fmt::format("{} does not state its edition", planFile),
                 "import with --product ald, bri or cor");
  } else if (!start) {
    checkup.Fail("plan", fmt::format("{} does not state its first month", planFile),
                 "import with --plan-start YYYY-MM");
  } else {
    checkup.Ok("plan", fmt::format("{} opens: edition {}, from {}", planFile,
                                   plan_file::ProductText(*product), plan_file::MonthOfYear(*start)));
  }
  return plan;
}

void CheckTables(const plan_file::PlanFile& plan, Checkup& checkup) {
  const auto product = plan.Product();
  if (!product) {
    checkup.Omit({"tables"}, "the plan's edition is unknown");
    return;
  }
  const PlanContent content = plan_file::ReadPlanContent(plan);
  const std::vector<NeededBlock> blocks = NeededBlocks(*product);
  std::vector<std::string> missing;
  for (const NeededBlock& needed : blocks) {
    std::string fault = FaultOf(content, needed);
    if (!fault.empty() && (missing.empty() || missing.back() != fault)) missing.push_back(std::move(fault));
  }
  if (!missing.empty()) {
    checkup.Fail("tables", FirstOf(missing),
                 "let the planning program write the plan again, or use a copy of it");
    return;
  }
  if (const auto faults = FalseStarts(content, blocks); !faults.empty()) {
    checkup.Warn("tables", FirstOf(faults), "correct startrow, or growth formulas refer to the wrong rows");
  } else if (*product != QBKRN_BRI && FindTable(content, table_id::pastPerformance) == nullptr) {
    checkup.Warn("tables", "the table Past performance is missing", "import without --past-performance");
  } else {
    checkup.Ok("tables",
               fmt::format("all tables of the edition {} are in the plan", plan_file::ProductText(*product)));
  }
}

}  // namespace krnqb::cli
