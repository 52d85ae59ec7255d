#include "ui/qt/toolkit.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QMessageBox>
#include <QSplitter>
#include <QWindow>
#include <algorithm>
#include <array>
#include <clocale>
#include <utility>
#include <vector>

#include "ui/controls.h"
#include "ui/qt/display.h"
#include "ui/qt/form_window.h"
#include "ui/qt/text.h"

namespace krnqb::ui::qt {
namespace {

// Qt needs a command line that lives as long as the application.
class Application {
 public:
  Application() : display_(RequireDisplay()), application_(count_, words_.data()) {
    display_.reset();
    // Qt sets the locale of the whole process; numbers must not depend on it.
    std::setlocale(LC_NUMERIC, "C");
  }

 private:
  std::array<char, 6> name_{"krnqb"};
  std::array<char*, 2> words_{name_.data(), nullptr};
  int count_ = 1;
  HeldDisplay display_;
  QApplication application_;
};

// Discards mouse and keyboard input, including closing a window, for the lifetime of the object; except in
// one window, if it is not null.
class InputBarrier : public QObject {
 public:
  explicit InputBarrier(const QWidget* except) : except_(except) { qApp->installEventFilter(this); }

  bool eventFilter(QObject* receiver, QEvent* event) override {
    if (IsExcepted(*receiver)) return false;
    static constexpr std::array held{QEvent::MouseButtonPress,
                                     QEvent::MouseButtonRelease,
                                     QEvent::MouseButtonDblClick,
                                     QEvent::MouseMove,
                                     QEvent::Wheel,
                                     QEvent::KeyPress,
                                     QEvent::KeyRelease,
                                     QEvent::ShortcutOverride,
                                     QEvent::Shortcut,
                                     QEvent::ContextMenu,
                                     QEvent::TouchBegin,
                                     QEvent::TouchUpdate,
                                     QEvent::TouchEnd,
                                     QEvent::TabletPress,
                                     QEvent::Close};
    return std::find(held.begin(), held.end(), event->type()) != held.end();
  }

 private:
  bool IsExcepted(const QObject& receiver) const {
    if (except_ == nullptr) return false;
    if (const auto* widget = dynamic_cast<const QWidget*>(&receiver)) return widget->window() == except_;
    return &receiver == except_->windowHandle();
  }

  const QWidget* except_;
};

QStringList NameFilters(const FileDialogSettings& settings) {
  QStringList names;
  for (const FileFilter& filter : settings.filters) {
    const QString description = ToQt(filter.description);
    const QString pattern = QStringLiteral("(%1)").arg(ToQt(filter.pattern));
    // Qt reads the pattern from the parentheses at the end.
    names << (description.endsWith(pattern) ? description : description + QLatin1Char(' ') + pattern);
  }
  return names;
}

// Wide enough for the names of places and files.
void Arrange(QFileDialog& dialog) {
  constexpr int placesWidth = 160;
  constexpr int filesWidth = 520;
  dialog.setViewMode(QFileDialog::List);
  dialog.resize(placesWidth + filesWidth, dialog.height());
  if (auto* splitter = dialog.findChild<QSplitter*>()) splitter->setSizes({placesWidth, filesWidth});
}

class Widgets final : public Toolkit {
 public:
  Widgets() {
    if (QCoreApplication::instance() == nullptr) application_ = std::make_unique<Application>();
  }

  void ShowModal(Dialog& dialog) override {
    FormWindow window(dialog, QApplication::activeWindow());
    windows_.push_back(&window);
    try {
      window.Run();
    } catch (...) {
      windows_.pop_back();
      throw;
    }
    windows_.pop_back();
  }

  bool FollowsTasks() const noexcept override { return true; }

  void ShowNow(const Dialog& dialog) override {
    const QWidget* listening = nullptr;
    for (FormWindow* window : windows_) {
      if (&window->Shown() != &dialog) continue;
      window->ShowState();
      if (dialog.Shown().IsUsable(dialog.Shown().cancelButton)) listening = window;
    }
    const InputBarrier barrier(listening);
    QCoreApplication::processEvents();
  }

  void ShowMessage(std::string_view text) override {
    QMessageBox box(QMessageBox::NoIcon, {}, ToQt(text), QMessageBox::Ok, QApplication::activeWindow());
    box.setTextFormat(Qt::PlainText);
    box.exec();
  }

  std::optional<std::string> AskForFile(const FileDialogSettings& settings) override {
    QFileDialog dialog(QApplication::activeWindow(), ToQt(settings.title));
    dialog.setObjectName(ToQt(fileDialog));
    dialog.setOption(QFileDialog::DontUseNativeDialog);  // the same dialog on every desktop
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setFileMode(QFileDialog::ExistingFile);
    const QStringList filters = NameFilters(settings);
    dialog.setNameFilters(filters);
    dialog.selectNameFilter(filters.value(settings.filterIndex - 1));
    dialog.setDefaultSuffix(ToQt(settings.defaultExtension));
    dialog.selectFile(ToQt(settings.initialFileName));
    Arrange(dialog);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
    return FromQt(QDir::toNativeSeparators(dialog.selectedFiles().front()));
  }

 private:
  std::unique_ptr<Application> application_;
  std::vector<FormWindow*> windows_;
};

}  // namespace

std::shared_ptr<Toolkit> QtToolkit() {
  return std::make_shared<Widgets>();
}

}  // namespace krnqb::ui::qt
