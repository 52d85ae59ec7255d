#include "ui/win32/row_layout.h"

#include <algorithm>
#include <iterator>

namespace krnqb::ui::win32 {
namespace {

bool TakesRoom(const Control& control) {
  const bool empty = control.kind == ControlKind::Label && control.text.empty();
  return control.visible && !empty;
}

POINT PlaceOf(HWND control, HWND window) {
  RECT place{};
  GetWindowRect(control, &place);
  POINT corner{place.left, place.top};
  ScreenToClient(window, &corner);
  return corner;
}

}  // namespace

RowLayout::RowLayout(const Form& form, const ControlWindows& controls, HWND window) : window_(window) {
  RECT area{};
  GetWindowRect(window_, &area);
  size_ = {area.right - area.left, area.bottom - area.top};
  for (const Control& control : form.controls) {
    if (!control.page.empty()) continue;
    const POINT corner = PlaceOf(controls.at(control.name), window_);
    const auto [row, isNew] = rows_.try_emplace(control.row);
    row->second.top = isNew ? corner.y : std::min<int>(row->second.top, corner.y);
    row->second.places.push_back({control.name, corner.x, corner.y});
  }
}

void RowLayout::Arrange(const Form& form, const ControlWindows& controls) {
  int closing = 0;
  for (auto row = rows_.begin(); row != rows_.end(); ++row) {
    const std::vector<Place>& places = row->second.places;
    const auto next = std::next(row);
    const bool shown = std::any_of(places.begin(), places.end(),
                                   [&form](const Place& place) { return TakesRoom(form.At(place.control)); });
    if (!shown && next != rows_.end()) closing += next->second.top - row->second.top;
    for (const Place& place : places) {
      SetWindowPos(controls.at(place.control), nullptr, place.left, place.top - closing, 0, 0,
                   SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
  }
  if (closing == closedUp_) return;
  closedUp_ = closing;
  SetWindowPos(window_, nullptr, 0, 0, size_.cx, size_.cy - closing,
               SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
  // Controls moved while the window was shorter were clipped.
  RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

}  // namespace krnqb::ui::win32
