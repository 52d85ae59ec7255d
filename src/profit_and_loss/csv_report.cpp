#include "profit_and_loss/csv_report.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "profit_and_loss/amount_texts.h"
#include "profit_and_loss/columns.h"
#include "profit_and_loss/csv_lines.h"
#include "profit_and_loss/labels.h"
#include "profit_and_loss/messages.h"
#include "profit_and_loss/periods.h"
#include "profit_and_loss/words.h"

namespace krnqb::profit_and_loss {
namespace {

constexpr std::size_t depthOfColumn = 1000;  // deeper than any number of leading blanks that is counted

// Where the column titles are.
struct Header {
  std::size_t record = 0;
  std::size_t firstAmount = 0;  // the position of the first column that is not one of labels
  bool detail = false;
};

bool IsColumnTitle(std::string_view text) {
  return ReadPeriod(text).has_value() || IsTotalTitle(text);
}

std::optional<std::size_t> FirstFieldPosition(const std::vector<std::string>& cells) {
  std::optional<std::size_t> first;
  bool type = false;
  bool date = false;
  bool amount = false;
  for (std::size_t position = 0; position < cells.size(); ++position) {
    const std::optional<DetailField> field = DetailFieldOf(Trimmed(cells[position]));
    if (!field) continue;
    if (!first) first = position;
    type = type || field == DetailField::Type;
    date = date || field == DetailField::Date;
    amount = amount || field == DetailField::Amount;
  }
  return type && date && amount ? first : std::nullopt;
}

bool HasAmount(const CsvRecord& record) {
  return std::any_of(record.cells.begin() + 1, record.cells.end(),
                     [](const std::string& cell) { return AmountTexts::IsAmount(cell); });
}

// The titles of a summary report are the last ones above the first amounts: a title line may name a month
// too.
std::optional<Header> FindHeader(const std::vector<CsvRecord>& records) {
  std::optional<Header> header;
  for (std::size_t index = 0; index < records.size(); ++index) {
    const std::vector<std::string>& cells = records[index].cells;
    if (const std::optional<std::size_t> first = FirstFieldPosition(cells))
      return Header{.record = index, .firstAmount = *first, .detail = true};
    const auto title = std::find_if(cells.begin() + 1, cells.end(), IsColumnTitle);
    if (title != cells.end()) {
      header = Header{.record = index, .firstAmount = static_cast<std::size_t>(title - cells.begin())};
    } else if (header && HasAmount(records[index])) {
      break;
    }
  }
  return header;
}

void ReadBasis(std::string_view text, CapturedReport& report) {
  for (const std::string_view basis : {"Accrual", "Cash"}) {
    const bool named = BeginsWith(text, std::string(basis) + " Basis") ||
                       SameText(text, "Basis: " + std::string(basis)) ||
                       SameText(text, "Report Basis: " + std::string(basis));
    if (named && report.basis.empty()) report.basis = basis;
  }
}

bool IsBasis(std::string_view text) {
  return Contains(text, "cash basis") || Contains(text, "accrual basis") || Contains(text, "basis: ");
}

bool IsTimeOfPrinting(std::string_view text) {
  const bool clock =
      text.find(':') != std::string_view::npos && !text.empty() && text.front() >= '0' && text.front() <= '9';
  return clock || ReadDate(text).has_value();
}

bool IsTitle(std::string_view text) {
  const bool profit = Contains(text, "profit") && Contains(text, "loss");
  return profit || Contains(text, "income statement") || Contains(text, "balance sheet") ||
         Contains(text, "trial balance");
}

void ReadTitle(std::string_view text, CapturedReport& report) {
  if (IsBasis(text)) {
    ReadBasis(text, report);
  } else if (ReadPeriod(text)) {
    report.period = text;
  } else if (report.title.empty() && IsTitle(text)) {
    report.title = text;
  } else if (report.company.empty()) {
    report.company = text;
  }
}

// The lines above the column titles: company, title, period and basis, in any order. A period may have been
// typed without the quotation marks that its comma needs.
void ReadTitles(const std::vector<CsvRecord>& records, std::size_t header, CapturedReport& report) {
  for (std::size_t index = 0; index < header; ++index) {
    std::string line;
    for (const std::string& cell : records[index].cells) {
      if (!Trimmed(cell).empty()) line.append(line.empty() ? "" : ", ").append(Trimmed(cell));
    }
    if (ReadPeriod(line)) {
      report.period = line;
      continue;
    }
    for (const std::string& cell : records[index].cells) {
      const std::string_view text = Trimmed(cell);
      if (!text.empty() && !IsTimeOfPrinting(text)) ReadTitle(text, report);
    }
  }
  for (std::size_t position = 0; position < report.firstAmount; ++position)
    ReadBasis(Trimmed(records[header].cells[position]), report);
}

// Returns the number of blanks before a label.
std::size_t Indentation(std::string_view label) {
  return std::min(static_cast<std::size_t>(Trimmed(label).data() - label.data()), depthOfColumn - 1);
}

// Returns a label on one line; spreadsheets may break it.
std::string OneLine(std::string_view label) {
  std::string line;
  for (const char character : label) {
    const bool lineEnd = character == '\n' || character == '\r';
    if (!lineEnd) {
      line += character;
    } else if (!line.ends_with(' ')) {
      line += ' ';
    }
  }
  return line;
}

void ReadLabel(const CsvRecord& record, const CapturedReport& report, ReportRow& row) {
  for (std::size_t position = 0; position < std::min(report.firstAmount, record.cells.size()); ++position) {
    const std::string_view label = Trimmed(record.cells[position]);
    if (label.empty()) continue;
    if (!row.label.empty()) {
      Refuse(PlaceOf(report, record.line),
             fmt::format("there are two labels, {} and {}", Quoted(row.label), Quoted(label)),
             "leave only the account's name before the columns of amounts");
    }
    row.label = OneLine(label);
    row.depth = position * depthOfColumn + Indentation(record.cells[position]);
  }
}

// Some programs write a dash for no amount.
bool IsDash(std::string_view text) {
  return text == "-" || text == "$-" || text == "$ -" || text == "\u2013";
}

void ReadCells(CsvRecord& record, const CapturedReport& report, ReportRow& row) {
  for (std::size_t position = report.firstAmount; position < record.cells.size(); ++position) {
    const std::string_view text = Trimmed(record.cells[position]);
    if (text.empty() || (!report.detail && IsDash(text))) continue;
    row.cells.emplace_back(position, text);
  }
}

// In a detail report every label is a heading or that of a total: amounts are those of transactions.
RowKind DetailKind(const ReportRow& row) {
  if (row.label.empty()) return RowKind::Account;
  const bool total = TotalledLabel(row.label) || ClosingLineOf(row.label) || !row.cells.empty();
  return total ? RowKind::Total : RowKind::Heading;
}

CapturedReport Capture(std::string_view document, std::vector<CsvRecord> records, const Header& header) {
  CapturedReport report;
  report.document = document;
  report.rowWord = "line";
  report.detail = header.detail;
  report.firstAmount = header.firstAmount;
  ReadTitles(records, header.record, report);
  for (const std::string& title : records[header.record].cells)
    report.columns.push_back({.title = std::string(Trimmed(title)), .type = {}});
  std::optional<std::size_t> depth;
  for (std::size_t index = header.record + 1; index < records.size(); ++index) {
    ReportRow row;
    row.number = records[index].line;
    ReadLabel(records[index], report, row);
    ReadCells(records[index], report, row);
    records[index].cells = {};
    if (row.cells.empty() && IsBasis(row.label)) {
      ReadBasis(row.label, report);
      continue;
    }
    if (report.detail) row.kind = DetailKind(row);
    if (!row.label.empty()) {
      if (depth.value_or(row.depth) != row.depth) report.indented = true;
      depth = row.depth;
    }
    report.rows.push_back(std::move(row));
  }
  return report;
}

[[noreturn]] void RefuseFault(std::string_view document, const CsvFault& fault) {
  Refuse(fmt::format("{}: line {}", document, fault.line), fault.what, fault.advice);
}

}  // namespace

CapturedReport CaptureCsvReport(std::string_view document, std::string_view text) {
  std::optional<CsvFault> fault;
  for (const char separator : {',', ';'}) {
    CsvText csv = ReadCsv(text, separator);
    if (const std::optional<Header> header = FindHeader(csv.records)) {
      if (csv.fault) RefuseFault(document, *csv.fault);
      CapturedReport report = Capture(document, std::move(csv.records), *header);
      if (separator == ';') report.notation = AmountNotation::PointOrComma;
      return report;
    }
    if (!fault) fault = csv.fault;
  }
  if (fault) RefuseFault(document, *fault);
  Refuse(document, R"(no line has column titles such as "Jan 2002" or "TOTAL", or Type, Date and Amount)",
         R"(give a profit and loss as CSV with "," or ";", or QuickBooks' answer to a report request)");
}

}  // namespace krnqb::profit_and_loss
