#include "ui/options_dialog.h"

#include <algorithm>
#include <utility>

#include "ui/controls.h"
#include "ui/texts.h"

namespace krnqb::ui {
namespace {

constexpr int progressBarRow = 1;
constexpr int progressTextRow = 2;
constexpr int buttonRow = 3;
constexpr int statusRow = 4;

Control Progress(ControlKind kind, const ControlId& id, std::string_view spoken, int row) {
  Control progress = MakeControl(kind, id);
  progress.accessibleName = spoken;
  progress.row = row;
  progress.visible = false;
  return progress;
}

Control DialogButton(const ControlId& id, std::string_view text) {
  Control button = MakeControl(ControlKind::Button, id, text);
  button.row = buttonRow;
  return button;
}

}  // namespace

OptionsDialog::OptionsDialog(Toolkit& toolkit) : toolkit_(toolkit), importPage_(form), exportPage_(form) {
  form.name = optionsForm;
  form.defaultButton = control::importButton.name;
  form.cancelButton = control::cancelButton.name;
  form.controls.push_back(
      Progress(ControlKind::ProgressBar, control::progressBar, text::progressBarSpoken, progressBarRow));
  form.controls.push_back(
      Progress(ControlKind::Label, control::progressText, text::progressTextSpoken, progressTextRow));
  form.controls.push_back(DialogButton(control::importButton, text::importButton));
  form.controls.back().enabled = false;
  form.controls.push_back(DialogButton(control::cancelButton, text::cancelButton));
  form.controls.push_back(DialogButton(control::helpButton, text::helpButton));
  importPage_.onIncluded = [this](bool included) { form.At(control::importButton.name).enabled = included; };
  Mode(OptionsKRNtoQB);
}

std::int32_t OptionsDialog::Mode() const {
  return form.At(control::importPage.name).visible ? OptionsQBtoKRN : OptionsKRNtoQB;
}

void OptionsDialog::Mode(std::int32_t mode) {
  const bool import = mode == OptionsQBtoKRN;
  form.At(control::importPage.name).visible = import;
  form.At(control::exportPage.name).visible = !import;
  form.caption = import ? text::importCaption : text::exportCaption;
}

void OptionsDialog::Follow(ImportTask task) {
  if (!toolkit_.FollowsTasks()) return;
  form.controls.push_back(MakeControl(ControlKind::Label, control::statusLine, task.description));
  form.controls.back().row = statusRow;
  task_ = std::move(task);
}

void OptionsDialog::ShowProgress(std::int16_t percent, std::string_view description) {
  if (!importing_ || stopping_) return;
  form.At(control::progressBar.name).percent = std::clamp<int>(percent, 0, 100);
  form.At(control::progressText.name).text = description;
  toolkit_.ShowNow(*this);
}

void OptionsDialog::ShowNow() {
  if (importing_ && task_.stop) toolkit_.ShowNow(*this);
}

void OptionsDialog::Pressed(std::string_view button) {
  if (importing_) return Stop();
  if (button == control::importButton.name) Import();
  Unload();
}

void OptionsDialog::Clicked(std::string_view checkBox) {
  if (form.At(checkBox).page == control::importPage.name) importPage_.Clicked();
}

void OptionsDialog::Import() {
  if (component_ == nullptr) throw Error(error_number::objectNotSet);
  component_->BalancesImport(static_cast<QBKRN_BalancesImport>(importPage_.BalancesImport()));
  component_->IncludeExpenseAccounts(importPage_.IncludeExpenseAccounts());
  component_->IncludeIncomeAccounts(importPage_.IncludeIncomeAccounts());
  ShowThatItWorks();
  component_->Go();  // failures are in the component's error pair
  importing_ = false;
}

void OptionsDialog::ShowThatItWorks() {
  importing_ = true;
  for (Control& control : form.controls) control.enabled = false;
  for (const ControlId& progress : {control::progressBar, control::progressText}) {
    form.At(progress.name).visible = true;
    form.At(progress.name).enabled = true;
  }
  if (form.Has(control::statusLine.name)) form.At(control::statusLine.name).enabled = true;
  // Discards a second press of Import before Cancel can be pressed.
  toolkit_.ShowNow(*this);
  form.At(control::cancelButton.name).enabled = task_.stop != nullptr;
}

// The window stays until the import has ended: only then is the component free.
void OptionsDialog::Stop() {
  stopping_ = true;
  form.At(control::cancelButton.name).enabled = false;
  form.At(control::progressText.name).text = text::stopping;
  task_.stop();
}

}  // namespace krnqb::ui
