#pragma once

#include <windows.h>

#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <type_traits>

#include "ui/dialog.h"
#include "ui/win32/row_layout.h"

namespace krnqb::ui::win32 {

/// A dialog as a window: displays its state and passes on what the user does. The window is created from the
/// template with the form's name, each page from the template with the page's name.
class FormWindow {
 public:
  /// The dialog must outlive its window.
  explicit FormWindow(Dialog& dialog) : dialog_(dialog) {}
  FormWindow(const FormWindow&) = delete;
  FormWindow& operator=(const FormWindow&) = delete;

  const Dialog& Shown() const noexcept { return dialog_; }

  /// Shows the window in front of its owner, which may be null, until the dialog is no longer open. Rethrows
  /// what the dialog threw; throws Error 429 if the window cannot be created.
  void Run(HWND owner);

  /// Displays and paints the dialog's current state without handling messages: user input waits, and is
  /// discarded when the dialog ends.
  void ShowNow();

 private:
  struct DeleteFont {
    void operator()(HFONT font) const { DeleteObject(font); }
  };

  static INT_PTR CALLBACK Procedure(HWND place, UINT message, WPARAM first, LPARAM second) noexcept;
  INT_PTR Handle(HWND place, UINT message, WPARAM first, LPARAM second);
  void Load(HWND made);
  void LoadPages();
  void LoadControls();
  void LoadHeading();
  void RemoveUnknown();
  void ShowState();
  void Command(int identifier, int notification);
  /// Passes on a user action.
  void Act(const std::function<void()>& act);
  void End();
  HWND WindowOf(const Control& control) const;
  const Control* ControlOf(int identifier) const noexcept;

  Dialog& dialog_;
  HWND window_ = nullptr;
  ControlWindows controls_;
  std::optional<RowLayout> rows_;
  std::unique_ptr<std::remove_pointer_t<HFONT>, DeleteFont> heading_;
  bool hasWorked_ = false;
  std::exception_ptr fault_;  // exceptions must not pass through the system
};

}  // namespace krnqb::ui::win32
