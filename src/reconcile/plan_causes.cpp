#include "reconcile/plan_causes.h"

#include <fmt/format.h>

#include <map>
#include <set>
#include <utility>

#include "krnqb/keyed_collection.h"
#include "support/number_text.h"

namespace krnqb::reconcile {
namespace {

using plan_file::FigureGroup;
using plan_file::RowFigures;
using Months = std::array<std::optional<ExactAmount>, monthsOfAYear>;

Group GroupOf(FigureGroup group) noexcept {
  switch (group) {
    case FigureGroup::Sales:
      return Group::Sales;
    case FigureGroup::Costs:
      return Group::CostOfGoods;
    case FigureGroup::Expenses:
      break;
  }
  return Group::Expenses;
}

// A row of the plan and what an import does with it.
struct PlanRow {
  const RowFigures* figures;
  const ImportedRow* imported;  // null if an import does not write the row
  std::size_t line;             // of the account to which its amounts belong
  bool misaligned;              // whether that is another account than the planned row's
};

// Pairs rows by name, the first of a name with the first.
class RowPairs {
 public:
  explicit RowPairs(std::span<const ImportedRow> imported) {
    for (const ImportedRow& row : imported) rows_[{row.group, row.name}].push_back(&row);
  }

  const ImportedRow* Next(Group group, const std::string& name) {
    const auto found = rows_.find({group, name});
    if (found == rows_.end()) return nullptr;
    std::size_t& next = next_[found->first];
    return next < found->second.size() ? found->second[next++] : nullptr;
  }

 private:
  using Name = std::pair<Group, std::string>;
  std::map<Name, std::vector<const ImportedRow*>> rows_;
  std::map<Name, std::size_t> next_;
};

class PlanComparison {
 public:
  PlanComparison(WorkTable& table, const PlanAmounts& plan, std::span<const ImportedRow> imported)
      : table_(table), plan_(plan), imported_(imported) {
    if (!plan_.lastImport || !plan_.lastImport->rows) return;
    for (const plan_file::WrittenRow& row : *plan_.lastImport->rows) {
      written_.insert_or_assign({row.block, row.row, row.name}, &row);
    }
  }

  void Run() {
    RowPairs pairs(imported_);
    for (const RowFigures& figures : plan_.rows) {
      const Group group = GroupOf(figures.group);
      const bool misaligned =
          !figures.actualName.empty() && FoldedKey(figures.actualName) != FoldedKey(figures.name);
      const std::string& owner = misaligned ? figures.actualName : figures.name;
      const ImportedRow* const imported = Asked(group) ? pairs.Next(group, figures.name) : nullptr;
      Add({.figures = &figures,
           .imported = imported,
           .line = table_.LineOf(group, owner.empty() ? fmt::format("row {}", figures.row) : owner),
           .misaligned = misaligned});
    }
    ExplainAccountsWithoutRow();
  }

 private:
  bool Asked(Group group) const {
    if (!plan_.lastImport) return true;
    return group == Group::Expenses ? plan_.lastImport->expenses : plan_.lastImport->income;
  }

  void Add(const PlanRow& row) {
    const Months held = MonthsOf(*row.figures);
    const Months written = row.imported == nullptr ? Months() : WrittenMonths(row, held);
    auto& months = table_.At(row.line).months;
    for (std::size_t month = 0; month < monthsOfAYear; ++month) {
      const ExactAmount plan = held[month].value_or(ExactAmount());
      const ExactAmount wrote = written[month].value_or(ExactAmount());
      months[month].plan += plan;
      months[month].written += wrote;
      months[month].Explain(row.imported == nullptr ? CauseCode::NotImported : PlanCause(), plan - wrote);
    }
    if (row.imported != nullptr) ExplainWritten(row, written);
  }

  static Months MonthsOf(const RowFigures& figures) {
    Months months;
    for (std::size_t month = 0; month < monthsOfAYear; ++month) {
      if (figures.months[month]) months[month] = ExactAmount::From(*figures.months[month]);
    }
    return months;
  }

  // Why a plan differs from what its last import wrote.
  CauseCode PlanCause() const {
    if (!plan_.lastImport) return CauseCode::NotImported;
    return plan_.lastImport->samePeriod ? CauseCode::EditedSince : CauseCode::AnotherPeriod;
  }

  // What the last import wrote into a row. If that is unknown, or of other months, what an import writes now.
  Months WrittenMonths(const PlanRow& row, const Months& held) const {
    if (plan_.lastImport && plan_.lastImport->samePeriod) {
      if (plan_.lastImport->asWritten) return held;
      if (plan_.lastImport->rows) return KeptMonths(*row.figures);
    }
    Months months;
    for (const std::string& account : row.imported->accounts) {
      for (std::size_t month = 0; month < monthsOfAYear; ++month) {
        const ExactAmount booked = Booked(row.imported->group, account, month);
        months[month] = months[month].value_or(ExactAmount()) + booked;
      }
    }
    return months;
  }

  Months KeptMonths(const RowFigures& figures) const {
    Months months;
    const std::string block(GroupBlockId(figures.group, plan_.product, plan_file::BlockKind::Planned));
    const auto found = written_.find({block, figures.row, figures.name});
    if (found == written_.end()) return months;
    const std::vector<std::string>& texts = found->second->months;
    for (std::size_t month = 0; month < monthsOfAYear && month < texts.size(); ++month) {
      if (const std::optional<double> amount = ConvertToDouble(texts[month])) {
        months[month] = ExactAmount::From(*amount);
      }
    }
    return months;
  }

  ExactAmount Booked(Group group, const std::string& account, std::size_t month) const {
    const std::optional<std::size_t> line = table_.Find(group, account);
    return line ? table_.At(*line).months[month].booked : ExactAmount();
  }

  // Explains how the amounts written into a row differ from the bookings.
  void ExplainWritten(const PlanRow& row, const Months& written) {
    const ImportedRow& imported = *row.imported;
    if (!imported.IsAccountRow()) {
      for (const std::string& account : imported.accounts) {
        depreciation_.insert(table_.LineOf(imported.group, account));
      }
      return ExplainAll(row.line, CauseCode::DepreciationSum, written);
    }
    const std::size_t account = table_.LineOf(imported.group, imported.accounts.front());
    if (!withRow_.insert(account).second) return ExplainAll(row.line, CauseCode::RowTwice, written);
    if (row.misaligned) ExplainAll(row.line, CauseCode::MisalignedRow, written);
    for (std::size_t month = 0; month < monthsOfAYear; ++month) {
      MonthAmounts& amounts = table_.At(account).months[month];
      const ExactAmount wrote = written[month].value_or(ExactAmount());
      if (row.misaligned) amounts.Explain(CauseCode::MisalignedRow, -wrote);
      amounts.Explain(written[month] ? CauseCode::BooksChanged : CauseCode::NoRow, wrote - amounts.booked);
    }
  }

  void ExplainAll(std::size_t line, CauseCode code, const Months& months) {
    for (std::size_t month = 0; month < monthsOfAYear; ++month) {
      table_.At(line).months[month].Explain(code, months[month].value_or(ExactAmount()));
    }
  }

  void ExplainAccountsWithoutRow() {
    for (std::size_t line = 0; line < table_.Lines().size(); ++line) {
      if (withRow_.contains(line)) continue;
      const Group group = table_.At(line).group;
      const bool inDepreciation = depreciation_.contains(line);
      // A plan of this product has only the accounts that were selected.
      const bool unselected = plan_.product == QBKRN_BRI && group == Group::Expenses;
      const CauseCode code = inDepreciation                ? CauseCode::DepreciationSum
                             : !Asked(group) || unselected ? CauseCode::NotAskedFor
                                                           : CauseCode::NoRow;
      for (MonthAmounts& month : table_.At(line).months) month.Explain(code, -month.booked);
    }
  }

  using RowId = std::tuple<std::string, std::int32_t, std::string>;  // block, row, name

  WorkTable& table_;
  const PlanAmounts& plan_;
  std::span<const ImportedRow> imported_;
  std::map<RowId, const plan_file::WrittenRow*> written_;
  std::set<std::size_t> withRow_;       // lines of accounts whose first row was found
  std::set<std::size_t> depreciation_;  // lines of accounts in the row "Depreciation"
};

}  // namespace

void AddPlan(WorkTable& table, const PlanAmounts& plan, std::span<const ImportedRow> imported) {
  PlanComparison(table, plan, imported).Run();
}

}  // namespace krnqb::reconcile
