#include "ui/win32/drawn_controls.h"

#include <algorithm>
#include <array>
#include <memory>
#include <type_traits>

#include "ui/divider.h"

namespace krnqb::ui::win32 {
namespace {

struct DeleteObjectOf {
  void operator()(HGDIOBJ object) const { DeleteObject(object); }
};
using Drawn = std::unique_ptr<std::remove_pointer_t<HGDIOBJ>, DeleteObjectOf>;

struct DeleteContext {
  void operator()(HDC context) const { DeleteDC(context); }
};
using Context = std::unique_ptr<std::remove_pointer_t<HDC>, DeleteContext>;

// The side of the square in whose units the icon is described.
constexpr int iconSide = 48;
// The icon is drawn at this multiple of its size and scaled down, for smooth edges.
constexpr int oversize = 4;
constexpr COLORREF green = RGB(0x2f, 0x6f, 0x4f);
constexpr COLORREF white = RGB(0xff, 0xff, 0xff);

constexpr std::array bars{RECT{9, 28, 15, 38}, RECT{18, 22, 24, 38}, RECT{27, 15, 33, 38}};
constexpr RECT arrowShaft{38, 12, 41, 32};
constexpr std::array arrowHead{POINT{39, 38}, POINT{35, 31}, POINT{43, 31}};  // down into the plan

void DrawLine(HDC context, const RECT& area, const DividerLine& line, int unit, int color) {
  const RECT drawn{area.left + line.left, area.top + line.top * unit, area.left + line.left + line.width,
                   area.top + (line.top + 1) * unit};
  FillRect(context, &drawn, GetSysColorBrush(color));
}

void DrawDivider(const DRAWITEMSTRUCT& drawing) {
  const RECT& area = drawing.rcItem;
  const int unit = std::max(1, static_cast<int>(area.bottom - area.top) / dividerHeight);
  const DividerLines lines = LinesOfDivider(static_cast<int>(area.right - area.left));
  DrawLine(drawing.hDC, area, lines.top, unit, COLOR_3DSHADOW);
  DrawLine(drawing.hDC, area, lines.bottom, unit, COLOR_3DHILIGHT);
}

void DrawIcon(HDC context, int side) {
  const auto scaled = [side](int units) { return MulDiv(units, side, iconSide); };
  const Drawn ground(CreateSolidBrush(green));
  const Drawn figures(CreateSolidBrush(white));
  SelectObject(context, GetStockObject(NULL_PEN));
  const HGDIOBJ before = SelectObject(context, ground.get());
  RoundRect(context, 0, 0, side + 1, side + 1, scaled(16), scaled(16));
  SelectObject(context, figures.get());
  for (const RECT& bar : {bars[0], bars[1], bars[2], arrowShaft}) {
    Rectangle(context, scaled(bar.left), scaled(bar.top), scaled(bar.right) + 1, scaled(bar.bottom) + 1);
  }
  std::array<POINT, 3> head = arrowHead;
  for (POINT& corner : head) corner = {scaled(corner.x), scaled(corner.y)};
  Polygon(context, head.data(), static_cast<int>(head.size()));
  SelectObject(context, before);
}

void DrawIconSmoothly(const DRAWITEMSTRUCT& drawing) {
  const RECT& area = drawing.rcItem;
  const int side = static_cast<int>(std::min(area.right - area.left, area.bottom - area.top));
  const int large = side * oversize;
  const Context context(CreateCompatibleDC(drawing.hDC));
  const Drawn bitmap(CreateCompatibleBitmap(drawing.hDC, large, large));
  const HGDIOBJ before = SelectObject(context.get(), bitmap.get());
  const RECT whole{0, 0, large, large};
  FillRect(context.get(), &whole, GetSysColorBrush(COLOR_3DFACE));
  DrawIcon(context.get(), large);
  SetStretchBltMode(drawing.hDC, HALFTONE);
  StretchBlt(drawing.hDC, area.left, area.top, side, side, context.get(), 0, 0, large, large, SRCCOPY);
  SelectObject(context.get(), before);
}

}  // namespace

void DrawControl(ControlKind kind, const DRAWITEMSTRUCT& drawing) {
  if (kind == ControlKind::Divider) {
    DrawDivider(drawing);
  } else {
    DrawIconSmoothly(drawing);
  }
}

}  // namespace krnqb::ui::win32
