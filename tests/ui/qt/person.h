#pragma once

#include <QAbstractButton>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <string>
#include <vector>

namespace krnqb::ui::qt::tests {

/// Sits in front of the screen: waits for each window that it is told of and does there what it is told, in
/// order, while the test is inside the call that shows them. A window that nobody expects, or that stays too
/// long, is reported and closed by force.
class Person {
 public:
  using Deed = std::function<void(QWidget& window)>;

  Person();
  Person(const Person&) = delete;
  Person& operator=(const Person&) = delete;

  /// At the next window, which must have that object name (empty: any).
  void At(const std::string& windowName, Deed deed);
  /// Whether all that was told has been done.
  bool Done() const { return next_ == deeds_.size(); }
  /// What went wrong; empty when nothing did.
  const std::string& Trouble() const { return trouble_; }

 private:
  void Look();

  struct Expected {
    std::string windowName;
    Deed deed;
  };
  std::vector<Expected> deeds_;
  std::size_t next_ = 0;
  std::string trouble_;
  const QWidget* handled_ = nullptr;
  int idleLooks_ = 0;
  bool busy_ = false;
  QTimer timer_;
};

/// A control of a window by its name; the test ends when there is none.
QWidget& Find(QWidget& window, const char* name);
template <typename Widget>
Widget& Find(QWidget& window, const char* name) {
  return dynamic_cast<Widget&>(Find(window, name));
}

/// A click with the left mouse button: on a button's middle, on a check box's mark.
void Click(QWidget& widget);
void Press(QWidget& widget, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

}  // namespace krnqb::ui::qt::tests
