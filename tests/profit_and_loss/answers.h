#pragma once

#include <string>
#include <string_view>

namespace krnqb::profit_and_loss {

/// Returns a qbXML response with one answer to a request for a summary report. `columns` and `rows` are XML.
inline std::string SummaryAnswer(std::string_view columns, std::string_view rows,
                                 std::string_view subtitle = "January through February 2002",
                                 std::string_view basis = "Accrual") {
  std::string answer =
      "<?xml version=\"1.0\" ?>\n<QBXML>\n<QBXMLMsgsRs>\n"
      "<GeneralSummaryReportQueryRs statusCode=\"0\" statusSeverity=\"Info\" statusMessage=\"Status OK\">\n"
      "<ReportRet>\n<ReportTitle>Profit &amp; Loss</ReportTitle>\n<ReportSubtitle>";
  answer.append(subtitle).append("</ReportSubtitle>\n<ReportBasis>").append(basis).append("</ReportBasis>\n");
  answer.append(columns).append("<ReportData>\n").append(rows);
  answer += "</ReportData>\n</ReportRet>\n</GeneralSummaryReportQueryRs>\n</QBXMLMsgsRs>\n</QBXML>\n";
  return answer;
}

inline std::string Column(int id, std::string_view title, std::string_view type = "Amount") {
  std::string column = "<ColDesc colID=\"" + std::to_string(id) + "\" dataType=\"AMTTYPE\">\n";
  column.append("<ColTitle titleRow=\"1\" value=\"").append(title).append("\" />\n<ColType>");
  column.append(type).append("</ColType>\n</ColDesc>\n");
  return column;
}

inline std::string Months() {
  return Column(1, "", "Blank") + Column(2, "Jan 02") + Column(3, "Feb 02") + Column(4, "TOTAL");
}

}  // namespace krnqb::profit_and_loss
