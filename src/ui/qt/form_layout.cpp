#include "ui/qt/form_layout.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QLabel>
#include <algorithm>
#include <vector>

#include "ui/controls.h"

namespace krnqb::ui::qt {
namespace {

constexpr int contentWidth =
    340;  // wide enough for a caption beside the window's buttons and for a sentence in few lines
constexpr int spaceAboveButtons = 8;

using Row = std::vector<const Control*>;

// The controls of a page (or of the window, for the empty name) by row. Pages share a row, since only one is
// visible.
std::map<int, Row> RowsOf(const Form& form, const std::string& page) {
  std::map<int, Row> rows;
  for (const Control& control : form.controls) {
    if (control.page == page && control.kind != ControlKind::Picture) rows[control.row].push_back(&control);
  }
  return rows;
}

bool IsButtonRow(const Row& row) {
  return std::all_of(row.begin(), row.end(),
                     [](const Control* control) { return control->kind == ControlKind::Button; });
}

void AddButtons(QBoxLayout& lines, const Row& row, const ControlWidgets& widgets) {
  lines.addSpacing(spaceAboveButtons);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  for (const Control* control : row) buttons->addWidget(widgets.at(control->name));
  lines.addLayout(buttons);
}

// A label names the list beside it.
void AddSideBySide(QBoxLayout& lines, const Row& row, const ControlWidgets& widgets) {
  auto* line = new QHBoxLayout;
  QLabel* label = nullptr;
  for (const Control* control : row) {
    QWidget* widget = widgets.at(control->name);
    if (auto* list = dynamic_cast<QComboBox*>(widget); list != nullptr && label != nullptr) {
      label->setBuddy(list);
    }
    label = dynamic_cast<QLabel*>(widget);
    line->addWidget(widget, label == nullptr ? 1 : 0);
  }
  lines.addLayout(line);
}

void AddAlone(QBoxLayout& lines, const Control& control, const ControlWidgets& widgets) {
  QWidget* widget = widgets.at(control.name);
  if (auto* label = dynamic_cast<QLabel*>(widget)) {
    label->setWordWrap(true);
    label->setFixedWidth(contentWidth);
    if (control.name == control::title.name) {
      QFont heading = label->font();
      heading.setBold(true);
      heading.setPointSizeF(heading.pointSizeF() * 1.3);
      label->setFont(heading);
    }
  }
  lines.addWidget(widget);
}

void Arrange(const Form& form, const std::string& page, const ControlWidgets& widgets, QBoxLayout& lines) {
  for (const auto& [number, row] : RowsOf(form, page)) {
    const bool pages = row.front()->kind == ControlKind::Page;
    if (IsButtonRow(row)) {
      AddButtons(lines, row, widgets);
    } else if (row.size() > 1 && !pages) {
      AddSideBySide(lines, row, widgets);
    } else {
      for (const Control* control : row) AddAlone(lines, *control, widgets);
    }
  }
}

QVBoxLayout* ArrangeWindow(const Form& form, const ControlWidgets& widgets) {
  auto* lines = new QVBoxLayout;
  for (const Control& control : form.controls) {
    if (control.kind != ControlKind::Page) continue;
    QWidget* page = widgets.at(control.name);
    page->setMinimumWidth(contentWidth);
    auto* pageLines = new QVBoxLayout(page);
    pageLines->setContentsMargins(0, 0, 0, 0);
    Arrange(form, control.name, widgets, *pageLines);
  }
  Arrange(form, {}, widgets, *lines);
  return lines;
}

void OrderTabs(const Form& form, const ControlWidgets& widgets) {
  QWidget* previous = nullptr;
  for (const Control& control : form.controls) {
    QWidget* widget = widgets.at(control.name);
    if (widget->focusPolicy() == Qt::NoFocus) continue;
    if (previous != nullptr) QWidget::setTabOrder(previous, widget);
    previous = widget;
  }
}

}  // namespace

void ArrangeForm(const Form& form, const ControlWidgets& widgets, QWidget& window) {
  auto* columns = new QHBoxLayout(&window);
  columns->setSizeConstraint(QLayout::SetFixedSize);
  for (const Control& control : form.controls) {
    if (control.kind != ControlKind::Picture) continue;
    columns->addWidget(widgets.at(control.name), 0, Qt::AlignTop);
    columns->addSpacing(spaceAboveButtons);
  }
  columns->addLayout(ArrangeWindow(form, widgets));
  OrderTabs(form, widgets);
}

}  // namespace krnqb::ui::qt
