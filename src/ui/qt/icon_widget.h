#pragma once

#include <QWidget>

namespace krnqb::ui::qt {

/// The application's icon: amounts flowing into a plan. Drawn, so that it is sharp at every scale.
class IconWidget : public QWidget {
 public:
  IconWidget();

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace krnqb::ui::qt
