#include <fmt/format.h>

#include "cli/batch/outputs.h"
#include "html/elements.h"
#include "html/page.h"
#include "html/table.h"

namespace krnqb::cli {
namespace {

using html::Alignment;
using html::Cell;
using html::Fragment;
using html::Mark;
using html::Section;
using html::Table;

Cell TextCell(std::string_view text) {
  return {html::Text(text)};
}

Cell NameCell(std::string_view name) {
  return {html::Name(name)};
}

Cell CountCell(std::int64_t count) {
  const std::string text = fmt::format("{}", count);
  return {html::Text(text), text};
}

Fragment Introduction(const BatchOverview& overview) {
  const std::string counts = fmt::format("{} of {} imports are done, {} are not.", overview.done,
                                         overview.imports.size(), overview.NotDone());
  Fragment introduction =
      html::Box(overview.NotDone() == 0 ? Mark::Good : Mark::Bad, html::Paragraph(counts));
  introduction += html::Paragraph(html::Text("The results are in the folder ") + html::Name(overview.folder) +
                                  html::Text("."));
  return introduction;
}

Section NotDone(const BatchOverview& overview) {
  Table table{.caption = "Imports that are not done, the newest first",
              .columns = {{"Name", Alignment::Text},
                          {"Written (UTC)", Alignment::Text},
                          {"Result", Alignment::Text},
                          {"Company", Alignment::Text},
                          {"Plan", Alignment::Text},
                          {"Why", Alignment::Text},
                          {"What to do", Alignment::Text}},
              .rows = {},
              .name = "not-done"};
  for (const ImportResultFile& import : overview.imports) {
    if (import.done) continue;
    table.rows.push_back({.heading = NameCell(import.name),
                          .cells = {TextCell(TimeText(import.written)),
                                    {html::Badge(Mark::Bad, import.result), import.result},
                                    NameCell(CompanyText(import)),
                                    NameCell(PlanText(import)),
                                    NameCell(import.reason),
                                    NameCell(import.remedy)},
                          .name = import.name});
  }
  return {"not-done", "Not done", html::TableRegion(table)};
}

Section Warnings(const BatchOverview& overview) {
  Table table{.caption = "Warnings by code",
              .columns = {{"Code", Alignment::Text}, {"Imports"}, {"Names"}},
              .rows = {},
              .name = "warnings"};
  for (const WarningTotal& warning : overview.warnings) {
    table.rows.push_back({.heading = TextCell(warning.code),
                          .cells = {CountCell(static_cast<std::int64_t>(warning.imports)),
                                    CountCell(static_cast<std::int64_t>(warning.accounts))},
                          .name = warning.code});
  }
  return {"warnings", "Warnings", html::TableRegion(table)};
}

Section Totals(const BatchOverview& overview) {
  std::vector<html::Fact> facts;
  facts.reserve(overview.byResult.size());
  for (const auto& [word, count] : overview.byResult)
    facts.push_back({fmt::format("Imports: {}", word), html::Text(fmt::format("{}", count))});
  const auto add = [&](std::string name, const std::string& text) {
    facts.push_back({std::move(name), html::Text(text)});
  };
  add("Rows added", fmt::format("{}", overview.rowsAdded));
  add("Cells changed", fmt::format("{}", overview.cellsChanged));
  add("Formulas cleared", fmt::format("{}", overview.formulasCleared));
  add("Amounts left out", fmt::format("{}", overview.amountsLeftOut));
  add("Their sum", overview.sumLeftOut ? overview.sumLeftOut->Text() : "unknown");
  add("Time of all imports", fmt::format("{:.1f} s", static_cast<double>(overview.milliseconds) / 1000));
  return {"totals", "Totals", html::Facts(facts)};
}

Section Done(const BatchOverview& overview) {
  Table table{.caption = "Imports that are done, the newest first",
              .columns = {{"Name", Alignment::Text},
                          {"Written (UTC)", Alignment::Text},
                          {"Result", Alignment::Text},
                          {"Company", Alignment::Text},
                          {"Plan", Alignment::Text},
                          {"Rows"},
                          {"Cells"},
                          {"Left out"},
                          {"Warnings", Alignment::Text}},
              .rows = {},
              .name = "done"};
  for (const ImportResultFile& import : overview.imports) {
    if (!import.done) continue;
    std::string codes;
    for (const ResultWarning& warning : import.warnings) codes += (codes.empty() ? "" : ", ") + warning.code;
    table.rows.push_back({.heading = NameCell(import.name),
                          .cells = {TextCell(TimeText(import.written)),
                                    {html::Badge(Mark::Good, import.result), import.result},
                                    NameCell(CompanyText(import)),
                                    NameCell(PlanText(import)),
                                    CountCell(import.rowsAdded),
                                    CountCell(import.cellsChanged),
                                    CountCell(import.amountsLeftOut),
                                    TextCell(codes)},
                          .name = import.name});
  }
  return {"done", "Done", html::TableRegion(table)};
}

}  // namespace

std::string OverviewPage(const BatchOverview& overview) {
  return html::PageText(
      {.title = fmt::format("Imports: {} of {} done", overview.done, overview.imports.size()),
       .introduction = Introduction(overview),
       .sections = {NotDone(overview), Totals(overview), Warnings(overview), Done(overview)},
       .footer = "Written by krnqb summary. Times are those at which each result was written."});
}

}  // namespace krnqb::cli
