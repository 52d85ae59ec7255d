#pragma once

#include <QAbstractButton>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <string>
#include <vector>

namespace krnqb::ui::qt::tests {

/// A simulated user: waits for each expected window and performs its actions in order, while the test is
/// inside the call that shows them. A window that is unexpected, or stays open too long, is reported and
/// closed by force.
class Person {
 public:
  using Deed = std::function<void(QWidget& window)>;

  Person();
  ~Person() = default;
  Person(const Person&) = delete;
  Person& operator=(const Person&) = delete;

  /// Acts in the next window, which must have that object name (empty: any).
  void At(const std::string& windowName, Deed deed);
  /// Returns whether every action has been performed.
  bool Done() const { return next_ == deeds_.size(); }
  /// Returns what went wrong; empty if nothing did.
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

/// Returns a control of a window by its name; ends the test if it is missing.
QWidget& Find(QWidget& window, const char* name);
template <typename Widget>
Widget& Find(QWidget& window, const char* name) {
  return dynamic_cast<Widget&>(Find(window, name));
}

/// Clicks the left mouse button in the middle of a button or on the mark of a check box.
void Click(QWidget& widget);
void Press(QWidget& widget, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

}  // namespace krnqb::ui::qt::tests
