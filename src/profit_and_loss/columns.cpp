#include "profit_and_loss/columns.h"

#include <fmt/format.h>

#include <array>
#include <string>

#include "profit_and_loss/messages.h"
#include "profit_and_loss/periods.h"
#include "profit_and_loss/words.h"

namespace krnqb::profit_and_loss {
namespace {

struct FieldTitle {
  std::string_view title;
  DetailField field;
};

constexpr std::array fieldTitles{
    FieldTitle{"Type", DetailField::Type},
    FieldTitle{"TxnType", DetailField::Type},
    FieldTitle{"Transaction Type", DetailField::Type},
    FieldTitle{"Date", DetailField::Date},
    FieldTitle{"TxnDate", DetailField::Date},
    FieldTitle{"Num", DetailField::Number},
    FieldTitle{"Number", DetailField::Number},
    FieldTitle{"RefNumber", DetailField::Number},
    FieldTitle{"Name", DetailField::Name},
    FieldTitle{"Memo", DetailField::Memo},
    FieldTitle{"Memo/Description", DetailField::Memo},
    FieldTitle{"Account", DetailField::Account},
    FieldTitle{"Amount", DetailField::Amount},
};

void AddColumn(const CapturedReport& report, std::size_t position, StatementColumn column,
               AmountColumns& result) {
  for (const StatementColumn& other : result.columns) {
    if (column.Overlaps(other)) {
      Refuse(
          report.document,
          fmt::format("the columns {} and {} cover the same time", Quoted(other.title), Quoted(column.title)),
          "export the report with one column a month, or with a total only");
    }
  }
  if (result.columns.size() == mostAmountColumns) {
    Refuse(report.document, fmt::format("the report has more than {} columns of amounts", mostAmountColumns),
           "export fewer months");
  }
  result.columns.push_back(std::move(column));
  result.positions.push_back(position);
}

}  // namespace

std::optional<DetailField> DetailFieldOf(std::string_view title) {
  for (const FieldTitle& known : fieldTitles) {
    if (SameText(title, known.title)) return known.field;
  }
  return std::nullopt;
}

bool IsTotalTitle(std::string_view title) {
  return SameText(title, "Total") || SameText(title, "Amount");
}

AmountColumns ReadAmountColumns(const CapturedReport& report) {
  AmountColumns result;
  std::optional<std::size_t> untitled;
  for (std::size_t position = report.firstAmount; position < report.columns.size(); ++position) {
    const ReportColumn& column = report.columns[position];
    const std::string_view title = Trimmed(column.title);
    if (title.empty()) {
      if (SameText(column.type, "Amount")) untitled = position;
    } else if (const std::optional<DayRange> days = ReadPeriod(title)) {
      AddColumn(report, position, ColumnOf(title, *days), result);
    } else if (IsTotalTitle(title) && !result.total) {
      result.total = position;
    } else {
      Refuse(report.document,
             fmt::format("column {} is neither a month such as \"Jan 2002\" nor a total", Quoted(title)),
             "export the report with one column a month, or with a total only");
    }
  }
  if (!result.columns.empty()) return result;
  // The only column covers the time of the report.
  const std::optional<std::size_t> only = result.total ? result.total : untitled;
  if (!only) {
    Refuse(report.document, "the report has no columns of amounts",
           "export the report with one column a month, or with a total only");
  }
  const std::string_view title = Trimmed(report.columns[*only].title);
  const std::optional<DayRange> days = ReadPeriod(report.period);
  AddColumn(
      report, *only,
      days ? ColumnOf(title, *days) : StatementColumn{.title = std::string(title), .days = {}, .month = {}},
      result);
  result.total.reset();
  return result;
}

}  // namespace krnqb::profit_and_loss
