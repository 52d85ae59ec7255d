#include "ui/qt/form_window.h"

#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>
#include <utility>

#include "ui/qt/control_widgets.h"
#include "ui/qt/text.h"

namespace krnqb::ui::qt {

FormWindow::FormWindow(Dialog& shownDialog, QWidget* parent) : QDialog(parent), dialog(shownDialog) {
  setObjectName(ToQt(dialog.Shown().name));
  MakeWidgets();
  ArrangeForm(dialog.Shown(), widgets, *this);
  ShowState();
}

void FormWindow::MakeWidgets() {
  const Form& form = dialog.Shown();
  for (const Control& control : form.controls) {
    QWidget* widget = MakeWidget(control);
    const auto page = widgets.find(control.page);
    widget->setParent(page == widgets.end() ? this : page->second);
    widgets.emplace(control.name, widget);
    ConnectWidget(control, *widget);
    if (auto* button = dynamic_cast<QPushButton*>(widget)) {
      button->setDefault(control.name == form.defaultButton);
    }
  }
}

void FormWindow::ConnectWidget(const Control& control, QWidget& widget) {
  const std::string name = control.name;
  if (auto* button = dynamic_cast<QPushButton*>(&widget)) {
    connect(button, &QPushButton::clicked, this, [this, name] { Act([&] { dialog.Press(name); }); });
  }
  if (auto* box = dynamic_cast<QCheckBox*>(&widget)) {
    connect(box, &QCheckBox::clicked, this,
            [this, name](bool checked) { Act([&] { dialog.Check(name, checked); }); });
  }
  if (auto* list = dynamic_cast<QComboBox*>(&widget)) {
    connect(list, &QComboBox::activated, this,
            [this, name](int index) { Act([&] { dialog.Choose(name, index); }); });
  }
}

void FormWindow::ShowState() {
  const Form& form = dialog.Shown();
  setWindowTitle(ToQt(form.caption));
  for (const Control& control : form.controls) ShowControl(control, *widgets.at(control.name));
}

void FormWindow::Run() {
  exec();
  if (fault) std::rethrow_exception(std::exchange(fault, nullptr));
}

void FormWindow::reject() {
  Act([this] { dialog.Dismiss(); });
}

void FormWindow::Act(const std::function<void()>& act) {
  try {
    act();
  } catch (...) {
    fault = std::current_exception();
  }
  ShowState();
  if (fault || !dialog.IsOpen()) done(Rejected);
}

}  // namespace krnqb::ui::qt
