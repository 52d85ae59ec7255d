#include <fmt/format.h>

#include <memory>

#include "cli/console/attempt.h"
#include "cli/console/changes_json.h"
#include "cli/console/json_text.h"
#include "cli/console/text_table.h"
#include "cli/plan/history_commands.h"
#include "cli/plan/version_text.h"
#include "files/followed_path.h"
#include "files/reading.h"
#include "plan_file/changes.h"
#include "plan_file/history/digest.h"
#include "plan_file/history/undo.h"
#include "plan_file/views/differences.h"
#include "support/path_text.h"

namespace krnqb::cli {
namespace {

namespace fs = std::filesystem;

using plan_file::CellDifference;
using plan_file::PlanFile;
using plan_file::RowDifference;
using plan_file::TableDifference;

// One of the two states of a plan that are compared.
struct Side {
  std::string name;
  std::optional<std::int32_t> version;  // nullopt: the plan itself
  std::shared_ptr<PlanFile> plan;
};

struct Sides {
  Side before;
  Side after;
};

Side KeptSide(const plan_file::HistoryFolder& folder, const plan_file::HistoryState& state,
              std::int32_t number) {
  const plan_file::HistoryEntry entry = EntryOf(folder, state, number);
  static_cast<void>(folder.Version(entry));  // throws if it is not the version that was kept
  return {VersionName(entry), number, PlanFile::Open(folder.VersionFile(number))};
}

Sides OpenSides(const PlanDiffOptions& options) {
  files::SystemFileOperations operations;
  const fs::path plan = files::FollowedPlanPath(PathFrom(options.file));
  const plan_file::HistoryFolder folder(plan, plan_file::HistoryUse::Reading, operations);
  const plan_file::HistoryState state =
      StateOf(folder, plan_file::DigestOf(files::ReadFile(plan, "cannot open the plan").bytes));
  const std::int32_t from = options.from ? *options.from : VersionBeforeLastImport(state, plan);
  return {KeptSide(folder, state, from), options.to ? KeptSide(folder, state, *options.to)
                                                    : Side{options.file, std::nullopt, PlanFile::Open(plan)}};
}

std::string CellText(const std::optional<std::string>& cell) {
  constexpr std::string_view emptyCellSign = "·";
  if (!cell) return "(no row)";
  return *cell == plan_file::emptyCellText ? std::string(emptyCellSign) : *cell;
}

bool IsClearedFormula(const CellDifference& cell) {
  return cell.before && plan_file::IsFormula(*cell.before) && cell.after == plan_file::emptyCellText;
}

bool ContinuesWith(const CellDifference& cell, const CellDifference& next) {
  const bool equal = next.before == cell.before && next.after == cell.after;
  return next.column == cell.column + 1 && (equal || (IsClearedFormula(cell) && IsClearedFormula(next)));
}

// Adds the cells of a row, neighbours with the same texts and cleared formulas in one line: "Jan to Dec".
void AddCells(TextTable& text, const RowDifference& row) {
  for (auto first = row.cells.begin(); first != row.cells.end();) {
    auto last = first;
    while (last + 1 != row.cells.end() && ContinuesWith(*last, *(last + 1))) ++last;
    const bool formulas = first->before != last->before;
    text.AddRow({row.block, row.row,
                 first == last ? first->heading : fmt::format("{} to {}", first->heading, last->heading),
                 formulas ? "(formulas)" : CellText(first->before), CellText(first->after)});
    first = last + 1;
  }
}

std::string RowsText(const TableDifference& table) {
  using enum Alignment;
  TextTable text({Left, Left, Left, Right, Right});
  text.AddRow({"Block", "Row", "Column", "Before", "After"});
  for (const RowDifference& row : table.rows) {
    AddCells(text, row);
    if (!row.cells.empty()) continue;
    const bool added = row.kind == RowDifference::Kind::Added;
    text.AddRow({row.block, row.row, "", added ? "(no row)" : "(empty)", added ? "(empty)" : "(no row)"});
  }
  return text.Text("  ");
}

std::string DifferencesText(const Sides& sides, const std::vector<TableDifference>& tables) {
  if (tables.empty()) {
    return fmt::format("No cell differs between {} and {}.\n", OneLine(sides.before.name),
                       OneLine(sides.after.name));
  }
  std::string text = fmt::format("From {} to {}:\n", OneLine(sides.before.name), OneLine(sides.after.name));
  for (const TableDifference& table : tables) text += '\n' + OneLine(table.title) + '\n' + RowsText(table);
  return text;
}

Json SideJson(const Side& side) {
  return {{"version", side.version ? Json(*side.version) : Json()}, {"path", TextOfPath(side.plan->Path())}};
}

std::string DifferencesJson(const Sides& sides) {
  const PlanFile& after = *sides.after.plan;
  return JsonText(
      {{"result", "done"},
       {"before", SideJson(sides.before)},
       {"after", SideJson(sides.after)},
       {"changes", ChangesJson(plan_file::CompareTables(*sides.before.plan, after), after.Start())}});
}

std::string DifferencesText(const Sides& sides) {
  const std::vector<TableDifference> tables =
      plan_file::NamedDifferences(plan_file::ReadPlanContent(*sides.before.plan),
                                  plan_file::ReadPlanContent(*sides.after.plan), sides.after.plan->Start());
  return DifferencesText(sides, tables);
}

}  // namespace

ExitCode Run(const PlanDiffOptions& options, const Console& console) {
  const Sides sides = Attempt([&] { return OpenSides(options); });
  console.out << (options.json ? DifferencesJson(sides) + '\n' : DifferencesText(sides));
  return ExitCode::Done;
}

}  // namespace krnqb::cli
