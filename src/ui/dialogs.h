#pragma once

#include <memory>
#include <optional>

#include "krnqb/outside_world.h"
#include "ui/options_dialog.h"
#include "ui/system_information.h"
#include "ui/toolkit.h"

namespace krnqb::ui {

/// The component's dialogs on a toolkit. Stands in a component's outside world twice: as its user interface,
/// and among its event sinks, so that an import started from the dialog shows how far it is.
class Dialogs final : public UserInterface, public EventSink {
 public:
  explicit Dialogs(std::shared_ptr<Toolkit> shownBy, std::optional<SystemInformation> informedSystem = {});

  void ShowMessage(std::string_view text) override;

  /// Error 400 for an options dialog while one is shown, 32755 when a person chose no file.
  Variant ShowDialog(QBDataExchange& component, QBKRN_Dialogs dialog) override;

  /// Shows the About box and returns when it has been closed.
  void ShowAbout();

  void XMLprocessing(Variant& /*oXML*/) override {}
  void TableModified(std::string_view /*sTableID*/) override {}
  void AfterImport() override {}
  void ProgressBarChange(std::int16_t PercentValue, std::string_view Description) override;

 private:
  void ShowOptions(QBDataExchange& component, OptionsQBKRNEnum mode);
  std::string AskForFile(QBKRN_Dialogs dialog);

  std::shared_ptr<Toolkit> toolkit_;
  std::optional<SystemInformation> system_;
  OptionsDialog* options_ = nullptr;  // while it is shown
};

}  // namespace krnqb::ui
