#include "ui/import_page.h"

#include <array>
#include <utility>

#include "krnqb/enumerations.h"
#include "ui/controls.h"
#include "ui/texts.h"

namespace krnqb::ui {
namespace {

Control BalancesList() {
  Control list = MakeControl(ControlKind::DropDownList, control::balances);
  for (const auto& [text, balances] : {std::pair{text::noBalances, BalImport_None},
                                       {text::plannedBalances, BalImport_Planned},
                                       {text::actualBalances, BalImport_Actual},
                                       {text::allBalances, BalImport_All}}) {
    list.entries.push_back({std::string(text), static_cast<std::int16_t>(balances)});
  }
  list.accessibleName = SpokenText(text::accountBalances);
  list.selected = 0;
  list.enabled = false;
  return list;
}

}  // namespace

ImportPage::ImportPage(Form& form) : form_(form) {
  Control page = MakeControl(ControlKind::Page, control::importPage);
  page.accessibleName = text::importPageSpoken;
  form_.controls.push_back(page);

  const auto add = [this](int row, Control added) {
    added.page = control::importPage.name;
    added.row = row;
    form_.controls.push_back(std::move(added));
  };
  add(0, MakeControl(ControlKind::CheckBox, control::includeIncomeAccounts, text::includeIncomeAccounts));
  add(1, MakeControl(ControlKind::CheckBox, control::includeExpenseAccounts, text::includeExpenseAccounts));
  Control divider = MakeControl(ControlKind::Divider, control::divider);
  divider.accessibleName = text::dividerSpoken;
  add(2, divider);
  add(3, MakeControl(ControlKind::Label, control::balancesLabel, text::accountBalances));
  add(3, BalancesList());
}

bool ImportPage::IncludeIncomeAccounts() const {
  return form_.At(control::includeIncomeAccounts.name).checked;
}

bool ImportPage::IncludeExpenseAccounts() const {
  return form_.At(control::includeExpenseAccounts.name).checked;
}

std::int16_t ImportPage::BalancesImport() const {
  const Control& list = form_.At(control::balances.name);
  return list.entries.at(static_cast<std::size_t>(list.selected)).data;
}

void ImportPage::Clicked() {
  const bool included = IncludeIncomeAccounts() || IncludeExpenseAccounts();
  form_.At(control::balances.name).enabled = included;
  if (onIncluded) onIncluded(included);
}

}  // namespace krnqb::ui
