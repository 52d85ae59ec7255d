#include <gtest/gtest.h>

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>

#include "options_window.h"

namespace krnqb::ui::qt {
namespace {

using tests::Click;
using tests::Enabled;
using tests::Find;
using tests::OptionsWindow;
using tests::Press;

struct ImportingWindow : OptionsWindow {};

// User input during an import, as it would be queued in the program.
void PostClick(QWidget& widget) {
  const QPointF place = widget.rect().center();
  for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
    QCoreApplication::postEvent(&widget, new QMouseEvent(type, place, widget.mapToGlobal(place),
                                                         Qt::LeftButton, Qt::LeftButton, Qt::NoModifier));
  }
}

TEST_F(ImportingWindow, ShowsTheProgressAndBlocksInput) {
  QWidget* shown = nullptr;
  std::vector<int> percents;
  int paints = 0;
  struct PaintCounter : QObject {
    explicit PaintCounter(int& counted) : count(counted) {}
    bool eventFilter(QObject* /*receiver*/, QEvent* event) override {
      count += event->type() == QEvent::Paint ? 1 : 0;
      return false;
    }
    int& count;
  } counter(paints);
  for (const int percent : {20, 40, 60, 80, 100}) {
    // The host's own sink comes before the dialog's, which processes the queue.
    host.journal->On("ProgressBarChange " + std::to_string(percent) + " Processing...", [&] {
      ASSERT_NE(shown, nullptr);
      for (const char* name :
           {"chkIncludeIncomeAccounts", "Combo1", "cmdButton0", "cmdButton2", "cmdButton3"}) {
        EXPECT_FALSE(Enabled(*shown, name)) << name;
        PostClick(Find(*shown, name));
      }
      EXPECT_TRUE(Find(*shown, "progressBar").isVisible());
      percents.push_back(Find(*shown, "progressBar").property("value").toInt());
      QCoreApplication::postEvent(shown, new QCloseEvent);
      QCoreApplication::postEvent(shown, new QKeyEvent(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier));
    });
  }
  Show(dlg_QBtoKRN, [&](QWidget& window) {
    shown = &window;
    Click(Find(window, "chkIncludeExpenseAccounts"));
    Find(window, "progressBar").installEventFilter(&counter);
    Click(Find(window, "cmdButton0"));
  });
  EXPECT_EQ(percents, (std::vector<int>{0, 20, 40, 60, 80})) << "as it was when each event came";
  EXPECT_GE(paints, 5);
  EXPECT_EQ(host.journal->Count("AfterImport"), 1);
  EXPECT_FALSE(component.IncludeIncomeAccounts());
}

struct StoppableImportingWindow : ImportingWindow {
  StoppableImportingWindow() {
    dialogs->Follow({.description = "From Nursery into plan.kpf", .stop = [this] { ++stops; }});
  }

  // Has the user do something in the window of the running import.
  void Meanwhile(int percent, const std::function<void(QWidget& window)>& deed) {
    host.journal->On("ProgressBarChange " + std::to_string(percent) + " Processing...", [deed] {
      ASSERT_NE(QApplication::activeModalWidget(), nullptr);
      deed(*QApplication::activeModalWidget());
    });
  }

  void Import() {
    Show(dlg_QBtoKRN, [](QWidget& window) {
      Click(Find(window, "chkIncludeExpenseAccounts"));
      Click(Find(window, "cmdButton0"));
    });
  }

  int stops = 0;
};

TEST_F(StoppableImportingWindow, IsStoppedByAClickOnCancel) {
  Meanwhile(40, [](QWidget& window) {
    EXPECT_TRUE(Enabled(window, "cmdButton2"));
    PostClick(Find(window, "cmdButton2"));
    PostClick(Find(window, "cmdButton3"));
    PostClick(Find(window, "chkIncludeIncomeAccounts"));
  });
  Meanwhile(60, [](QWidget& window) {
    EXPECT_FALSE(Enabled(window, "cmdButton2"));
    EXPECT_TRUE(window.isVisible());
  });
  Import();
  EXPECT_EQ(stops, 1);
  EXPECT_FALSE(component.IncludeIncomeAccounts());
}

TEST_F(StoppableImportingWindow, IsStoppedByEscapeAndByItsCloseButton) {
  Meanwhile(40, [](QWidget& window) {
    QCoreApplication::postEvent(&window, new QKeyEvent(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier));
  });
  Import();
  EXPECT_EQ(stops, 1);
  host.journal->On("ProgressBarChange 40 Processing...",
                   [] { QCoreApplication::postEvent(QApplication::activeModalWidget(), new QCloseEvent); });
  Import();
  EXPECT_EQ(stops, 2);
}

TEST_F(StoppableImportingWindow, IsNotStoppedByASecondEnterOrSpaceOnImport) {
  for (const int percent : {20, 40, 60}) {
    Meanwhile(percent, [](QWidget& window) {
      QWidget* receiver = window.focusWidget() != nullptr ? window.focusWidget() : &window;
      for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Space}) {
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
          QCoreApplication::postEvent(receiver, new QKeyEvent(type, key, Qt::NoModifier));
        }
      }
    });
  }
  Import();
  EXPECT_EQ(stops, 0);
  EXPECT_EQ(host.journal->Count("AfterImport"), 1);
}

TEST_F(StoppableImportingWindow, ShowsItsTaskBelowTheButtons) {
  Show(dlg_QBtoKRN, [](QWidget& window) {
    QWidget& line = Find(window, "statusLine");
    EXPECT_TRUE(line.isVisible());
    EXPECT_GT(line.mapTo(&window, QPoint()).y(), Find(window, "cmdButton2").mapTo(&window, QPoint()).y());
    Press(window, Qt::Key_Escape);
  });
}

TEST_F(StoppableImportingWindow, ShowsLongFileNamesWhole) {
  dialogs->Follow({.description = "From " + std::string(200, 'n') + " into plan.kpf", .stop = {}});
  Show(dlg_QBtoKRN, [](QWidget& window) {
    const auto& line = dynamic_cast<QLabel&>(Find(window, "statusLine"));
    const QRect text = line.fontMetrics().boundingRect(line.rect(), Qt::TextWordWrap, line.text());
    EXPECT_LE(text.width(), line.width());
    EXPECT_LE(text.height(), line.height());
    Press(window, Qt::Key_Escape);
  });
}

TEST(QtToolkit, DiscardsInputWhileItShowsANewState) {
  struct InputCounter : QWidget {
    void mousePressEvent(QMouseEvent* /*event*/) override { ++inputs; }
    void keyPressEvent(QKeyEvent* /*event*/) override { ++inputs; }
    int inputs = 0;
  } widget;
  widget.show();
  const auto toolkit = QtToolkit();
  const OptionsDialog dialog(*toolkit);
  const auto post = [&widget] {
    PostClick(widget);
    QCoreApplication::postEvent(&widget, new QKeyEvent(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier));
  };
  post();
  toolkit->ShowNow(dialog);
  QCoreApplication::processEvents();
  EXPECT_EQ(widget.inputs, 0);
  post();
  QCoreApplication::processEvents();
  EXPECT_EQ(widget.inputs, 2) << "nothing is lost at other times";
}

TEST_F(ImportingWindow, CannotBeClosed) {
  host.journal->OnOccurrence("ProgressBarChange 60 Processing...", 1, [] {
    QWidget* window = QApplication::activeModalWidget();
    ASSERT_NE(window, nullptr);
    EXPECT_FALSE(window->close());
    Press(*window, Qt::Key_Escape);
    EXPECT_TRUE(window->isVisible());
  });
  Show(dlg_QBtoKRN, [](QWidget& window) {
    Click(Find(window, "chkIncludeExpenseAccounts"));
    Click(Find(window, "cmdButton0"));
  });
  EXPECT_EQ(host.journal->Count("AfterImport"), 1);
}

}  // namespace
}  // namespace krnqb::ui::qt
