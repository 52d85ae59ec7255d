#pragma once

#include <windows.h>

#include <map>
#include <string>
#include <vector>

#include "ui/form.h"

namespace krnqb::ui::win32 {

using ControlWindows = std::map<std::string, HWND>;

/// Where a window's rows stand. A row that shows nothing takes no room: those below it move up, and the
/// window is that much lower.
class RowLayout {
 public:
  /// Of a window as its template has made it, every row in its place.
  RowLayout(const Form& form, const ControlWindows& controls, HWND shownWindow);

  /// Closes up the rows that show nothing now, and makes room for those that do.
  void Arrange(const Form& form, const ControlWindows& controls);

 private:
  struct Place {
    std::string control;
    int left = 0;
    int top = 0;
  };
  struct Row {
    int top = 0;
    std::vector<Place> places;
  };

  HWND window;
  SIZE size{};
  std::map<int, Row> rows;
  int closedUp = 0;
};

}  // namespace krnqb::ui::win32
