#include "ui/qt/form_window.h"

#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>
#include <utility>

#include "ui/qt/control_widgets.h"
#include "ui/qt/text.h"

namespace krnqb::ui::qt {

FormWindow::FormWindow(Dialog& dialog, QWidget* parent) : QDialog(parent), dialog_(dialog) {
  setObjectName(ToQt(dialog_.Shown().name));
  MakeWidgets();
  ArrangeForm(dialog_.Shown(), widgets_, *this);
  ShowState();
}

void FormWindow::MakeWidgets() {
  const Form& form = dialog_.Shown();
  for (const Control& control : form.controls) {
    QWidget* widget = MakeWidget(control);
    const auto page = widgets_.find(control.page);
    widget->setParent(page == widgets_.end() ? this : page->second);
    widgets_.emplace(control.name, widget);
    ConnectWidget(control, *widget);
    if (auto* button = dynamic_cast<QPushButton*>(widget)) {
      button->setDefault(control.name == form.defaultButton);
    }
  }
}

void FormWindow::ConnectWidget(const Control& control, QWidget& widget) {
  const std::string name = control.name;
  if (auto* button = dynamic_cast<QPushButton*>(&widget)) {
    connect(button, &QPushButton::clicked, this, [this, name] { Act([&] { dialog_.Press(name); }); });
  }
  if (auto* box = dynamic_cast<QCheckBox*>(&widget)) {
    connect(box, &QCheckBox::clicked, this,
            [this, name](bool checked) { Act([&] { dialog_.Check(name, checked); }); });
  }
  if (auto* list = dynamic_cast<QComboBox*>(&widget)) {
    connect(list, &QComboBox::activated, this,
            [this, name](int index) { Act([&] { dialog_.Choose(name, index); }); });
  }
}

void FormWindow::ShowState() {
  const Form& form = dialog_.Shown();
  setWindowTitle(ToQt(form.caption));
  for (const Control& control : form.controls) ShowControl(control, *widgets_.at(control.name));
}

void FormWindow::Run() {
  exec();
  if (fault_) std::rethrow_exception(std::exchange(fault_, nullptr));
}

void FormWindow::reject() {
  Act([this] { dialog_.Dismiss(); });
}

void FormWindow::Act(const std::function<void()>& act) {
  try {
    act();
  } catch (...) {
    fault_ = std::current_exception();
  }
  ShowState();
  if (fault_ || !dialog_.IsOpen()) done(Rejected);
}

}  // namespace krnqb::ui::qt
