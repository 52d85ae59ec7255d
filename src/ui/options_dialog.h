#pragma once

#include <cstdint>
#include <string_view>

#include "krnqb/qb_data_exchange.h"
#include "ui/dialog.h"
#include "ui/export_page.h"
#include "ui/import_page.h"
#include "ui/import_task.h"
#include "ui/toolkit.h"

namespace krnqb::ui {

/// The options dialog (frmOptions): two pages, of which the mode selects one, and the import that the user
/// starts from it. During the import the dialog shows the progress, is disabled, and cannot be closed. If it
/// has a task, Cancel stays enabled and stops the import.
class OptionsDialog final : public Dialog {
 public:
  /// Starts in mode 1 without a component. The toolkit must outlive the dialog.
  explicit OptionsDialog(Toolkit& toolkit);

  /// Returns 2 if the import page is shown, else 1.
  std::int32_t Mode() const;
  /// Shows the import page for 2 (OptionsQBtoKRN), the export page for any other number.
  void Mode(std::int32_t mode);

  /// The component that the Import button uses, or null. It must outlive the dialog.
  QBDataExchange* QBDataExchangeObject() const noexcept { return component_; }
  void QBDataExchangeObject(QBDataExchange* exchange) noexcept { component_ = exchange; }

  /// Shows what the import works on and lets Cancel stop it; has no effect if the toolkit does not follow
  /// tasks. Call before the dialog is shown.
  void Follow(ImportTask task);

  /// Both do nothing.
  void ShowQBtoKRN() const noexcept {}
  void ShowKRNtoQB() const noexcept {}

  /// Shows the progress of the running import, 0 to 100; has no effect if none is running.
  void ShowProgress(std::int16_t percent, std::string_view description);

  /// Updates the window of a running import that can be stopped, so that Cancel is noticed between two
  /// events; has no effect otherwise.
  void ShowNow();

 private:
  void Pressed(std::string_view button) override;
  void Clicked(std::string_view checkBox) override;
  /// Sets the component's options from the import page and runs the import. Throws Error 91 without a
  /// component.
  void Import();
  void ShowThatItWorks();
  void Stop();

  Toolkit& toolkit_;
  QBDataExchange* component_ = nullptr;
  ImportPage importPage_;
  ExportPage exportPage_;
  ImportTask task_;
  bool importing_ = false;
  bool stopping_ = false;
};

}  // namespace krnqb::ui
