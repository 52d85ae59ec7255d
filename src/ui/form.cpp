#include "ui/form.h"

#include <algorithm>

#include "krnqb/error.h"

namespace krnqb::ui {
namespace {

const Control* Find(const Form& form, std::string_view name) noexcept {
  const auto found = std::find_if(form.controls.begin(), form.controls.end(),
                                  [name](const Control& control) { return control.name == name; });
  return found == form.controls.end() ? nullptr : &*found;
}

}  // namespace

const Control& Form::At(std::string_view controlName) const {
  const Control* control = Find(*this, controlName);
  if (control == nullptr) throw Error(error_number::invalidProcedureCall);
  return *control;
}

Control& Form::At(std::string_view controlName) {
  const Control& control = static_cast<const Form&>(*this).At(controlName);
  return controls[static_cast<std::size_t>(&control - controls.data())];
}

bool Form::Has(std::string_view controlName) const noexcept {
  return Find(*this, controlName) != nullptr;
}

bool Form::IsUsable(std::string_view controlName) const noexcept {
  const Control* control = Find(*this, controlName);
  if (control == nullptr || !control->visible || !control->enabled) return false;
  const Control* page = control->page.empty() ? nullptr : Find(*this, control->page);
  return page == nullptr || page->visible;
}

Control MakeControl(ControlKind kind, const ControlId& id, std::string_view text) {
  Control control;
  control.name = id.name;
  control.identifier = id.number;
  control.kind = kind;
  control.text = text;
  control.accessibleName = SpokenText(text);
  return control;
}

std::string SpokenText(std::string_view caption) {
  std::string spoken;
  std::copy_if(caption.begin(), caption.end(), std::back_inserter(spoken),
               [](char character) { return character != '&'; });
  if (spoken.ends_with(':')) spoken.pop_back();
  return spoken;
}

}  // namespace krnqb::ui
