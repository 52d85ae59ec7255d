#pragma once

#include <QDialog>
#include <exception>
#include <functional>

#include "ui/dialog.h"
#include "ui/qt/form_layout.h"

namespace krnqb::ui::qt {

/// A dialog as a window: displays its state and passes on what the user does.
class FormWindow : public QDialog {
 public:
  /// The dialog must outlive its window.
  FormWindow(Dialog& dialog, QWidget* parent);

  const Dialog& Shown() const noexcept { return dialog_; }

  void ShowState();

  /// Shows the window until the dialog is no longer open. Rethrows what the dialog threw.
  void Run();

  void reject() override;

 private:
  void MakeWidgets();
  void ConnectWidget(const Control& control, QWidget& widget);
  /// Passes on a user action.
  void Act(const std::function<void()>& act);

  Dialog& dialog_;
  ControlWidgets widgets_;
  std::exception_ptr fault_;  // exceptions must not pass through Qt
};

}  // namespace krnqb::ui::qt
