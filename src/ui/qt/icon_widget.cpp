#include "ui/qt/icon_widget.h"

#include <QPainter>
#include <QPainterPath>
#include <array>

namespace krnqb::ui::qt {
namespace {

constexpr int side = 48;

struct Bar {
  qreal left;
  qreal top;
};

constexpr std::array bars{Bar{9, 28}, Bar{18, 22}, Bar{27, 15}};
constexpr qreal barWidth = 6;
constexpr qreal ground = 38;

}  // namespace

IconWidget::IconWidget() {
  setFixedSize(side, side);
}

void IconWidget::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(0x2f, 0x6f, 0x4f));
  painter.drawRoundedRect(rect(), 8, 8);
  painter.setBrush(Qt::white);
  for (const Bar& bar : bars) painter.drawRect(QRectF(bar.left, bar.top, barWidth, ground - bar.top));
  QPainterPath arrow;  // down into the plan
  arrow.moveTo(39, 38);
  arrow.lineTo(35, 31);
  arrow.lineTo(43, 31);
  arrow.closeSubpath();
  painter.drawPath(arrow);
  painter.drawRect(QRectF(37.5, 12, 3, 20));
}

}  // namespace krnqb::ui::qt
