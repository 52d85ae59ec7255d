#include "ui/dialogs.h"

#include <utility>

#include "ui/about_dialog.h"

namespace krnqb::ui {
namespace {

// Records which options dialog is shown.
class ShownOptions {
 public:
  ShownOptions(OptionsDialog*& options, OptionsDialog& shown) noexcept : options_(options = &shown) {}
  ~ShownOptions() { options_ = nullptr; }
  ShownOptions(const ShownOptions&) = delete;
  ShownOptions& operator=(const ShownOptions&) = delete;

 private:
  OptionsDialog*& options_;
};

}  // namespace

Dialogs::Dialogs(std::shared_ptr<Toolkit> toolkit, std::optional<SystemInformation> system)
    : toolkit_(std::move(toolkit)), system_(std::move(system)) {}

void Dialogs::ShowMessage(std::string_view text) {
  toolkit_->ShowMessage(text);
}

Variant Dialogs::ShowDialog(QBDataExchange& component, QBKRN_Dialogs dialog) {
  switch (dialog) {
    case dlg_KRNtoQB:
      ShowOptions(component, OptionsKRNtoQB);
      return {};
    case dlg_QBtoKRN:
      ShowOptions(component, OptionsQBtoKRN);
      return {};
    case dlg_SelectQBcompany: {
      const std::string path = AskForFile(dialog);
      component.QBCompany(path);
      return path;
    }
    case dlg_SelectKRNplan:
      return AskForFile(dialog);
    default:
      return {};
  }
}

void Dialogs::ShowNow() {
  if (options_ != nullptr) options_->ShowNow();
}

void Dialogs::ShowAbout() {
  AboutDialog about(*toolkit_, system_);
  toolkit_->ShowModal(about);
}

void Dialogs::ProgressBarChange(std::int16_t PercentValue, std::string_view Description) {
  if (options_ != nullptr) options_->ShowProgress(PercentValue, Description);
}

void Dialogs::ShowOptions(QBDataExchange& component, OptionsQBKRNEnum mode) {
  if (options_ != nullptr) throw Error(error_number::formAlreadyShown);
  OptionsDialog dialog(*toolkit_);
  dialog.QBDataExchangeObject(&component);
  dialog.Mode(mode);
  if (task_ && mode == OptionsQBtoKRN) dialog.Follow(*task_);
  const ShownOptions shown(options_, dialog);
  toolkit_->ShowModal(dialog);
}

std::string Dialogs::AskForFile(QBKRN_Dialogs dialog) {
  const auto settings = SettingsOf(dialog);
  if (!settings) throw Error(error_number::invalidProcedureCall);
  std::optional<std::string> path = toolkit_->AskForFile(*settings);
  if (!path) throw Error(error_number::dialogCancelled);
  return std::move(*path);
}

}  // namespace krnqb::ui
