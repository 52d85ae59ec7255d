#pragma once

namespace krnqb::ui {

/// A horizontal line, one unit high, in units of the divider that it belongs to.
struct DividerLine {
  int left = 0;
  int top = 0;
  int width = 0;
};

/// The lines of a divider: a dark one above a light one, which together look etched.
struct DividerLines {
  DividerLine top;
  DividerLine bottom;
};

inline constexpr int dividerHeight = 2;

/// The lines of a divider of that width: both as wide as it, the lower one a unit below the upper one.
constexpr DividerLines LinesOfDivider(int width) noexcept {
  return {.top = {.left = 0, .top = 0, .width = width}, .bottom = {.left = 0, .top = 1, .width = width}};
}

}  // namespace krnqb::ui
