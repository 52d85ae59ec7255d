#pragma once

#include <cstdint>
#include <string_view>

#include "krnqb/qb_data_exchange.h"
#include "ui/dialog.h"
#include "ui/export_page.h"
#include "ui/import_page.h"
#include "ui/toolkit.h"

namespace krnqb::ui {

/// The options dialog (frmOptions): two pages, of which the mode shows one, and the import that a person
/// starts from it. While the import runs the dialog shows how far it is; nothing in it can be used, and it
/// cannot be closed.
class OptionsDialog final : public Dialog {
 public:
  /// In mode 1, without a component. The toolkit outlives the dialog.
  explicit OptionsDialog(Toolkit& toolkit);

  /// 2 while the import page is shown, else 1.
  std::int32_t Mode() const;
  /// 2 (OptionsQBtoKRN) shows the import page, any other number the export page.
  void Mode(std::int32_t mode);

  /// The component that the Import button acts on, or null. It outlives the dialog.
  QBDataExchange* QBDataExchangeObject() const noexcept { return component_; }
  void QBDataExchangeObject(QBDataExchange* exchange) noexcept { component_ = exchange; }

  /// Both do nothing.
  void ShowQBtoKRN() const noexcept {}
  void ShowKRNtoQB() const noexcept {}

  /// Shows how far the import that runs has come, 0 to 100; no effect when none runs.
  void ShowProgress(std::int16_t percent, std::string_view description);

 private:
  void Pressed(std::string_view button) override;
  void Clicked(std::string_view checkBox) override;
  /// Sets the component's options from the import page and runs the import. Error 91 without a component.
  void Import();
  void ShowThatItWorks();

  Toolkit& toolkit_;
  QBDataExchange* component_ = nullptr;
  ImportPage importPage_;
  ExportPage exportPage_;
  bool importing_ = false;
};

}  // namespace krnqb::ui
