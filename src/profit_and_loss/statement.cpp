#include "profit_and_loss/statement.h"

namespace krnqb::profit_and_loss {

std::string_view SectionName(Section section) noexcept {
  switch (section) {
    case Section::Income:
      return "Income";
    case Section::CostOfGoods:
      return "Cost of Goods Sold";
    case Section::Expense:
      return "Expense";
    case Section::OtherIncome:
      return "Other Income";
    case Section::OtherExpense:
      return "Other Expense";
    case Section::Unknown:
      break;
  }
  return "";
}

bool StatementColumn::SameTime(const StatementColumn& other) const noexcept {
  return first == other.first && last == other.last;
}

bool StatementColumn::Overlaps(const StatementColumn& other) const noexcept {
  if (!first || !last || !other.first || !other.last) return true;
  return *first <= *other.last && *other.first <= *last;
}

std::string StatementAccount::FullName() const {
  std::string fullName;
  for (const std::string& name : names) {
    if (!fullName.empty()) fullName += ':';
    fullName += name;
  }
  return fullName;
}

}  // namespace krnqb::profit_and_loss
