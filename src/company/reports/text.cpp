#include "company/reports/text.h"

#include <fmt/format.h>

#include <array>
#include <iterator>

#include "company/records/amount.h"
#include "company/records/ascii.h"

namespace krnqb::company {
namespace {

constexpr std::array<std::string_view, 4> rowElements = {"TextRow", "DataRow", "SubtotalRow", "TotalRow"};

class ReportWriter {
 public:
  explicit ReportWriter(std::string& output) : output_(output) {}

  void Write(const SummaryReport& report) {
    output_ += "<ReportRet>\n";
    Element("ReportTitle", report.title);
    Element("ReportSubtitle", report.subtitle);
    Element("ReportBasis", "Accrual");
    Append("<NumRows>{}</NumRows>\n<NumColumns>{}</NumColumns>\n<NumColTitleRows>1</NumColTitleRows>\n",
           report.rows.size(), report.columnTitles.size() + 1);
    Columns(report.columnTitles);
    Rows(report.rows);
    output_ += "</ReportRet>\n";
  }

 private:
  template <typename... Values>
  void Append(fmt::format_string<Values...> form, Values&&... values) {
    fmt::format_to(std::back_inserter(output_), form, std::forward<Values>(values)...);
  }

  void Element(std::string_view name, std::string_view text) {
    Append("<{}>", name);
    AppendAsciiText(output_, text);
    Append("</{}>\n", name);
  }

  void Value(std::string_view value, std::string_view end) {
    output_ += R"( value=")";
    AppendAsciiText(output_, value);
    Append("\"{}", end);
  }

  void Columns(const std::vector<std::string>& titles) {
    output_ +=
        "<ColDesc colID=\"1\" dataType=\"STRTYPE\">\n<ColTitle titleRow=\"1\" />\n<ColType>Blank</ColType>\n"
        "</ColDesc>\n";
    int id = 1;
    for (const std::string& title : titles) {
      Append("<ColDesc colID=\"{}\" dataType=\"AMTTYPE\">\n<ColTitle titleRow=\"1\"", ++id);
      Value(title, " />\n<ColType>Amount</ColType>\n</ColDesc>\n");
    }
  }

  void Rows(const std::vector<ReportRow>& rows) {
    if (rows.empty()) {
      output_ += "<ReportData />\n";
      return;
    }
    output_ += "<ReportData>\n";
    int number = 0;
    for (const ReportRow& row : rows) Row(row, ++number);
    output_ += "</ReportData>\n";
  }

  void Row(const ReportRow& row, int number) {
    const std::string_view element = rowElements.at(static_cast<std::size_t>(row.kind));
    Append("<{} rowNumber=\"{}\"", element, number);
    if (row.kind == ReportRowKind::Text) {
      Value(row.label, " />\n");
      return;
    }
    output_ += ">\n";
    if (row.account) {
      output_ += "<RowData rowType=\"account\"";
      Value(*row.account, " />\n");
    }
    output_ += "<ColData colID=\"1\"";
    Value(row.label, " />\n");
    int id = 1;
    for (const std::int64_t amount : row.amounts) {
      Append("<ColData colID=\"{}\" value=\"{}\" />\n", ++id, AmountText(amount));
    }
    Append("</{}>\n", element);
  }

  std::string& output_;
};

}  // namespace

void AppendReport(std::string& output, const SummaryReport& report) {
  ReportWriter(output).Write(report);
}

}  // namespace krnqb::company
