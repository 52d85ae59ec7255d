#include "ui/qt/control_widgets.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

#include "ui/qt/divider_widget.h"
#include "ui/qt/icon_widget.h"
#include "ui/qt/text.h"

namespace krnqb::ui::qt {
namespace {

// Lets a label break a word, such as a long file name, that is wider than itself.
QString Breakable(const QString& text) {
  constexpr int longWord = 24;
  constexpr QChar zeroWidthSpace(0x200B);
  QString breakable;
  int letters = 0;
  for (const QChar character : text) {
    letters = character.isSpace() ? 0 : letters + 1;
    breakable += character;
    if (letters % longWord == 0 && letters > 0 && !character.isHighSurrogate()) breakable += zeroWidthSpace;
  }
  return breakable;
}

QWidget* NewLabel() {
  auto* label = new QLabel;
  label->setTextFormat(Qt::PlainText);
  return label;
}

QWidget* NewList(const Control& control) {
  auto* list = new QComboBox;
  for (const ListEntry& entry : control.entries) list->addItem(ToQt(entry.text));
  return list;
}

QWidget* NewProgressBar() {
  auto* bar = new QProgressBar;
  bar->setRange(0, 100);
  return bar;
}

QWidget* NewWidget(const Control& control) {
  switch (control.kind) {
    case ControlKind::Button:
      return new QPushButton;
    case ControlKind::CheckBox:
      return new QCheckBox;
    case ControlKind::DropDownList:
      return NewList(control);
    case ControlKind::Label:
      return NewLabel();
    case ControlKind::Divider:
      return new DividerWidget;
    case ControlKind::Picture:
      return new IconWidget;
    case ControlKind::ProgressBar:
      return NewProgressBar();
    case ControlKind::Page:
      break;
  }
  return new QWidget;
}

}  // namespace

QWidget* MakeWidget(const Control& control) {
  QWidget* widget = NewWidget(control);
  widget->setObjectName(ToQt(control.name));
  return widget;
}

void ShowControl(const Control& control, QWidget& widget) {
  widget.setAccessibleName(ToQt(control.accessibleName));
  const QString text = ToQt(control.text);
  if (auto* box = dynamic_cast<QCheckBox*>(&widget)) box->setChecked(control.checked);
  if (auto* button = dynamic_cast<QAbstractButton*>(&widget)) button->setText(text);
  auto* label = dynamic_cast<QLabel*>(&widget);
  if (label != nullptr) label->setText(Breakable(text));
  if (auto* list = dynamic_cast<QComboBox*>(&widget)) list->setCurrentIndex(control.selected);
  if (auto* bar = dynamic_cast<QProgressBar*>(&widget)) bar->setValue(control.percent);
  widget.setEnabled(control.enabled);
  const bool takesNoRoom = label != nullptr && text.isEmpty();
  widget.setVisible(control.visible && !takesNoRoom);
}

}  // namespace krnqb::ui::qt
