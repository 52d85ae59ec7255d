#include "profit_and_loss/qbxml_reports.h"

#include <fmt/format.h>

#include <charconv>
#include <cstddef>
#include <optional>
#include <utility>

#include "profit_and_loss/messages.h"
#include "profit_and_loss/words.h"
#include "xml/events.h"

namespace krnqb::profit_and_loss {
namespace {

constexpr std::string_view reportAdvice = "give QuickBooks' answer to a profit and loss request";
constexpr std::string_view tooLongAdvice = "give fewer months at once";
constexpr int leastWarning = 500;
constexpr int leastError = 1000;
constexpr std::size_t mostColumns = 512;
constexpr std::size_t mostReports = 1'000;

std::optional<std::size_t> NumberOf(std::string_view text) {
  std::size_t number = 0;
  const char* const end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, number);
  return result.ec == std::errc() && result.ptr == end ? std::optional(number) : std::nullopt;
}

std::optional<RowKind> RowKindOf(std::string_view name) {
  if (name == "TextRow") return RowKind::Heading;
  if (name == "DataRow") return RowKind::Account;
  if (name == "SubtotalRow" || name == "TotalRow") return RowKind::Total;
  return std::nullopt;
}

// Collects the reports while a document is parsed.
class ReportEvents final : public XmlEventHandler {
 public:
  explicit ReportEvents(std::string_view document) : document_(document) {}

  void StartElement(const XmlEventName& started, const XmlEventAttributes& attributes) override {
    const std::string_view name = started.Text();
    text_.clear();
    const std::size_t depth = ++depth_;
    if (depth == 1 && name != "QBXML") RefuseRoot(name);
    if (depth == 3) StartAnswer(name, attributes);
    if (!inReportAnswer_) return;
    if (name == "ReportRet" && depth == 4) {
      StartReport();
    } else if (inReport_) {
      StartInReport(name, attributes);
    }
    element_ = name;
  }

  void Text(std::string_view piece) override {
    if (inReport_) text_ += piece;
  }

  void EndElement() override {
    --depth_;
    if (inReport_) EndInReport();
    if (depth_ == 3) inReport_ = false;
    if (depth_ == 2) inReportAnswer_ = false;
    element_.clear();
    text_.clear();
  }

  std::vector<CapturedReport> Take() {
    if (!anyAnswer_) {
      Refuse(document_, "the document contains no answer to a report request", reportAdvice);
    }
    if (reports_.empty()) Refuse(document_, "QuickBooks' answer contains no report", reportAdvice);
    if (reports_.size() > 1) {
      for (std::size_t index = 0; index < reports_.size(); ++index)
        reports_[index].document = fmt::format("{}: report {}", document_, index + 1);
    }
    std::vector<std::string>& findings = reports_.front().findings;
    findings.insert(findings.begin(), findings_.begin(), findings_.end());
    return std::move(reports_);
  }

 private:
  CapturedReport& Report() { return reports_.back(); }

  [[noreturn]] void RefuseRoot(std::string_view name) const {
    if (SameText(name, "html")) Refuse(document_, "the document is an HTML page, not a report", reportAdvice);
    Refuse(document_, fmt::format("not a qbXML response: the root element is {}", Quoted(name)),
           reportAdvice);
  }

  void StartAnswer(std::string_view name, const XmlEventAttributes& attributes) {
    const bool summary = name == "GeneralSummaryReportQueryRs";
    const bool detail = name == "GeneralDetailReportQueryRs";
    inReportAnswer_ = summary || detail;
    if (!inReportAnswer_) return;
    anyAnswer_ = true;
    detail_ = detail;
    const std::string code = attributes.Find("statusCode").value_or("0");
    const std::string message = attributes.Find("statusMessage").value_or("");
    int number = 0;
    std::from_chars(code.data(), code.data() + code.size(), number);
    if (number >= leastError || attributes.Find("statusSeverity").value_or("") == "Error") {
      Refuse(document_,
             fmt::format("QuickBooks refused the report with status {}: {}", Quoted(code), Quoted(message)),
             "fix the cause in QuickBooks and capture the report again");
    }
    if (number >= leastWarning) {
      findings_.push_back(
          fmt::format("{}: QuickBooks answered with the warning {}: {}; the report may be incomplete",
                      document_, Quoted(code), Quoted(message)));
    }
  }

  void StartReport() {
    if (reports_.size() == mostReports) {
      Refuse(document_, fmt::format("the document contains more than {} reports", mostReports),
             tooLongAdvice);
    }
    inReport_ = true;
    reports_.emplace_back();
    Report().document = document_;
    Report().rowWord = "row";
    Report().detail = detail_;
    Report().columns.resize(1);
    // The first column of a summary report has the labels; a detail report may begin with any column.
    Report().firstAmount = detail_ ? 0 : 1;
  }

  void StartInReport(std::string_view name, const XmlEventAttributes& attributes) {
    if (const std::optional<RowKind> kind = RowKindOf(name)) {
      StartRow(*kind, attributes);
    } else if (name == "ColDesc") {
      column_ = Position(attributes);
      if (Report().columns.size() <= column_) Report().columns.resize(column_ + 1);
    } else if (name == "ColTitle") {
      AddTitle(attributes.Find("value").value_or(""));
    } else if (name == "RowData" && inRow_) {
      ReadRowData(attributes);
    } else if (name == "ColData" && inRow_) {
      ReadCell(attributes);
    }
  }

  void StartRow(RowKind kind, const XmlEventAttributes& attributes) {
    if (++rows_ > mostRows)
      Refuse(document_, fmt::format("the document contains more than {} rows", mostRows), tooLongAdvice);
    inRow_ = true;
    rowDepth_ = depth_;
    ReportRow& row = Report().rows.emplace_back();
    row.kind = kind;
    row.number = NumberOf(attributes.Find("rowNumber").value_or("")).value_or(Report().rows.size());
    row.label = Trimmed(attributes.Find("value").value_or(""));
  }

  void AddTitle(std::string_view title) {
    std::string& whole = Report().columns[column_].title;
    if (!whole.empty() && !Trimmed(title).empty()) whole += ' ';
    whole += Trimmed(title);
  }

  void ReadRowData(const XmlEventAttributes& attributes) {
    ReportRow& row = Report().rows.back();
    const std::string type = attributes.Find("rowType").value_or("account");
    if (row.kind == RowKind::Account && type != "account") {
      Refuse(PlaceOf(Report(), row.number),
             fmt::format("the row is about a {}, not an account", Quoted(type)),
             "capture a report of accounts: ProfitAndLossStandard or ProfitAndLossDetail");
    }
    row.account = Trimmed(attributes.Find("value").value_or(""));
  }

  void ReadCell(const XmlEventAttributes& attributes) {
    ReportRow& row = Report().rows.back();
    const std::size_t position = Position(attributes);
    const std::string value = attributes.Find("value").value_or("");
    const std::string_view text = Trimmed(value);
    if (text.empty()) return;
    if (position == 0 && (row.kind != RowKind::Account || !Report().detail)) {
      row.label = text;
      return;
    }
    if (!row.cells.empty() && row.cells.back().first >= position) {
      Refuse(PlaceOf(Report(), row.number), "the columns are not in the order of their colID", reportAdvice);
    }
    row.cells.emplace_back(position, text);
  }

  // Returns the position that an element's colID states, counted from 0.
  std::size_t Position(const XmlEventAttributes& attributes) {
    const std::string text = attributes.Find("colID").value_or("");
    const std::optional<std::size_t> number = NumberOf(text);
    if (!number || *number == 0 || *number > mostColumns) {
      const std::string place =
          Report().rows.empty() ? Report().document : PlaceOf(Report(), Report().rows.back().number);
      Refuse(place, fmt::format("colID {} is not a column from 1 to {}", Quoted(text), mostColumns),
             reportAdvice);
    }
    return *number - 1;
  }

  void EndInReport() {
    const std::string_view text = Trimmed(text_);
    if (inRow_ && depth_ < rowDepth_) inRow_ = false;
    if (element_ == "ReportTitle") Report().title = text;
    if (element_ == "ReportSubtitle") Report().period = text;
    if (element_ == "ReportBasis") Report().basis = text;
    if (element_ == "ColType") Report().columns[column_].type = text;
  }

  std::string document_;
  std::vector<CapturedReport> reports_;
  std::vector<std::string> findings_;
  std::size_t depth_ = 0;
  std::size_t rowDepth_ = 0;
  std::size_t rows_ = 0;
  std::size_t column_ = 0;
  bool anyAnswer_ = false;
  bool inReportAnswer_ = false;
  bool detail_ = false;
  bool inReport_ = false;
  bool inRow_ = false;
  std::string element_;
  std::string text_;
};

}  // namespace

std::vector<CapturedReport> CaptureQbxmlReports(std::string_view document, const std::string& text) {
  ReportEvents events(document);
  if (const std::optional<XmlFault> fault = ParseXmlEvents(text, events)) {
    Refuse(fmt::format("{}: line {}", document, fault->line),
           fmt::format("the XML is not well-formed: {}", Quoted(fault->message)),
           "the document may be cut off: capture the answer again and give the whole file");
  }
  return events.Take();
}

}  // namespace krnqb::profit_and_loss
