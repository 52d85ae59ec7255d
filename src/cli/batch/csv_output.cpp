#include <fmt/format.h>

#include <initializer_list>

#include "cli/batch/outputs.h"
#include "files/csv_text.h"

namespace krnqb::cli {
namespace {

std::string HeadingLine() {
  files::CsvLine line;
  for (const std::string_view heading :
       {"name", "written_utc", "result", "done", "company", "company_path", "plan", "period_from",
        "rows_added", "cells_changed", "formulas_cleared", "left_out", "sum_left_out", "elapsed_ms",
        "warnings", "reason", "remedy"}) {
    line.Figure(heading);
  }
  return line.Line();
}

std::string ImportLine(const ImportResultFile& import) {
  std::string codes;
  for (const ResultWarning& warning : import.warnings) codes += (codes.empty() ? "" : " ") + warning.code;
  files::CsvLine line;
  line.Text(import.name)
      .Figure(TimeText(import.written))
      .Figure(import.result)
      .Figure(import.done ? "yes" : "no")
      .Text(import.companyName)
      .Text(import.companyPath)
      .Text(import.plan)
      .Text(import.periodFrom);
  for (const std::int64_t count :
       {import.rowsAdded, import.cellsChanged, import.formulasCleared, import.amountsLeftOut}) {
    line.Figure(fmt::format("{}", count));
  }
  line.Figure(import.sumLeftOut ? import.sumLeftOut->PlainText() : "")
      .Figure(fmt::format("{}", import.milliseconds))
      .Text(codes)
      .Text(import.reason)
      .Text(import.remedy);
  return line.Line();
}

}  // namespace

std::string OverviewCsv(const BatchOverview& overview) {
  std::string text = HeadingLine();
  for (const ImportResultFile& import : overview.imports) text += ImportLine(import);
  return text;
}

}  // namespace krnqb::cli
