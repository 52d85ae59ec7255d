#pragma once

namespace krnqb::ui {

/// A horizontal line one unit high; coordinates are relative to its divider.
struct DividerLine {
  int left = 0;
  int top = 0;
  int width = 0;
};

/// The lines of a divider: a dark line above a light one, which look etched.
struct DividerLines {
  DividerLine top;
  DividerLine bottom;
};

inline constexpr int dividerHeight = 2;

/// Returns the lines of a divider: both span its width, the lower one unit below the upper.
constexpr DividerLines LinesOfDivider(int width) noexcept {
  return {.top = {.left = 0, .top = 0, .width = width}, .bottom = {.left = 0, .top = 1, .width = width}};
}

}  // namespace krnqb::ui
