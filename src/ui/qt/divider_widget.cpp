#include "ui/qt/divider_widget.h"

#include "ui/controls.h"
#include "ui/divider.h"
#include "ui/qt/text.h"

namespace krnqb::ui::qt {
namespace {

QWidget* Line(QWidget* divider, std::string_view name, QPalette::ColorRole color) {
  auto* line = new QWidget(divider);  // NOLINT: its divider owns it
  line->setObjectName(ToQt(name));
  line->setAutoFillBackground(true);
  line->setBackgroundRole(color);
  return line;
}

void Place(QWidget& widget, const DividerLine& line) {
  widget.setGeometry(line.left, line.top, line.width, 1);
}

}  // namespace

DividerWidget::DividerWidget()
    : top_(Line(this, dividerTopLine, QPalette::Dark)),
      bottom_(Line(this, dividerBottomLine, QPalette::Light)) {
  setFixedHeight(dividerHeight);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void DividerWidget::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  const DividerLines lines = LinesOfDivider(width());
  Place(*top_, lines.top);
  Place(*bottom_, lines.bottom);
}

}  // namespace krnqb::ui::qt
