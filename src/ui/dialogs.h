#pragma once

#include <memory>
#include <optional>
#include <utility>

#include "krnqb/outside_world.h"
#include "ui/options_dialog.h"
#include "ui/system_information.h"
#include "ui/toolkit.h"

namespace krnqb::ui {

/// The component's dialogs, shown by a toolkit. Belongs in a component's outside world twice: as its user
/// interface and among its event sinks, so that the dialog can show the progress of the import it started.
class Dialogs final : public UserInterface, public EventSink {
 public:
  explicit Dialogs(std::shared_ptr<Toolkit> toolkit, std::optional<SystemInformation> system = {});

  void ShowMessage(std::string_view text) override;

  /// Throws Error 400 if an options dialog is already shown, 32755 if the user chose no file.
  Variant ShowDialog(QBDataExchange& component, QBKRN_Dialogs dialog) override;

  /// Has the options dialogs shown from now on show what their import works on, and lets their Cancel stop
  /// it; has no effect if the toolkit does not follow tasks.
  void Follow(ImportTask task) { task_ = std::move(task); }

  /// Updates the options dialog whose import runs, so that its Cancel is noticed; has no effect without one,
  /// or if its import cannot be stopped.
  void ShowNow();

  /// Shows the About box; returns when it is closed.
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
  std::optional<ImportTask> task_;
  OptionsDialog* options_ = nullptr;  // while it is shown
};

}  // namespace krnqb::ui
