#pragma once

#include <windows.h>

#include <map>
#include <string>
#include <vector>

#include "ui/form.h"

namespace krnqb::ui::win32 {

using ControlWindows = std::map<std::string, HWND>;

/// Positions a window's rows. A row without visible content takes no space: the rows below it move up and the
/// window shrinks.
class RowLayout {
 public:
  /// Takes the positions from a window as its template created it, with every row in place.
  RowLayout(const Form& form, const ControlWindows& controls, HWND window);

  /// Collapses the rows that are empty now and restores the others.
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

  HWND window_;
  SIZE size_{};
  std::map<int, Row> rows_;
  int closedUp_ = 0;
};

}  // namespace krnqb::ui::win32
