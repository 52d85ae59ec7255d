#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "krnqb/observer.h"
#include "krnqb/subtotals.h"
#include "krnqb/xml_element.h"

namespace krnqb {

/// Follows where the amounts of one account list go in the plan, and warns where a planner would not expect
/// them. Has no effect on the plan.
class GrowthFindings {
 public:
  /// The observer must outlive this object.
  GrowthFindings(Operation operation, Observer& observer)
      : place_{.operation = operation}, observer_(observer) {}

  /// A planned row called `name` has received an account's amounts.
  void RowOf(const cSubtotals& account, const std::string& name);

  /// The account's amounts are part of the sums of the row "Depreciation".
  void SummedAsDepreciation(const cSubtotals& account);

  /// The amounts of the row `name` were written into a row of `cellCount` cells, month 1 into the cell
  /// `firstMonth`, counted from 0.
  void Cells(const std::string& name, const cSubtotals& amounts, std::size_t cellCount,
             std::size_t firstMonth);

  /// The amounts of the planned row `name` were written into the actual row at its place, which may be an
  /// empty handle.
  void ActualRow(const std::string& name, const cSubtotals& amounts, const XmlElement& row,
                 const std::vector<XmlElement>& cells);

  /// The formulas of a group of accounts have an invalid start row.
  void NoStartRow(std::string_view group, const std::string& startRow);

  /// All rows are written. `notRequested` has the folded names of accounts that need no row.
  void Finish(const SubtotalCollection& accounts, const std::unordered_set<std::string>& notRequested);

 private:
  void Warn(Finding finding) noexcept;

  Place place_;
  Observer& observer_;
  std::unordered_map<const cSubtotals*, std::string> rows_;  // the first row of an account
  std::unordered_set<const cSubtotals*> depreciation_;
};

}  // namespace krnqb
