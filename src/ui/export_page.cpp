#include "ui/export_page.h"

#include <array>

#include "ui/controls.h"
#include "ui/texts.h"

namespace krnqb::ui {
namespace {

struct Box {
  ControlId id;
  std::string_view text;
};

constexpr std::array boxes{Box{control::exportIncomeSubAccounts, text::exportIncomeSubAccounts},
                           Box{control::exportActualIncome, text::exportActualIncome},
                           Box{control::exportPlannedExpenses, text::exportPlannedExpenses},
                           Box{control::exportExpenseSubAccounts, text::exportExpenseSubAccounts}};

}  // namespace

ExportPage::ExportPage(Form& form) : form_(form) {
  Control page = MakeControl(ControlKind::Page, control::exportPage);
  page.accessibleName = text::exportPageSpoken;
  form_.controls.push_back(page);
  int row = 0;
  for (const Box& box : boxes) {
    Control checkBox = MakeControl(ControlKind::CheckBox, box.id, box.text);
    checkBox.page = control::exportPage.name;
    checkBox.row = row++;
    form_.controls.push_back(checkBox);
  }
}

void ExportPage::ClearAll() {
  for (const Box& box : boxes) form_.At(box.id.name).checked = false;
}

}  // namespace krnqb::ui
