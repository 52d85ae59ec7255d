#include "import/amounts/report_reading.h"

#include <fmt/format.h>

#include <array>
#include <unordered_set>

#include "import/progress.h"
#include "krnqb/booking.h"
#include "qbxml/request_catalogue.h"
#include "qbxml/response_element.h"
#include "support/number_text.h"
#include "support/warning_report.h"

namespace krnqb {
namespace {

constexpr auto accountRows = "//RowData[@rowType=\"account\"]";

struct BalanceSheetType {
  std::string_view name;
  ErrorStatus errorStatus = ErrorStatus::DataMissing;
};

// Depreciation and RetainedEarnings are plan figures. QuickBooks has no such account types and always answers
// with an error status.
constexpr std::array balanceSheetTypes{BalanceSheetType{"Bank"},
                                       BalanceSheetType{"AccountsReceivable"},
                                       BalanceSheetType{"OtherAsset"},
                                       BalanceSheetType{"OtherCurrentAsset"},
                                       BalanceSheetType{"FixedAsset"},
                                       BalanceSheetType{"Depreciation", ErrorStatus::Expected},
                                       BalanceSheetType{"AccountsPayable"},
                                       BalanceSheetType{"CreditCard"},
                                       BalanceSheetType{"OtherCurrentLiability"},
                                       BalanceSheetType{"LongTermLiability"},
                                       BalanceSheetType{"Equity"},
                                       BalanceSheetType{"RetainedEarnings", ErrorStatus::Expected}};

constexpr std::size_t yearAndMonth = 7;  // of a date, year-month-day

std::string_view ReportedGroup(std::int32_t requestNumber) {
  switch (requestNumber) {
    case request_number::incomeByMonth:
      return "sales";
    case request_number::costByMonth:
      return "cost of goods";
    default:
      return "expenses";
  }
}

std::string_view Trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

// Reports unusual rows to the observer; has no effect on the amounts.
class RowReporting {
 public:
  RowReporting(Observer& observer, const Place& place) : observer_(observer), place_(place) {}

  void Added(const std::string& name) {
    if (!names_.insert(FoldedKey(name)).second)
      Report(NoticeKind::AccountInSeveralRows, NoticeMeaning::Complete, name);
  }

  // Warns of an amount that was not read whole. `amount` is what it counted as.
  void Cut(const std::string& name, const std::string& text, double amount) {
    ReportWarning(observer_, place_, [&] {
      return Finding{.code = WarningCode::TextCut, .name = name, .text = text, .amount = amount};
    });
  }

  // Warns of the sum of the columns behind the only month of a report.
  void FurtherColumns(double sum) {
    ReportWarning(observer_, place_, [&] {
      return Finding{.code = WarningCode::TotalColumn,
                     .name = std::string(ReportedGroup(place_.request.value_or(0))),
                     .text = place_.fromDate.substr(0, yearAndMonth),
                     .amount = sum};
    });
  }

  void Misaligned(const std::string& name) {
    Report(NoticeKind::ColumnsMisaligned, NoticeMeaning::Incomplete, name);
  }

  // Returns whether the row has an amount. `included` is whether the import includes the account's list.
  bool NoSubtotal(const std::string& name, const std::vector<XmlElement>& columns, std::size_t amountCount,
                  bool included) {
    double sum = 0;
    for (std::size_t column = 1; column <= amountCount && column < columns.size(); ++column) {
      // A skipped row must not end the report, so an invalid amount is ignored here.
      sum += ConvertToDouble(columns[column].Attribute("value").value_or("")).value_or(0);
    }
    if (sum == 0) return false;
    observer_.Notify(Notice{.kind = NoticeKind::AmountSkipped,
                            .meaning = NoticeMeaning::LeftOut,
                            .place = place_,
                            .skipped = Skipped{.reason = SkipReason::NoSubtotal,
                                               .kind = included ? SkipKind::Lost : SkipKind::NotRequested,
                                               .source = name,
                                               .account = name,
                                               .amount = GeneralNumberText(sum)}});
    return true;
  }

 private:
  void Report(NoticeKind kind, NoticeMeaning meaning, const std::string& name) {
    observer_.Notify(Notice{.kind = kind, .meaning = meaning, .place = place_, .description = name});
  }

  Observer& observer_;
  const Place& place_;
  std::unordered_set<std::string> names_;
};

// The columns of the row that contains a "RowData" element; column 0 is the label. They are kept for the next
// one, because a row may contain several.
class RowColumns {
 public:
  const std::vector<XmlElement>& Of(const XmlElement& rowData) {
    if (XmlElement row = rowData.Parent(); !(row == row_)) {
      row_ = std::move(row);
      Read();
    }
    return columns_;
  }

  // Returns whether the columns read last are numbered from 1 on.
  bool Aligned() const noexcept { return aligned_; }

 private:
  void Read() {
    columns_.clear();
    aligned_ = true;
    for (XmlElement child = row_.FirstChild(); child; child = child.NextSibling()) {
      if (!child.IsNamed("ColData")) continue;
      columns_.push_back(child);
      const std::optional<std::string> number = child.Attribute("colID");
      if (number && *number != fmt::format("{}", columns_.size())) aligned_ = false;
    }
  }

  XmlElement row_;
  std::vector<XmlElement> columns_;
  bool aligned_ = true;
};

// A cell of a report.
struct ReportedAmount {
  std::string text;
  double amount = 0;
};

// Returns the amount in a column of the row with this name.
ReportedAmount AmountOf(const XmlElement& column, const std::string& name, RowReporting& reporting) {
  std::string text = column.Attribute("value").value_or("");
  const double amount = LeadingNumber(text);
  if (!ReadsWhole(text)) reporting.Cut(name, text, amount);
  return {std::move(text), amount};
}

// Passes on a cell that was added to a sum, if bookings are received. Empty cells are not worth a booking.
void ReportBooking(Observer& observer, const Place& place, const AmountSlot& slot,
                   const std::string& accountName, const ReportedAmount& cell) {
  BookingReceiver* const receiver = cell.text.empty() ? nullptr : observer.Bookings();
  if (receiver == nullptr) return;
  receiver->Book({.slot = slot,
                  .rule = BookingRule::ReportCell,
                  .amount = cell.amount,
                  .accountName = accountName,
                  .text = cell.text,
                  .request = place.request.value_or(0),
                  .fromDate = place.fromDate,
                  .toDate = place.toDate});
}

AmountGroup GroupOfReport(const Place& place) {
  switch (place.request.value_or(0)) {
    case request_number::incomeByMonth:
      return AmountGroup::Income;
    case request_number::costByMonth:
      return AmountGroup::CostOfGoods;
    default:
      return AmountGroup::Expenses;
  }
}

bool IsOneMonth(const Place& place) {
  return !place.fromDate.empty() &&
         place.fromDate.substr(0, yearAndMonth) == place.toDate.substr(0, yearAndMonth);
}

// Returns the label of a top-level account's row, or nothing for a sub-account or a row without a label.
std::optional<std::string> TopLevelLabel(const XmlElement& rowData) {
  std::optional<std::string> label = rowData.Attribute("value");
  if (label && label->find(':') != std::string::npos) label.reset();
  return label;
}

void AddTypeReport(const XmlElement& response, std::int16_t period, const std::string& type,
                   SubtotalCollection& target, Observer& observer, const Place& place) {
  RowReporting reporting(observer, place);
  RowColumns rowColumns;
  for (const XmlElement& rowData : response.SelectAll(accountRows)) {
    const std::optional<std::string> label = TopLevelLabel(rowData);
    if (!label) continue;
    const std::vector<XmlElement>& columns = rowColumns.Of(rowData);
    cSubtotals* const subtotal = target.Find(type);
    if (subtotal == nullptr) {
      reporting.NoSubtotal(*label, columns, 1, true);
      continue;
    }
    reporting.Added(*label);
    if (!rowColumns.Aligned()) reporting.Misaligned(*label);
    if (columns.size() <= 1) continue;
    const ReportedAmount cell = AmountOf(columns[1], *label, reporting);
    subtotal->AddToSubTotal(period, cell.amount);
    ReportBooking(observer, place, {.group = AmountGroup::PastPerformance, .name = type, .number = period},
                  *label, cell);
  }
}

}  // namespace

std::string_view AccountNameOfLabel(std::string_view label) {
  constexpr std::string_view separator = " \u00b7 ";
  const std::size_t at = label.find(separator);
  return at == std::string_view::npos ? label : Trimmed(label.substr(at + separator.size()));
}

bool ParseProfitAndLossReport(Session& session, std::int32_t requestNumber, const DateRange& range,
                              std::optional<SubtotalCollection>& target, Observer& observer) {
  const Place place{.operation = Operation::ParseProfitAndLossReport,
                    .request = requestNumber,
                    .fromDate = range.fromDate,
                    .toDate = range.toDate};
  return ParseProfitAndLossReport(session.Ask(requestNumber, place.operation, range.fromDate, range.toDate),
                                  target, observer, place);
}

bool ParseProfitAndLossReport(const XmlElement& response, std::optional<SubtotalCollection>& target,
                              Observer& observer, const Place& place) {
  RowReporting reporting(observer, place);
  RowColumns rowColumns;
  bool anyAmount = false;
  bool anyFurtherAmount = false;
  double furtherColumns = 0;
  for (const XmlElement& rowData : response.SelectAll(accountRows)) {
    const std::optional<std::string> label = TopLevelLabel(rowData);
    if (!label) continue;
    const std::string name(AccountNameOfLabel(*label));
    const std::vector<XmlElement>& columns = rowColumns.Of(rowData);
    cSubtotals* const subtotal = target ? target->Find(name) : nullptr;
    if (subtotal == nullptr) {
      if (reporting.NoSubtotal(name, columns, cSubtotals::monthCount, target.has_value())) anyAmount = true;
      continue;
    }
    reporting.Added(name);
    if (!rowColumns.Aligned()) reporting.Misaligned(name);
    for (std::int16_t month = 1; month <= cSubtotals::monthCount; ++month) {
      const auto column = static_cast<std::size_t>(month);
      if (column >= columns.size()) break;
      const ReportedAmount cell = AmountOf(columns[column], name, reporting);
      anyAmount = anyAmount || cell.amount != 0;
      if (month > 1) {
        anyFurtherAmount = anyFurtherAmount || cell.amount != 0;
        furtherColumns += cell.amount;
      }
      subtotal->AddToSubTotal(month, cell.amount);
      ReportBooking(observer, place, {.group = GroupOfReport(place), .name = name, .number = month}, name,
                    cell);
    }
  }
  if (anyFurtherAmount && IsOneMonth(place)) reporting.FurtherColumns(furtherColumns);
  return anyAmount;
}

void ParseBalanceSheetByType(ImportContext& context, std::int16_t period, const std::string& request,
                             const std::string& asOfDate, SubtotalCollection& target, TypeProgress progress) {
  Place place{.operation = Operation::ParseBalanceSheetByType,
              .request = request_number::balanceSheetByType,
              .fromDate = asOfDate,
              .toDate = asOfDate,
              .pastPeriod = period};
  int step = 0;
  for (const auto& [type, errorStatus] : balanceSheetTypes) {
    ++step;
    place.accountType = type;
    if (progress == TypeProgress::Raised) {
      context.events.ProgressBarChange(RoundedPercent(step, balanceSheetTypes.size()), processingText);
    }
    std::string typeRequest = request;
    for (auto at = typeRequest.find(accountTypePlaceholder); at != std::string::npos;
         at = typeRequest.find(accountTypePlaceholder, at + type.size())) {
      typeRequest.replace(at, accountTypePlaceholder.size(), type);
    }
    const XmlElement response =
        AnswerElement(context.session.QbSerialize(typeRequest, place), context.observer, place, errorStatus);
    AddTypeReport(response, period, std::string(type), target, context.observer, place);
  }
}

}  // namespace krnqb
