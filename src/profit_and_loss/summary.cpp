#include "profit_and_loss/summary.h"

#include <fmt/format.h>

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "profit_and_loss/account_table.h"
#include "profit_and_loss/amount_texts.h"
#include "profit_and_loss/columns.h"
#include "profit_and_loss/messages.h"
#include "profit_and_loss/outline.h"

namespace krnqb::profit_and_loss {
namespace {

class SummaryReader {
 public:
  explicit SummaryReader(const CapturedReport& report)
      : report_(report),
        columns_(ReadAmountColumns(report)),
        titles_(Titles(report, columns_)),
        indices_(report.columns.size()),
        amounts_(report.notation),
        outline_(report, titles_, findings_) {
    for (std::size_t index = 0; index < columns_.positions.size(); ++index)
      indices_[columns_.positions[index]] = index;
    if (columns_.total) indices_[*columns_.total] = columns_.positions.size();
  }

  ProfitAndLoss Read() {
    for (const ReportRow& row : report_.rows) NoteAmounts(row);
    for (std::size_t index = 0; index < report_.rows.size(); ++index) ReadRow(index);
    outline_.End();
    ProfitAndLoss statement;
    statement.columns = columns_.columns;
    statement.accounts = accounts_.Take();
    statement.findings = findings_.Take(report_.document);
    return statement;
  }

 private:
  // The titles of the columns that totals are checked in: those of amounts, and the one that adds them up.
  static std::vector<std::string> Titles(const CapturedReport& report, const AmountColumns& columns) {
    std::vector<std::string> titles;
    titles.reserve(columns.columns.size() + 1);
    for (const StatementColumn& column : columns.columns) titles.push_back(column.title);
    if (columns.total) titles.push_back(report.columns[*columns.total].title);
    return titles;
  }

  void NoteAmounts(const ReportRow& row) {
    if (row.cells.empty()) return;
    const std::string place = PlaceOf(report_, row.number);
    for (const auto& [position, text] : row.cells) {
      if (position >= indices_.size() || !indices_[position]) {
        Refuse(place, fmt::format("{} is in a column without a title", Quoted(text)),
               "give every column of amounts a title such as \"Jan 2002\" or \"TOTAL\"");
      }
      amounts_.Note(text, place);
    }
    if (row.label.empty() && row.account.empty()) {
      Refuse(place, "there are amounts without an account", "name the account before the amounts");
    }
  }

  RowAmounts ReadAmounts(const ReportRow& row) const {
    if (row.cells.empty()) return {};
    RowAmounts amounts(titles_.size());
    const std::string place = PlaceOf(report_, row.number);
    for (const auto& [position, text] : row.cells) {
      if (const std::optional<std::size_t>& index = indices_[position])
        amounts[*index] = amounts_.Read(text, place);
    }
    return amounts;
  }

  void ReadRow(std::size_t index) {
    const ReportRow& row = report_.rows[index];
    if (row.label.empty() && row.account.empty()) return;
    RowAmounts amounts = ReadAmounts(row);
    std::optional<AccountPath> path = outline_.Take(index, amounts);
    if (!path) return;
    CheckTotal(row, amounts);
    const auto [account, isNew] = accounts_.Find(report_, row, *std::move(path));
    if (!isNew) {
      Refuse(PlaceOf(report_, row.number),
             fmt::format("the account {} also has the amounts of {}",
                         Quoted(accounts_.At(account).FullName()), accounts_.At(account).place),
             "leave one row for each account");
    }
    amounts.resize(columns_.columns.size());
    accounts_.At(account).amounts = std::move(amounts);
  }

  void CheckTotal(const ReportRow& row, const RowAmounts& amounts) {
    if (!columns_.total) return;
    ExactAmount sum;
    for (std::size_t column = 0; column + 1 < amounts.size(); ++column) sum += amounts[column];
    if (sum == amounts.back()) return;
    findings_.Add(fmt::format("{}: the amounts of {} add up to {}, but column {} has {}",
                              PlaceOf(report_, row.number), Quoted(row.label), sum.Text(),
                              Quoted(titles_.back()), amounts.back().Text()));
  }

  const CapturedReport& report_;
  AmountColumns columns_;
  std::vector<std::string> titles_;
  std::vector<std::optional<std::size_t>> indices_;  // of amounts, by position
  AmountTexts amounts_;
  Findings findings_;
  Outline outline_;
  AccountTable accounts_;
};

}  // namespace

ProfitAndLoss ReadSummary(const CapturedReport& report) {
  return SummaryReader(report).Read();
}

}  // namespace krnqb::profit_and_loss
