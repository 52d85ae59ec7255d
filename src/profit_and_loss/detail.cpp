#include "profit_and_loss/detail.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "profit_and_loss/account_table.h"
#include "profit_and_loss/amount_texts.h"
#include "profit_and_loss/columns.h"
#include "profit_and_loss/messages.h"
#include "profit_and_loss/outline.h"
#include "profit_and_loss/periods.h"

namespace krnqb::profit_and_loss {
namespace {

using std::chrono::year_month_day;

constexpr int mostMonths = 120;
constexpr std::size_t fieldCount = 7;
constexpr int monthsPerYear = 12;

// The texts of a transaction, by field.
using Fields = std::array<std::string_view, fieldCount>;

std::string_view FieldOf(const Fields& fields, DetailField field) {
  return fields.at(static_cast<std::size_t>(field));
}

int MonthIndex(const year_month_day& date) {
  return static_cast<int>(date.year()) * monthsPerYear +
         static_cast<int>(static_cast<unsigned>(date.month())) - 1;
}

YearMonth MonthAt(int index) {
  return {.year = static_cast<std::int16_t>(index / monthsPerYear),
          .month = static_cast<std::int16_t>(index % monthsPerYear + 1)};
}

// Returns the days of a month that are in a range which has at least one of them.
StatementColumn MonthWithin(int index, const DayRange& range) {
  const YearMonth month = MonthAt(index);
  DayRange days = DaysOf(month);
  days.first = std::max(days.first, range.first);
  days.last = std::min(days.last, range.last);
  return ColumnOf(fmt::format("{}-{:02}", month.year, month.month), days);
}

class DetailReader {
 public:
  explicit DetailReader(const CapturedReport& report)
      : report_(report), amounts_(report.notation), outline_(report, titles_, findings_) {
    FindFields();
  }

  ProfitAndLoss Read() {
    for (const ReportRow& row : report_.rows) NoteAmount(row);
    for (std::size_t index = 0; index < report_.rows.size(); ++index) ReadRow(index);
    outline_.End();
    ProfitAndLoss statement;
    AddMonths(statement);
    statement.accounts = accounts_.Take();
    statement.lines = std::move(lines_);
    statement.hasDetail = true;
    statement.findings = findings_.Take(report_.document);
    return statement;
  }

 private:
  void FindFields() {
    fields_.resize(report_.columns.size());
    std::array<bool, fieldCount> known{};
    for (std::size_t position = 0; position < report_.columns.size(); ++position) {
      const ReportColumn& column = report_.columns[position];
      std::optional<DetailField> field = DetailFieldOf(column.type);
      if (!field) field = DetailFieldOf(column.title);
      if (!field) continue;
      bool& isKnown = known.at(static_cast<std::size_t>(*field));
      if (isKnown) {
        Refuse(report_.document, fmt::format("two columns are titled {}", Quoted(column.title)),
               "export the report with each column once");
      }
      isKnown = true;
      fields_[position] = *field;
    }
    for (const auto& [field, title] : {std::pair{DetailField::Type, "Type"},
                                       {DetailField::Date, "Date"},
                                       {DetailField::Amount, "Amount"}}) {
      if (known.at(static_cast<std::size_t>(field))) continue;
      Refuse(report_.document, fmt::format("the detail report has no column {}", Quoted(title)),
             "add the column to the report and export it again");
    }
  }

  Fields FieldsOf(const ReportRow& row) const {
    Fields fields;
    for (const auto& [position, text] : row.cells) {
      if (position >= fields_.size()) continue;
      if (const std::optional<DetailField>& field = fields_[position])
        fields.at(static_cast<std::size_t>(*field)) = text;
    }
    return fields;
  }

  void NoteAmount(const ReportRow& row) {
    const Fields fields = FieldsOf(row);
    const std::string_view amount = FieldOf(fields, DetailField::Amount);
    if (!amount.empty()) amounts_.Note(amount, PlaceOf(report_, row.number));
  }

  void ReadRow(std::size_t index) {
    const ReportRow& row = report_.rows[index];
    const Fields fields = FieldsOf(row);
    const std::string_view amount = FieldOf(fields, DetailField::Amount);
    if (row.kind == RowKind::Account) {
      ReadTransaction(row, fields);
      return;
    }
    if (row.label.empty()) return;
    if (!FieldOf(fields, DetailField::Type).empty() || !FieldOf(fields, DetailField::Date).empty()) {
      Refuse(PlaceOf(report_, row.number),
             fmt::format("there are both the label {} and a transaction", Quoted(row.label)),
             "put the account's name on a line above its transactions");
    }
    RowAmounts amounts;
    if (!amount.empty()) amounts.push_back(amounts_.Read(amount, PlaceOf(report_, row.number)));
    outline_.Take(index, amounts);
  }

  void ReadTransaction(const ReportRow& row, const Fields& fields) {
    const std::string_view type = FieldOf(fields, DetailField::Type);
    const std::string_view dateText = FieldOf(fields, DetailField::Date);
    const std::string_view amount = FieldOf(fields, DetailField::Amount);
    if (type.empty() && dateText.empty() && amount.empty()) return;
    std::string place = PlaceOf(report_, row.number);
    const std::optional<year_month_day> date = ReadDate(dateText);
    if (!date) {
      Refuse(place, fmt::format("{} is not a date", Quoted(dateText)),
             "write it like 2002-01-31 or 01/31/2002");
    }
    if (type.empty())
      Refuse(place, "the transaction has no type", "export the report with the type of each transaction");
    const ExactAmount value = amount.empty() ? ExactAmount() : amounts_.Read(amount, place);
    AccountPath path = outline_.Current(row, FieldOf(fields, DetailField::Account));
    outline_.Add({value});
    StatementLine line{.section = path.section,
                       .account = path.names,
                       .type = std::string(type),
                       .date = *date,
                       .number = std::string(FieldOf(fields, DetailField::Number)),
                       .name = std::string(FieldOf(fields, DetailField::Name)),
                       .memo = std::string(FieldOf(fields, DetailField::Memo)),
                       .amount = value,
                       .place = std::move(place)};
    accountOfLine_.push_back(accounts_.Find(report_, row, std::move(path)).first);
    lines_.push_back(std::move(line));
  }

  // Returns the days that the report states, otherwise the months of its transactions.
  std::optional<DayRange> Range() const {
    if (const std::optional<DayRange> stated = ReadPeriod(report_.period)) return stated;
    if (lines_.empty()) return std::nullopt;
    const auto [earliest, latest] = std::ranges::minmax_element(lines_, {}, &StatementLine::date);
    return DayRange{.first = DaysOf(MonthAt(MonthIndex(earliest->date))).first,
                    .last = DaysOf(MonthAt(MonthIndex(latest->date))).last};
  }

  // Adds the columns. One at the begin or the end may be a part of a month.
  void AddMonths(ProfitAndLoss& statement) {
    const std::optional<DayRange> range = Range();
    if (!range) return;
    const int first = MonthIndex(range->first);
    const int last = MonthIndex(range->last);
    if (last - first >= mostMonths) {
      Refuse(report_.document, fmt::format("the report covers more than {} months", mostMonths),
             "export fewer months, or correct the dates");
    }
    for (int month = first; month <= last; ++month) statement.columns.push_back(MonthWithin(month, *range));
    AddAmounts(*range, statement.columns.size());
  }

  void AddAmounts(const DayRange& range, std::size_t columns) {
    const int firstMonth = MonthIndex(range.first);
    for (std::size_t index = 0; index < lines_.size(); ++index) {
      const StatementLine& line = lines_[index];
      if (line.date < range.first || line.date > range.last) {
        Refuse(line.place, fmt::format("the transaction is not in {}", Quoted(report_.period)),
               "correct the date or the report's title");
      }
      std::vector<ExactAmount>& amounts = accounts_.At(accountOfLine_[index]).amounts;
      amounts.resize(columns);
      amounts.at(static_cast<std::size_t>(MonthIndex(line.date) - firstMonth)) += line.amount;
    }
  }

  const CapturedReport& report_;
  std::vector<std::string> titles_{"Amount"};
  std::vector<std::optional<DetailField>> fields_;  // by position
  AmountTexts amounts_;
  Findings findings_;
  Outline outline_;
  AccountTable accounts_;
  std::vector<StatementLine> lines_;
  std::vector<std::size_t> accountOfLine_;
};

}  // namespace

ProfitAndLoss ReadDetail(const CapturedReport& report) {
  return DetailReader(report).Read();
}

}  // namespace krnqb::profit_and_loss
