#pragma once

#include <QWidget>

namespace krnqb::ui::qt {

/// An etched line: a dark line above a light one, each a separate widget.
class DividerWidget : public QWidget {
 public:
  DividerWidget();

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  QWidget* top_;
  QWidget* bottom_;
};

}  // namespace krnqb::ui::qt
