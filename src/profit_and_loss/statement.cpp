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

std::string StatementAccount::FullName() const {
  std::string fullName;
  for (const std::string& name : names) {
    if (!fullName.empty()) fullName += ':';
    fullName += name;
  }
  return fullName;
}

}  // namespace krnqb::profit_and_loss
