#include "ui/win32/form_window.h"

#include <commctrl.h>

#include <algorithm>
#include <utility>
#include <vector>

#include "krnqb/error.h"
#include "support/windows/own_module.h"
#include "support/windows_text.h"
#include "ui/controls.h"
#include "ui/win32/control_windows.h"
#include "ui/win32/drawn_controls.h"

namespace krnqb::ui::win32 {
namespace {

HFONT NewHeadingFont(HFONT text) {
  LOGFONTW description{};
  GetObjectW(text, sizeof(description), &description);
  description.lfHeight = MulDiv(description.lfHeight, 13, 10);
  description.lfWeight = FW_BOLD;
  return CreateFontIndirectW(&description);
}

// Input from while nobody was listening would otherwise reach the next window in this place.
void DropInput() {
  MSG dropped{};
  while (PeekMessageW(&dropped, nullptr, 0, 0, PM_REMOVE | PM_QS_INPUT) != FALSE) {
  }
}

}  // namespace

void FormWindow::Run(HWND owner) {
  const INITCOMMONCONTROLSEX classes{sizeof(classes), ICC_PROGRESS_CLASS};
  InitCommonControlsEx(&classes);
  const std::wstring name = Wide(dialog_.Shown().name);
  DialogBoxParamW(OwnModule(), name.c_str(), owner, Procedure, reinterpret_cast<LPARAM>(this));
  if (fault_) std::rethrow_exception(std::exchange(fault_, nullptr));
  if (window_ == nullptr) throw Error(error_number::cannotCreateObject);
}

void FormWindow::ShowNow() {
  hasWorked_ = true;
  ShowState();
  RedrawWindow(window_, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
}

INT_PTR CALLBACK FormWindow::Procedure(HWND place, UINT message, WPARAM first, LPARAM second) noexcept {
  if (message == WM_INITDIALOG) SetWindowLongPtrW(place, DWLP_USER, second);
  auto* shown = reinterpret_cast<FormWindow*>(GetWindowLongPtrW(place, DWLP_USER));
  if (shown == nullptr) return FALSE;
  try {
    return shown->Handle(place, message, first, second);
  } catch (...) {
    shown->fault_ = std::current_exception();
    shown->End();
    return TRUE;
  }
}

// Handles the messages of the window and of its pages.
INT_PTR FormWindow::Handle(HWND place, UINT message, WPARAM first, LPARAM second) {
  switch (message) {
    case WM_INITDIALOG:
      if (window_ == nullptr) Load(place);
      return FALSE;  // the focus is already set
    case WM_COMMAND:
      if (rows_) Command(LOWORD(first), HIWORD(first));
      return TRUE;
    case WM_CLOSE:
      Act([this] { dialog_.Dismiss(); });
      return TRUE;
    case WM_DRAWITEM:
      if (const Control* drawn = ControlOf(static_cast<int>(first))) {
        DrawControl(drawn->kind, *reinterpret_cast<const DRAWITEMSTRUCT*>(second));
      }
      return TRUE;
    default:
      return FALSE;
  }
}

void FormWindow::Load(HWND made) {
  window_ = made;
  RemoveUnknown();
  LoadPages();
  LoadControls();
  LoadHeading();
  rows_.emplace(dialog_.Shown(), controls_, window_);
  ShowState();
  SetFocus(GetNextDlgTabItem(window_, nullptr, FALSE));
}

// A template contains every control that the form may have.
void FormWindow::RemoveUnknown() {
  std::vector<HWND> unknown;
  for (HWND child = GetWindow(window_, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
    if (ControlOf(GetDlgCtrlID(child)) == nullptr) unknown.push_back(child);
  }
  for (HWND child : unknown) DestroyWindow(child);
}

// Pages come first in the tab order, in form order.
void FormWindow::LoadPages() {
  HWND previous = HWND_TOP;
  for (const Control& control : dialog_.Shown().controls) {
    if (control.kind != ControlKind::Page) continue;
    const std::wstring name = Wide(control.name);
    HWND page =
        CreateDialogParamW(OwnModule(), name.c_str(), window_, Procedure, reinterpret_cast<LPARAM>(this));
    if (page == nullptr) throw Error(error_number::cannotCreateObject);
    SetWindowLongPtrW(page, GWLP_ID, control.identifier);
    SetWindowPos(page, previous, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    previous = page;
    controls_.emplace(control.name, page);
  }
}

void FormWindow::LoadControls() {
  for (const Control& control : dialog_.Shown().controls) {
    HWND made = WindowOf(control);
    if (made == nullptr) throw Error(error_number::cannotCreateObject);
    controls_.emplace(control.name, made);
    SetUpControl(control, made);
  }
}

void FormWindow::LoadHeading() {
  const auto title = controls_.find(std::string(control::title.name));
  if (title == controls_.end()) return;
  heading_.reset(NewHeadingFont(reinterpret_cast<HFONT>(SendMessageW(window_, WM_GETFONT, 0, 0))));
  SendMessageW(title->second, WM_SETFONT, reinterpret_cast<WPARAM>(heading_.get()), FALSE);
}

void FormWindow::ShowState() {
  const Form& form = dialog_.Shown();
  SetWindowTextW(window_, Wide(form.caption).c_str());
  for (const Control& control : form.controls) ShowControl(control, controls_.at(control.name));
  rows_->Arrange(form, controls_);
}

void FormWindow::Command(int identifier, int notification) {
  const Control* control = ControlOf(identifier);
  if (control == nullptr) {
    // Enter and Escape, if the buttons they press have other numbers.
    if (identifier == IDOK) Act([this] { dialog_.Press(dialog_.Shown().defaultButton); });
    if (identifier == IDCANCEL) Act([this] { dialog_.Dismiss(); });
    return;
  }
  const std::string name = control->name;
  HWND place = controls_.at(name);
  if (control->kind == ControlKind::Button && notification == BN_CLICKED) {
    Act([&] { dialog_.Press(name); });
  } else if (control->kind == ControlKind::CheckBox && notification == BN_CLICKED) {
    const bool checked = SendMessageW(place, BM_GETCHECK, 0, 0) == BST_CHECKED;
    Act([&] { dialog_.Check(name, checked); });
  } else if (control->kind == ControlKind::DropDownList && notification == CBN_SELCHANGE) {
    const auto index = static_cast<int>(SendMessageW(place, CB_GETCURSEL, 0, 0));
    Act([&] { dialog_.Choose(name, index); });
  }
}

void FormWindow::Act(const std::function<void()>& act) {
  try {
    act();
  } catch (...) {
    fault_ = std::current_exception();
  }
  ShowState();
  if (fault_ || !dialog_.IsOpen()) End();
}

void FormWindow::End() {
  if (hasWorked_) DropInput();
  EndDialog(window_, 0);
}

HWND FormWindow::WindowOf(const Control& control) const {
  if (control.kind == ControlKind::Page) return controls_.at(control.name);
  return GetDlgItem(control.page.empty() ? window_ : controls_.at(control.page), control.identifier);
}

const Control* FormWindow::ControlOf(int identifier) const noexcept {
  const std::vector<Control>& all = dialog_.Shown().controls;
  const auto found = std::find_if(all.begin(), all.end(), [identifier](const Control& control) {
    return control.identifier == identifier;
  });
  return found == all.end() ? nullptr : &*found;
}

}  // namespace krnqb::ui::win32
