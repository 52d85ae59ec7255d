// usage: krnqb_screenshots light|dark PREFIX
//
// Shows every dialog and saves a picture of each as PREFIX-NAME.png. The file dialogs show the current
// folder.

#include <QApplication>
#include <QPalette>
#include <QStyleFactory>
#include <QTest>
#include <cstdio>
#include <string_view>

#include "fakes/test_host.h"
#include "ui/dialogs.h"
#include "ui/qt/person.h"
#include "ui/qt/text.h"
#include "ui/qt/toolkit.h"

namespace krnqb::ui::qt {
namespace {

using tests::Click;
using tests::Find;
using tests::Person;
using tests::Press;

QPalette DarkPalette() {
  QPalette palette(QColor(0x35, 0x35, 0x35));
  palette.setColor(QPalette::Base, QColor(0x26, 0x26, 0x26));
  palette.setColor(QPalette::Highlight, QColor(0x2f, 0x6f, 0xaf));
  for (const QPalette::ColorRole text : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(QPalette::Disabled, text, QColor(0x8a, 0x8a, 0x8a));
  }
  return palette;
}

// Takes a picture of each window and closes it.
class Photographer {
 public:
  explicit Photographer(std::string prefix) : pictures_(std::move(prefix)) {}

  void Take(const std::string& name, const std::function<void()>& show, const Person::Deed& before = {}) {
    person_.At("", [&](QWidget& window) {
      if (before) before(window);
      Save(window, name);
      Press(window, Qt::Key_Escape);
    });
    show();
  }

  void Act(const std::function<void()>& show, const Person::Deed& deed) {
    person_.At("", deed);
    show();
  }

  void Save(QWidget& window, const std::string& name) {
    QTest::qWait(300);
    const std::string file = pictures_ + "-" + name + ".png";
    if (!window.grab().save(ToQt(file))) failed_ = true;
  }

  bool Failed() const { return failed_ || !person_.Done() || !person_.Trouble().empty(); }

 private:
  std::string pictures_;
  Person person_;
  bool failed_ = false;
};

int TakeAll(const std::string& prefix) {
  const auto toolkit = QtToolkit();
  const auto dialogs = std::make_shared<Dialogs>(toolkit);
  fakes::TestHost host;
  OutsideWorld world = host.World();
  world.userInterface = dialogs;
  world.sinks.push_back(dialogs);
  QBDataExchange component(world);
  component.KRNPlanData(Variant(host.plan));
  dialogs->Follow(
      {.description = "From Hollow Creek Nursery (nursery.qbw) into nursery.kpf, January to December 2002",
       .stop = [] {}});
  Photographer photographer(prefix);
  photographer.Take("import", [&] { component.ShowDialog(dlg_QBtoKRN); });
  photographer.Take(
      "import-chosen", [&] { component.ShowDialog(dlg_QBtoKRN); },
      [](QWidget& window) {
        Click(Find(window, "chkIncludeIncomeAccounts"));
        Click(Find(window, "chkIncludeExpenseAccounts"));
        Press(Find(window, "Combo1"), Qt::Key_Up);
        for (int step = 0; step < 3; ++step) Press(Find(window, "Combo1"), Qt::Key_Down);
      });
  // The host receives each event before the dialog does, so this picture shows the previous one.
  host.journal->OnOccurrence("ProgressBarChange 80 Processing...", 1, [&] {
    photographer.Save(*QApplication::activeModalWidget(), "import-running");
  });
  photographer.Act([&] { component.ShowDialog(dlg_QBtoKRN); },
                   [](QWidget& window) {
                     Click(Find(window, "chkIncludeExpenseAccounts"));
                     Click(Find(window, "cmdButton0"));
                   });
  photographer.Take("export", [&] { component.ShowDialog(dlg_KRNtoQB); });
  photographer.Take("company", [&] { component.ShowDialog(dlg_SelectQBcompany); });
  photographer.Take("plan", [&] { component.ShowDialog(dlg_SelectKRNplan); });
  photographer.Take("about", [&] { dialogs->ShowAbout(); });
  photographer.Take("message", [&] { component.SubmitCustomRequest({}); });
  return photographer.Failed() ? 1 : 0;
}

}  // namespace
}  // namespace krnqb::ui::qt

int main(int argumentCount, char** arguments) {
  if (argumentCount != 3) return 2;
  const auto application = krnqb::ui::qt::QtToolkit();
  QApplication::setStyle(QStyleFactory::create("Fusion"));
  if (arguments[1] == std::string_view("dark")) QApplication::setPalette(krnqb::ui::qt::DarkPalette());
  return krnqb::ui::qt::TakeAll(arguments[2]);
}
