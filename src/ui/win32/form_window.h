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

/// A dialog as a window: shows what it holds and passes on what a person does. The window is made from the
/// template of the form's name, each of its pages from that of the page's name.
class FormWindow {
 public:
  /// The dialog outlives its window.
  explicit FormWindow(Dialog& shownDialog) : dialog(shownDialog) {}
  FormWindow(const FormWindow&) = delete;
  FormWindow& operator=(const FormWindow&) = delete;

  const Dialog& Shown() const noexcept { return dialog; }

  /// Shows the window before its owner, which may be null, until the dialog is no longer open. Throws what
  /// the dialog threw; error 429 when the window cannot be made.
  void Run(HWND owner);

  /// Shows and paints what the dialog holds now, without handling messages: what a person does waits, and is
  /// dropped when the dialog ends.
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
  /// Passes on what a person did.
  void Act(const std::function<void()>& act);
  void End();
  HWND WindowOf(const Control& control) const;
  const Control* ControlOf(int identifier) const noexcept;

  Dialog& dialog;
  HWND window = nullptr;
  ControlWindows controls;
  std::optional<RowLayout> rows;
  std::unique_ptr<std::remove_pointer_t<HFONT>, DeleteFont> heading;
  bool hasWorked = false;
  std::exception_ptr fault;  // nothing may be thrown through the system
};

}  // namespace krnqb::ui::win32
