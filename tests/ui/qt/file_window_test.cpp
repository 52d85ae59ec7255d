#include <gtest/gtest.h>
#include <unistd.h>

#include <QAbstractItemView>
#include <QFileDialog>
#include <QLineEdit>
#include <QTest>
#include <filesystem>
#include <fstream>

#include "fakes/test_host.h"
#include "ui/dialogs.h"
#include "ui/qt/person.h"
#include "ui/qt/text.h"
#include "ui/qt/toolkit.h"

namespace krnqb::ui::qt {
namespace {

namespace fs = std::filesystem;
using tests::Find;
using tests::Person;
using tests::Press;

// A component with the dialogs, in a folder with files of several kinds.
struct FileWindow : testing::Test {
  FileWindow() : component(World()) {
    std::string name = (fs::temp_directory_path() / "krnqb-files-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
    folder = name;
    for (const char* file : {"nursery.qbw", "CAF\xC3\x89.QBW", "nursery.kpf", "notes.txt"}) {
      std::ofstream(folder / file).put('x');
    }
  }
  ~FileWindow() override {
    std::error_code ignored;
    fs::remove_all(folder, ignored);
    EXPECT_TRUE(person.Done());
    EXPECT_EQ(person.Trouble(), "");
  }

  OutsideWorld World() const {
    OutsideWorld world = host.World();
    world.userInterface = std::make_shared<Dialogs>(QtToolkit());
    return world;
  }

  // The stored path, without a session.
  std::string StoredCompany() {
    host.journal->Fail("create processor", Error(error_number::cannotCreateObject));
    std::string path = component.QBCompany();
    host.journal->Heal();
    return path;
  }

  static void Type(QWidget& window, const std::string& text) {
    auto* name = window.findChild<QLineEdit*>("fileNameEdit");
    ASSERT_NE(name, nullptr);
    name->selectAll();
    QTest::keyClicks(name, ToQt(text));
    Press(*name, Qt::Key_Return);
  }

  fs::path folder;
  fakes::TestHost host;
  QBDataExchange component;
  Person person;
};

TEST_F(FileWindow, IsSetUpForACompany) {
  person.At("CommonDialog1", [](QWidget& window) {
    auto& dialog = dynamic_cast<QFileDialog&>(window);
    EXPECT_EQ(FromQt(dialog.windowTitle()), "Select QuickBooks Company");
    EXPECT_EQ(dialog.nameFilters(), QStringList{"QuickBooks Company (*.qbw)"});
    EXPECT_EQ(FromQt(dialog.defaultSuffix()), "qbw");
    EXPECT_EQ(FromQt(Find<QLineEdit>(window, "fileNameEdit").text()), "*.qbw");
    Press(window, Qt::Key_Escape);
  });
  component.ShowDialog(dlg_SelectQBcompany);
}

TEST_F(FileWindow, IsSetUpForAPlan) {
  person.At("CommonDialog1", [](QWidget& window) {
    auto& dialog = dynamic_cast<QFileDialog&>(window);
    EXPECT_EQ(FromQt(dialog.windowTitle()), "Select Business Plan");
    EXPECT_EQ(dialog.nameFilters(), QStringList{"Business Plan (*.kpf)"});
    EXPECT_EQ(FromQt(dialog.defaultSuffix()), "kpf");
    EXPECT_EQ(FromQt(Find<QLineEdit>(window, "fileNameEdit").text()), "*.kpf");
    Press(window, Qt::Key_Escape);
  });
  component.ShowDialog(dlg_SelectKRNplan);
}

TEST_F(FileWindow, ReturnsAndStoresTheTypedCompany) {
  const std::string path = (folder / "nursery.qbw").string();
  person.At("CommonDialog1", [&](QWidget& window) { Type(window, path); });
  EXPECT_EQ(fakes::TextOf(component.ShowDialog(dlg_SelectQBcompany)), path);
  EXPECT_EQ(StoredCompany(), path);
}

TEST_F(FileWindow, CompletesANameTypedWithoutItsExtension) {
  person.At("CommonDialog1", [&](QWidget& window) { Type(window, (folder / "nursery").string()); });
  EXPECT_EQ(fakes::TextOf(component.ShowDialog(dlg_SelectQBcompany)), (folder / "nursery.qbw").string());
}

TEST_F(FileWindow, ReturnsTheClickedFile) {
  person.At("CommonDialog1", [&](QWidget& window) {
    auto& dialog = dynamic_cast<QFileDialog&>(window);
    dialog.setDirectory(ToQt(folder.string()));
    auto& list = Find<QAbstractItemView>(window, "listView");
    ASSERT_TRUE(QTest::qWaitFor([&] { return list.model()->rowCount(list.rootIndex()) == 2; }))
        << "the companies, in any letter case, and nothing else";
    const QModelIndex first = list.model()->index(0, 0, list.rootIndex());
    const QModelIndexList nursery = list.model()->match(first, Qt::DisplayRole, "nursery.qbw");
    ASSERT_EQ(nursery.size(), 1);
    const QPoint place = list.visualRect(nursery.front()).center();
    QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::NoModifier, place);
    Press(window, Qt::Key_O, Qt::AltModifier);
  });
  EXPECT_EQ(fakes::TextOf(component.ShowDialog(dlg_SelectQBcompany)), (folder / "nursery.qbw").string());
}

TEST_F(FileWindow, KeepsTheCompanyWhenCancelled) {
  component.QBCompany("/before.qbw");
  person.At("CommonDialog1", [](QWidget& window) { Press(window, Qt::Key_Escape); });
  EXPECT_TRUE(component.ShowDialog(dlg_SelectQBcompany).IsEmpty());
  EXPECT_EQ(StoredCompany(), "/before.qbw");
}

TEST_F(FileWindow, KeepsTheCompanyWhenAPlanIsChosen) {
  component.QBCompany("/before.qbw");
  const std::string path = (folder / "nursery.kpf").string();
  person.At("CommonDialog1", [&](QWidget& window) { Type(window, path); });
  EXPECT_EQ(fakes::TextOf(component.ShowDialog(dlg_SelectKRNplan)), path);
  EXPECT_EQ(StoredCompany(), "/before.qbw");
}

}  // namespace
}  // namespace krnqb::ui::qt
