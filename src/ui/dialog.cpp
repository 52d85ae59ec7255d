#include "ui/dialog.h"

namespace krnqb::ui {

void Dialog::Press(std::string_view button) {
  if (open_ && form.IsUsable(button) && form.At(button).kind == ControlKind::Button) Pressed(button);
}

void Dialog::Check(std::string_view checkBox, bool checked) {
  if (!open_ || !form.IsUsable(checkBox)) return;
  Control& control = form.At(checkBox);
  if (control.kind != ControlKind::CheckBox) return;
  control.checked = checked;
  Clicked(checkBox);
}

void Dialog::Choose(std::string_view list, int index) {
  if (!open_ || !form.IsUsable(list)) return;
  Control& control = form.At(list);
  if (index >= 0 && index < static_cast<int>(control.entries.size())) control.selected = index;
}

}  // namespace krnqb::ui
