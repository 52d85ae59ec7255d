#include "ui/qt/person.h"

#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QTest>
#include <stdexcept>

#include "ui/qt/text.h"

namespace krnqb::ui::qt::tests {
namespace {

constexpr int lookEveryMilliseconds = 10;
constexpr int longestIdleLooks = 1000;

}  // namespace

Person::Person() {
  QObject::connect(&timer_, &QTimer::timeout, [this] { Look(); });
  timer_.start(lookEveryMilliseconds);
}

void Person::At(const std::string& windowName, Deed deed) {
  deeds_.push_back({windowName, std::move(deed)});
}

void Person::Look() {
  QWidget* window = QApplication::activeModalWidget();
  if (window == nullptr) handled_ = nullptr;
  if (window == nullptr || !window->isVisible() || busy_) return;
  const bool expected = next_ < deeds_.size() && window != handled_;
  if (!expected) {
    if (++idleLooks_ < longestIdleLooks) return;
    trouble_ = "a window stays open: " + FromQt(window->windowTitle());
    if (auto* dialog = dynamic_cast<QDialog*>(window)) dialog->done(QDialog::Rejected);
    return;
  }
  idleLooks_ = 0;
  handled_ = window;
  window->activateWindow();
  static_cast<void>(QTest::qWaitForWindowActive(window));
  const Expected now = deeds_[next_++];
  if (!now.windowName.empty() && FromQt(window->objectName()) != now.windowName) {
    trouble_ = "not the window " + now.windowName + ": " + FromQt(window->objectName());
    return;
  }
  busy_ = true;
  now.deed(*window);
  busy_ = false;
  // The action may have closed this window and opened another at the same address.
  if (QApplication::activeModalWidget() != window) handled_ = nullptr;
}

QWidget& Find(QWidget& window, const char* name) {
  auto* widget = window.findChild<QWidget*>(QString::fromLatin1(name));
  if (widget == nullptr) throw std::runtime_error(std::string("the window has no ") + name);
  return *widget;
}

void Click(QWidget& widget) {
  const bool box = dynamic_cast<QCheckBox*>(&widget) != nullptr;
  const QPoint place = box ? QPoint(6, widget.height() / 2) : widget.rect().center();
  QTest::mouseClick(&widget, Qt::LeftButton, Qt::NoModifier, place);
}

void Press(QWidget& widget, Qt::Key key, Qt::KeyboardModifiers modifiers) {
  QTest::keyClick(&widget, key, modifiers);
}

}  // namespace krnqb::ui::qt::tests
