#include "cli/plan/commands.h"

#include <fmt/format.h>

#include <vector>

#include "cli/console/attempt.h"
#include "cli/console/interrupt_watch.h"
#include "cli/plan/json_output.h"
#include "cli/plan/table_choice.h"
#include "plan_file/listing.h"
#include "plan_file/views/table_view.h"
#include "support/path_text.h"

namespace krnqb::cli {
namespace {

using plan_file::PlanFile;

std::string Cells(const PlanFile& plan, const std::optional<std::string>& tableId) {
  plan_file::PlanContent content = plan_file::ReadPlanContent(plan);
  if (tableId) std::erase_if(content, [&](const auto& table) { return table.id != *tableId; });
  return plan_file::CellListing(content);
}

std::string Shown(const PlanFile& plan, const ShowPlanOptions& options, std::size_t width) {
  const std::optional<std::string> table = ChosenTable(plan, options.file, options.table);
  if (options.json) return PlanJson(plan, table) + '\n';
  if (options.cells) return Cells(plan, table);
  const plan_file::TableViewOptions view{
      .width = width, .cells = options.values ? plan_file::CellView::Values : plan_file::CellView::Texts};
  return table ? plan_file::TableView(plan, *table, view) : plan_file::TableView(plan, view);
}

void RequireOneForm(const ShowPlanOptions& options) {
  const auto require = [](bool first, bool second, std::string_view both) {
    if (first && second) throw WrongUsage(fmt::format("{} are both given", both), "give one of them");
  };
  require(options.cells, options.json, "--cells and --json");
  require(options.values, options.cells, "--values and --cells");
  require(options.values, options.json, "--values and --json");
}

}  // namespace

CommandEnd Run(const NewPlanOptions& options, const Console& console) {
  // A signal that arrives while the file is created would leave its temporary file.
  InterruptWatch interrupts;
  interrupts.PassPointOfNoReturn();
  Attempt([&] { PlanFile::Create(PathFrom(options.file), options.product, options.start); });
  console.out << fmt::format("Created {}: plan of product {}, from {}.\n", options.file,
                             plan_file::ProductText(options.product),
                             plan_file::PlanStartText(options.start));
  return {ExitCode::Done, true};
}

ExitCode Run(const ShowPlanOptions& options, const Console& console) {
  RequireOneForm(options);
  const auto plan = Attempt([&] { return PlanFile::Open(PathFrom(options.file)); });
  console.out << Shown(*plan, options, console.outWidth);
  return ExitCode::Done;
}

}  // namespace krnqb::cli
