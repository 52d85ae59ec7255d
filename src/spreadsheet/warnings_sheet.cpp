#include "spreadsheet/warnings_sheet.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <map>
#include <utility>

#include "plan_file/headings.h"
#include "spreadsheet/cell_text.h"
#include "spreadsheet/summary_sheet.h"
#include "support/display_width.h"
#include "support/number_text.h"

namespace krnqb::spreadsheet {
namespace {

constexpr std::size_t amountColumn = 7;
constexpr std::size_t mostLines = 500'000;  // of one list, so that everything fits one sheet

std::string MomentWithoutT(std::string when) {
  std::replace(when.begin(), when.end(), 'T', ' ');
  return when;
}

std::string PeriodText(const plan_file::ImportFacts& facts) {
  return facts.periodFrom == facts.periodTo ? facts.periodFrom
                                            : fmt::format("{} to {}", facts.periodFrom, facts.periodTo);
}

struct MeaningSum {
  std::size_t count = 0;
  double sum = 0;
  std::size_t noNumbers = 0;
};

class Lines {
 public:
  Lines(const PlanSheets& sheets, const ExportNotes& notes) : sheets_(sheets), notes_(notes) {}

  Sheet Result() {
    sheet_.name = warningsSheetName;
    Text(0, "Warnings and what was left out", CellStyle::Title);
    next_ = 2;
    AddImport();
    AddWarnings();
    AddLeftOut();
    constexpr double leastWidth = 24;
    constexpr double mostWidth = 48;
    sheet_.columnWidths = {std::clamp(whereWidth_, leastWidth, mostWidth), 18, 32, 28, 24, 15, 25, 15};
    return std::move(sheet_);
  }

 private:
  void Text(std::size_t column, std::string_view text, CellStyle style) {
    sheet_.Add(next_, column, CellText(text), style);
  }

  void Section(std::string_view title) {
    ++next_;
    Text(0, title, CellStyle::TotalName);
    ++next_;
  }

  void Line(std::string_view text) {
    Text(0, text, CellStyle::Plain);
    ++next_;
  }

  void Fact(std::string_view name, std::string_view value) {
    Text(0, name, CellStyle::Plain);
    Text(1, value, CellStyle::Plain);
    ++next_;
  }

  void AddImport() {
    Text(0, "The last import", CellStyle::TotalName);
    ++next_;
    Fact("Plan", sheets_.planName);
    if (!notes_.lastImport) {
      Line(notes_.historyFault.empty() ? "No import is recorded beside the plan."
                                       : fmt::format("It is unknown: {}", notes_.historyFault));
      return;
    }
    const plan_file::HistoryEntry& entry = notes_.lastImport->entry;
    Fact("Imported", MomentWithoutT(entry.when));
    if (!entry.import) return;
    const plan_file::ImportFacts& facts = *entry.import;
    Fact("Amounts of", PeriodText(facts));
    Fact("Options", fmt::format("{}", fmt::join(facts.options, " ")));
    Fact("Rows added", fmt::format("{}", facts.rowsAdded));
    Fact("Cells changed", fmt::format("{}", facts.cellsChanged));
    Fact("Formulas cleared", fmt::format("{}", facts.formulasCleared));
  }

  void AddWarnings() {
    Section("Warnings");
    const std::vector<SheetWarning> warnings = AllWarnings(sheets_, notes_);
    if (warnings.empty()) return Line("None.");
    Text(0, "Where", CellStyle::TextHeading);
    Text(1, "What", CellStyle::TextHeading);
    ++next_;
    for (std::size_t index = 0; index < std::min(warnings.size(), mostLines); ++index) {
      Fact(warnings[index].where, warnings[index].what);
      whereWidth_ = std::max(whereWidth_, static_cast<double>(DisplayWidth(warnings[index].where)) + 2);
    }
    if (warnings.size() > mostLines) Line(fmt::format("and {} more", warnings.size() - mostLines));
  }

  void AddLeftOut() {
    Section("Left out of the plan");
    if (notes_.journal.empty()) {
      return Line(
          "Amounts that an import leaves out are in its journal: give krnqb import and krnqb plan "
          "export the same --journal FILE to list them here.");
    }
    if (notes_.leftOut.empty()) return Line(fmt::format("{} lists no amount.", notes_.journal));
    AddSums();
    constexpr std::array<std::string_view, 8> headings{"Date",   "Transaction", "Account or item", "Customer",
                                                       "Reason", "Meaning",     "Period",          "Amount"};
    ++next_;
    for (std::size_t column = 0; column < headings.size(); ++column) {
      Text(column, headings[column], column == amountColumn ? CellStyle::Heading : CellStyle::TextHeading);
    }
    ++next_;
    for (std::size_t index = 0; index < std::min(notes_.leftOut.size(), mostLines); ++index) {
      AddAmount(notes_.leftOut[index]);
    }
    if (notes_.leftOut.size() > mostLines) {
      Line(fmt::format("and {} more in {}", notes_.leftOut.size() - mostLines, notes_.journal));
    }
  }

  void AddSums() {
    std::map<std::string, MeaningSum> sums;
    for (const LeftOutAmount& amount : notes_.leftOut) {
      MeaningSum& sum = sums[amount.meaning];
      const std::optional<double> number = ConvertToDouble(amount.amount);
      ++sum.count;
      if (number) sum.sum += *number;
      if (!number) ++sum.noNumbers;
    }
    for (const auto& [meaning, sum] : sums) {
      Text(0, meaning, CellStyle::Plain);
      Text(1, fmt::format("{} {}", sum.count, sum.count == 1 ? "amount" : "amounts"), CellStyle::Plain);
      if (sum.noNumbers > 0)
        Text(2, fmt::format("of which {} without a number", sum.noNumbers), CellStyle::Plain);
      if (sum.count > sum.noNumbers) sheet_.Add(next_, amountColumn, sum.sum, CellStyle::Amount);
      ++next_;
    }
  }

  void AddAmount(const LeftOutAmount& amount) {
    const std::array<const std::string*, 8> texts{
        &amount.date,   &amount.transaction, &amount.account, &amount.customer,
        &amount.reason, &amount.meaning,     &amount.period,  nullptr};
    for (std::size_t column = 0; column < texts.size(); ++column) {
      if (texts[column] != nullptr && !texts[column]->empty()) Text(column, *texts[column], CellStyle::Plain);
    }
    if (const std::optional<double> number = ConvertToDouble(amount.amount)) {
      sheet_.Add(next_, amountColumn, *number, CellStyle::Amount);
    } else {
      Text(amountColumn, amount.amount, CellStyle::Plain);
    }
    ++next_;
  }

  const PlanSheets& sheets_;
  const ExportNotes& notes_;
  Sheet sheet_;
  std::uint32_t next_ = 0;
  double whereWidth_ = 0;
};

}  // namespace

std::vector<SheetWarning> AllWarnings(const PlanSheets& sheets, const ExportNotes& notes) {
  std::vector<SheetWarning> warnings = sheets.warnings;
  const std::vector<SheetWarning> summary = SummaryWarnings(sheets);
  warnings.insert(warnings.end(), summary.begin(), summary.end());
  if (notes.lastImport && notes.lastImport->edited) {
    warnings.push_back({"The plan", "another program has changed it since its last import"});
  }
  for (const std::string& warning : notes.journalWarnings) warnings.push_back({"The import", warning});
  return warnings;
}

Sheet WarningsOf(const PlanSheets& sheets, const ExportNotes& notes) {
  return Lines(sheets, notes).Result();
}

}  // namespace krnqb::spreadsheet
