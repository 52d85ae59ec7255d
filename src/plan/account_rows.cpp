#include "plan/account_rows.h"

#include <optional>

#include "krnqb/error.h"
#include "krnqb/keyed_collection.h"
#include "plan/block_rows.h"

namespace krnqb {
namespace {

// The names in a block's first cells, hashed: a list has many accounts and a block many rows.
class RowNames {
 public:
  // A row without cells ends the comparison: the names of the rows after it are not read.
  explicit RowNames(const XmlElement& block) {
    for (XmlElement row = block.FirstChild(); row; row = row.NextSibling()) {
      const XmlElement cell = row.FirstChild();
      if (!cell) {
        rowWithoutCells_ = true;
        return;
      }
      names_.insert(cell.Text());
    }
  }

  bool Contains(const std::string& name) const {
    if (names_.contains(name)) return true;
    if (rowWithoutCells_) throw Error(error_number::objectNotSet);
    return false;
  }

  void Insert(const XmlElement& row) {
    if (const XmlElement cell = row.FirstChild()) {
      names_.insert(cell.Text());
    } else {
      rowWithoutCells_ = true;
    }
  }

 private:
  std::unordered_set<std::string> names_;
  bool rowWithoutCells_ = false;
};

void MergeByName(const XmlElement& block, const XmlElement& accounts, std::vector<NewAccountRow>& newRows,
                 std::int16_t rowsKeptBelow) {
  std::optional<RowNames> rowNames;
  for (XmlElement account = accounts.FirstChild(); account; account = account.NextSibling()) {
    if (!IsTopLevelAccount(account)) continue;
    const std::string name = account.Child("Name").Text();
    if (!block) throw Error(error_number::objectNotSet);
    if (!rowNames) rowNames.emplace(block);
    if (rowNames->Contains(name)) continue;
    newRows.push_back({name, {}});
    newRows.back().row = AddBlockRow(block, name, rowsKeptBelow);
    rowNames->Insert(newRows.back().row);
  }
}

}  // namespace

bool IsTopLevelAccount(const XmlElement& account) {
  const XmlElement sublevel = account.Child("Sublevel");
  return sublevel && sublevel.Text() == "0";
}

void MergeAccountRows(const XmlElement& tableBlocks, std::string_view blockName, const XmlElement& accounts,
                      std::vector<NewAccountRow>& newRows, const TwinBlocks& twins,
                      std::int16_t rowsKeptBelow) {
  if (!tableBlocks || !tableBlocks.FirstChild()) return;
  if (!blockName.empty()) MergeByName(FindBlock(tableBlocks, blockName), accounts, newRows, rowsKeptBelow);
  for (XmlElement block = tableBlocks.FirstChild(); block; block = block.NextSibling()) {
    const std::optional<std::string> id = block.Attribute("id");
    if (!id || !twins.contains(FoldedKey(*id))) continue;
    for (std::size_t count = 0; count < newRows.size(); ++count) AddBlockRow(block, {}, rowsKeptBelow);
  }
  if (!newRows.empty()) ClearFormulaCells(tableBlocks);
}

}  // namespace krnqb
