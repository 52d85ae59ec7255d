#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "fuzz/xml_promises.h"
#include "krnqb/plan_object.h"
#include "plan_file/alignment.h"
#include "plan_file/content.h"
#include "plan_file/document.h"
#include "plan_file/layout.h"
#include "plan_file/listing.h"
#include "plan_file/tables.h"
#include "support/number_text.h"

namespace krnqb::fuzz {

/// A plan in memory: the tables of a plan file without the file.
class MemoryPlan : public PlanObject {
 public:
  explicit MemoryPlan(plan_file::PlanDocument document)
      : tables_(std::make_shared<plan_file::PlanTables>(std::move(document))) {}

  bool OpenPlan(std::string_view /*planFile*/) override { return false; }
  std::shared_ptr<PlanData> Data() override { return tables_; }

  plan_file::PlanTables& Tables() { return *tables_; }
  std::string Text() const { return plan_file::PlanDocumentText(tables_->Document()); }

 private:
  std::shared_ptr<plan_file::PlanTables> tables_;
};

/// Returns the new plan of a product that begins in January 2003.
inline std::shared_ptr<MemoryPlan> NewPlan(QBKRNproduct product) {
  const std::string text = plan_file::NewPlanText(product, {.year = 2003, .month = 1});
  return std::make_shared<MemoryPlan>(plan_file::ReadPlanDocument(text, "plan.kpf"));
}

/// Returns the cells of a plan's document.
inline plan_file::PlanContent ContentOf(const plan_file::PlanDocument& document) {
  plan_file::PlanContent content;
  for (const plan_file::StoredTable& table : document.tables) {
    plan_file::PlanTableContent& read = content.emplace_back(plan_file::PlanTableContent{table.id, {}});
    for (const XmlElement& block : table.element.Child("tableblocks").Children()) {
      plan_file::PlanBlock& rows = read.blocks.emplace_back(plan_file::PlanBlock{
          block.Attribute("id").value_or(""), block.Attribute("startrow").value_or(""), {}});
      for (const XmlElement& row : block.Children()) {
        plan_file::PlanRow& cells = rows.rows.emplace_back();
        for (const XmlElement& cell : row.Children()) cells.push_back(cell.Text());
      }
    }
  }
  return content;
}

/// Ends the process unless a plan's text is a plan that is written in the same way.
inline void RequirePlan(const std::string& text) {
  plan_file::PlanDocument document;
  const auto error = ErrorOf([&] { document = plan_file::ReadPlanDocument(text, "plan.kpf"); });
  Require(!error, "a plan's text is a plan", error ? error->Description() + "\n" + text : text);
  Require(plan_file::PlanDocumentText(document) == text, "a plan is written as it was read", text);
}

/// Returns whether every account in a document has a name that stays in its row: an empty name is not
/// written, and one like a formula is cleared with the formulas.
inline bool NamesStay(const XmlElement& document) {
  if (!document) return true;
  return std::ranges::none_of(document.SelectAll("//Name"), [](const XmlElement& name) {
    const std::string text = name.Text();
    return text.empty() || plan_file::IsFormula(text);
  });
}

/// Returns whether an import may leave a text in a cell after the first of a row: nothing, a decimal number,
/// or a formula that begins with one.
inline bool IsWrittenCell(std::string_view text) {
  if (text == plan_file::emptyCellText) return true;
  if (plan_file::IsFormula(text)) text = text.substr(1, text.find_first_of(" *", 1) - 1);
  return ConvertToDouble(text).has_value();
}

/// Ends the process if a cell that an import changed has another text than `IsWrittenCell` allows. `before`
/// and `after` are the same plan.
inline void RequireWrittenCells(const plan_file::PlanContent& before, const plan_file::PlanContent& after) {
  Require(before.size() == after.size(), "an import adds and removes no table");
  for (std::size_t table = 0; table < before.size(); ++table) {
    const auto& blocksBefore = before[table].blocks;
    const auto& blocksAfter = after[table].blocks;
    Require(blocksBefore.size() == blocksAfter.size(), "an import adds and removes no block",
            before[table].id);
    for (std::size_t block = 0; block < blocksBefore.size(); ++block) {
      const auto& rows = blocksAfter[block].rows;
      const auto earlier = plan_file::MatchRows(blocksBefore[block].rows, rows);
      for (std::size_t row = 0; row < rows.size(); ++row) {
        // A name like a formula may have been cleared: then it is unknown which row this was.
        if (!earlier[row] && !rows[row].empty() && rows[row][0] == plan_file::emptyCellText) continue;
        for (std::size_t column = 1; column < rows[row].size(); ++column) {
          const std::string& cell = rows[row][column];
          const bool kept = earlier[row] && column < blocksBefore[block].rows[*earlier[row]].size() &&
                            blocksBefore[block].rows[*earlier[row]][column] == cell;
          Require(kept || IsWrittenCell(cell), "an import writes numbers and formulas", cell);
        }
      }
    }
  }
}

}  // namespace krnqb::fuzz
