#include "cli/plan/commands.h"

#include <fmt/format.h>

#include <algorithm>

#include "cli/console/attempt.h"
#include "cli/console/interrupt_watch.h"
#include "cli/plan/json_output.h"
#include "plan_file/listing.h"
#include "plan_file/table_view.h"

namespace krnqb::cli {
namespace {

using plan_file::PlanFile;

void RequireTable(const PlanFile& plan, const ShowPlanOptions& options) {
  const std::vector<std::string> ids = plan.TableIds();
  if (!options.table || std::find(ids.begin(), ids.end(), *options.table) != ids.end()) return;
  throw CommandFailure("showing the plan failed",
                       fmt::format("{} has no table {}", options.file, *options.table),
                       ids.empty() ? std::string("the plan has no tables")
                                   : fmt::format("its tables are {}", fmt::join(ids, ", ")));
}

std::string Cells(const PlanFile& plan, const std::optional<std::string>& tableId) {
  plan_file::PlanContent content = plan_file::ReadPlanContent(plan);
  if (tableId) std::erase_if(content, [&](const auto& table) { return table.id != *tableId; });
  return plan_file::CellListing(content);
}

std::string Shown(const PlanFile& plan, const ShowPlanOptions& options) {
  if (options.json) return PlanJson(plan, options.table) + '\n';
  if (options.cells) return Cells(plan, options.table);
  return options.table ? plan_file::TableView(plan, *options.table) : plan_file::TableView(plan);
}

}  // namespace

CommandEnd Run(const NewPlanOptions& options, const Console& console) {
  // A signal that arrives while the file is created would leave its temporary file.
  InterruptWatch interrupts;
  interrupts.PassPointOfNoReturn();
  Attempt([&] { PlanFile::Create(options.file, options.product, options.start); });
  console.out << fmt::format("Created {}: plan of product {}, from {}.\n", options.file,
                             plan_file::ProductText(options.product),
                             plan_file::PlanStartText(options.start));
  return {ExitCode::Done, true};
}

ExitCode Run(const ShowPlanOptions& options, const Console& console) {
  if (options.cells && options.json)
    throw WrongUsage("--cells and --json are both given", "give one of them");
  const auto plan = Attempt([&] { return PlanFile::Open(options.file); });
  RequireTable(*plan, options);
  console.out << Shown(*plan, options);
  return ExitCode::Done;
}

}  // namespace krnqb::cli
