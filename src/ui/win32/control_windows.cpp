#include "ui/win32/control_windows.h"

#include <commctrl.h>

#include "support/windows_text.h"

namespace krnqb::ui::win32 {
namespace {

bool ShowsText(ControlKind kind) {
  return kind == ControlKind::Button || kind == ControlKind::CheckBox || kind == ControlKind::Label;
}

std::wstring TextOf(HWND window) {
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
  const int length = GetWindowTextW(window, text.data(), static_cast<int>(text.size()));
  text.resize(static_cast<std::size_t>(length));
  return text;
}

void ShowText(HWND window, const std::wstring& text) {
  if (TextOf(window) != text) SetWindowTextW(window, text.c_str());
}

// Sends a value unless the window already has it.
void ShowValue(HWND window, UINT asking, UINT setting, int value) {
  if (SendMessageW(window, asking, 0, 0) != value) {
    SendMessageW(window, setting, static_cast<WPARAM>(value), 0);
  }
}

}  // namespace

void SetUpControl(const Control& control, HWND window) {
  if (!ShowsText(control.kind)) SetWindowTextW(window, Wide(control.accessibleName).c_str());
  if (control.kind == ControlKind::ProgressBar) SendMessageW(window, PBM_SETRANGE32, 0, 100);
  for (const ListEntry& entry : control.entries) {
    const std::wstring text = Wide(entry.text);
    SendMessageW(window, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
  }
}

void ShowControl(const Control& control, HWND window) {
  if (ShowsText(control.kind)) ShowText(window, Wide(control.text));
  if (control.kind == ControlKind::CheckBox) {
    ShowValue(window, BM_GETCHECK, BM_SETCHECK, control.checked ? BST_CHECKED : BST_UNCHECKED);
  } else if (control.kind == ControlKind::DropDownList) {
    ShowValue(window, CB_GETCURSEL, CB_SETCURSEL, control.selected);
  } else if (control.kind == ControlKind::ProgressBar) {
    ShowValue(window, PBM_GETPOS, PBM_SETPOS, control.percent);
  }
  if ((IsWindowEnabled(window) != FALSE) != control.enabled) EnableWindow(window, control.enabled);
  const bool shown = (GetWindowLongPtrW(window, GWL_STYLE) & WS_VISIBLE) != 0;
  if (shown != control.visible) ShowWindow(window, control.visible ? SW_SHOWNA : SW_HIDE);
}

}  // namespace krnqb::ui::win32
