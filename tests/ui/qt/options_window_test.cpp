#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <algorithm>

#include "options_window.h"
#include "ui/qt/text.h"

namespace krnqb::ui::qt {
namespace {

using tests::Click;
using tests::Enabled;
using tests::Find;
using tests::OptionsWindow;
using tests::Press;

TEST_F(OptionsWindow, ShowsTheImportPage) {
  Show(dlg_QBtoKRN, [](QWidget& window) {
    EXPECT_EQ(FromQt(window.windowTitle()), "Import From Quickbooks");
    EXPECT_TRUE(Find(window, "chkIncludeIncomeAccounts").isVisible());
    EXPECT_FALSE(Find(window, "chkImport0").isVisible());
    EXPECT_FALSE(Find(window, "progressBar").isVisible());
    EXPECT_EQ(FromQt(Find<QCheckBox>(window, "chkIncludeIncomeAccounts").text()), "Income Sales Accounts");
    EXPECT_EQ(FromQt(Find<QLabel>(window, "Label1").text()), "Import Account Balances:");
    EXPECT_EQ(FromQt(Find<QComboBox>(window, "Combo1").currentText()), "None");
    Press(window, Qt::Key_Escape);
  });
  EXPECT_EQ(host.journal->Text(), "");
}

TEST_F(OptionsWindow, ShowsTheExportPageWhoseBoxesEnableNothing) {
  Show(dlg_KRNtoQB, [](QWidget& window) {
    EXPECT_EQ(FromQt(window.windowTitle()), "Export Into Quickbooks");
    EXPECT_FALSE(Find(window, "chkIncludeIncomeAccounts").isVisible());
    for (const char* name : {"chkImport0", "chkImport1", "chkImport2", "chkImport3"}) {
      Click(Find(window, name));
      EXPECT_TRUE(Find<QCheckBox>(window, name).isChecked()) << name;
    }
    EXPECT_FALSE(Enabled(window, "cmdButton0"));
    Click(Find(window, "cmdButton2"));
  });
}

TEST_F(OptionsWindow, EnablesBalancesAndImportWithTheMouse) {
  Show(dlg_QBtoKRN, [](QWidget& window) {
    EXPECT_FALSE(Enabled(window, "Combo1"));
    EXPECT_FALSE(Enabled(window, "cmdButton0"));
    for (const char* box : {"chkIncludeIncomeAccounts", "chkIncludeExpenseAccounts"}) {
      Click(Find(window, box));
      EXPECT_TRUE(Find<QCheckBox>(window, box).isChecked()) << box;
      EXPECT_TRUE(Enabled(window, "Combo1")) << box;
      EXPECT_TRUE(Enabled(window, "cmdButton0")) << box;
      Click(Find(window, box));
      EXPECT_FALSE(Enabled(window, "Combo1")) << box;
      EXPECT_FALSE(Enabled(window, "cmdButton0")) << box;
    }
    Click(Find(window, "cmdButton2"));
  });
}

TEST_F(OptionsWindow, KeepsTheBalancesWhenTheLastBoxIsUnchecked) {
  Show(dlg_QBtoKRN, [](QWidget& window) {
    QWidget& box = Find(window, "chkIncludeIncomeAccounts");
    Click(box);
    Press(Find(window, "Combo1"), Qt::Key_Down);
    Press(Find(window, "Combo1"), Qt::Key_Down);
    Click(box);
    EXPECT_EQ(FromQt(Find<QComboBox>(window, "Combo1").currentText()), "Actual");
    Click(Find(window, "cmdButton2"));
  });
}

TEST_F(OptionsWindow, ImportsWhatWasClicked) {
  Show(dlg_QBtoKRN, [](QWidget& window) {
    Click(Find(window, "chkIncludeExpenseAccounts"));
    Press(Find(window, "Combo1"), Qt::Key_Down);
    Press(Find(window, "Combo1"), Qt::Key_Down);
    Click(Find(window, "cmdButton0"));
  });
  EXPECT_EQ(component.BalancesImport(), BalImport_Actual);
  EXPECT_TRUE(component.IncludeExpenseAccounts());
  EXPECT_FALSE(component.IncludeIncomeAccounts());
  EXPECT_EQ(host.journal->Count("AfterImport"), 1);
}

TEST_F(OptionsWindow, SelectsBalancesWithTheMouse) {
  Show(dlg_QBtoKRN, [](QWidget& window) {
    Click(Find(window, "chkIncludeIncomeAccounts"));
    auto& list = Find<QComboBox>(window, "Combo1");
    Click(list);
    QAbstractItemView& entries = *list.view();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(entries.window()));
    // The press that opened the list does not also select an entry.
    QTest::qWait(QApplication::doubleClickInterval() + 50);
    const QPoint third = entries.visualRect(list.model()->index(3, 0)).center();
    QTest::mouseMove(entries.viewport(), third);
    QTest::mouseClick(entries.viewport(), Qt::LeftButton, Qt::NoModifier, third);
    EXPECT_EQ(FromQt(list.currentText()), "Both");
    Click(Find(window, "cmdButton0"));
  });
  EXPECT_EQ(component.BalancesImport(), BalImport_All);
}

TEST_F(OptionsWindow, WorksFromTheKeyboardAlone) {
  Show(dlg_QBtoKRN, [](QWidget& window) {
    const auto focused = [&window] { return FromQt(window.focusWidget()->objectName()); };
    EXPECT_EQ(focused(), "chkIncludeIncomeAccounts");
    Press(*window.focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(focused(), "chkIncludeExpenseAccounts");
    Press(*window.focusWidget(), Qt::Key_Space);
    Press(*window.focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(focused(), "Combo1");
    Press(*window.focusWidget(), Qt::Key_Down);
    for (const char* button : {"cmdButton0", "cmdButton2", "cmdButton3"}) {
      Press(*window.focusWidget(), Qt::Key_Tab);
      EXPECT_EQ(focused(), button);
    }
    Press(*window.focusWidget(), Qt::Key_I, Qt::AltModifier);
  });
  EXPECT_TRUE(component.IncludeExpenseAccounts());
  EXPECT_EQ(component.BalancesImport(), BalImport_Planned);
  EXPECT_EQ(host.journal->Count("AfterImport"), 1);
}

TEST_F(OptionsWindow, ImportsOnEnter) {
  Show(dlg_QBtoKRN, [](QWidget& window) {
    Press(window, Qt::Key_Return);
    EXPECT_TRUE(window.isVisible()) << "Import is disabled";
    Click(Find(window, "chkIncludeIncomeAccounts"));
    Press(Find(window, "chkIncludeIncomeAccounts"), Qt::Key_Return);
  });
  EXPECT_EQ(host.journal->Count("AfterImport"), 1);
}

class ClosingWindow : public OptionsWindow, public testing::WithParamInterface<int> {};

TEST_P(ClosingWindow, ChangesNothing) {
  Show(dlg_QBtoKRN, [](QWidget& window) {
    Click(Find(window, "chkIncludeIncomeAccounts"));
    switch (GetParam()) {
      case 0:
        return Click(Find(window, "cmdButton2"));
      case 1:
        return Click(Find(window, "cmdButton3"));
      case 2:
        return Press(window, Qt::Key_Escape);
      case 3:
        return Press(window, Qt::Key_C, Qt::AltModifier);
      case 4:
        return Press(window, Qt::Key_H, Qt::AltModifier);
      default:
        window.close();
    }
  });
  EXPECT_FALSE(component.IncludeIncomeAccounts());
  EXPECT_EQ(host.journal->Text(), "");
}

INSTANTIATE_TEST_SUITE_P(EveryWay, ClosingWindow, testing::Range(0, 6));

TEST_F(OptionsWindow, NamesEveryControlForScreenReaders) {
  Show(dlg_QBtoKRN, [](QWidget& window) {
    OptionsDialog described(*QtToolkit());
    for (const Control& control : described.Shown().controls) {
      EXPECT_EQ(FromQt(Find(window, control.name.c_str()).accessibleName()), control.accessibleName);
      EXPECT_NE(control.accessibleName, "");
    }
    Press(window, Qt::Key_Escape);
  });
}

TEST_F(OptionsWindow, DrawsTheDividerAsTwoLinesOfItsWidth) {
  Show(dlg_QBtoKRN, [](QWidget& window) {
    QWidget& divider = Find(window, "Divider1");
    QWidget& top = Find(divider, "LineTop");
    QWidget& bottom = Find(divider, "LineBottom");
    EXPECT_GT(divider.width(), 100);
    EXPECT_EQ(top.geometry(), QRect(0, 0, divider.width(), 1));
    EXPECT_EQ(bottom.geometry(), QRect(0, 1, divider.width(), 1));
    const QImage picture = divider.grab().toImage();
    EXPECT_LT(qGray(picture.pixel(10, 0)), qGray(picture.pixel(10, picture.height() - 1)));
    Press(window, Qt::Key_Escape);
  });
}

TEST_F(OptionsWindow, ClipsNoText) {
  for (const QBKRN_Dialogs dialog : {dlg_QBtoKRN, dlg_KRNtoQB}) {
    Show(dialog, [](QWidget& window) {
      for (QWidget* widget : window.findChildren<QWidget*>()) {
        const bool text =
            dynamic_cast<QAbstractButton*>(widget) != nullptr || dynamic_cast<QLabel*>(widget) != nullptr;
        if (!text || !widget->isVisible()) continue;
        EXPECT_GE(widget->width(), widget->sizeHint().width()) << FromQt(widget->objectName());
        EXPECT_GE(widget->height(), widget->sizeHint().height()) << FromQt(widget->objectName());
        EXPECT_TRUE(window.rect().contains(QRect(widget->mapTo(&window, QPoint()), widget->size())))
            << FromQt(widget->objectName());
      }
      Press(window, Qt::Key_Escape);
    });
  }
}

}  // namespace
}  // namespace krnqb::ui::qt
