#pragma once

#include <gtest/gtest.h>

#include "fakes/test_host.h"
#include "ui/dialogs.h"
#include "ui/qt/person.h"
#include "ui/qt/toolkit.h"

namespace krnqb::ui::qt::tests {

/// A host whose component shows the dialogs on the screen, and a simulated user.
struct OptionsWindow : testing::Test {
  OptionsWindow() : component(World()) { component.KRNPlanData(Variant(host.plan)); }
  ~OptionsWindow() override {
    EXPECT_TRUE(person.Done()) << "a window was not shown";
    EXPECT_EQ(person.Trouble(), "");
  }

  OutsideWorld World() const {
    OutsideWorld world = host.World();
    world.userInterface = dialogs;
    world.sinks.push_back(dialogs);
    return world;
  }

  void Show(QBKRN_Dialogs dialog, Person::Deed deed) {
    person.At("frmOptions", std::move(deed));
    EXPECT_TRUE(component.ShowDialog(dialog).IsEmpty());
  }

  std::shared_ptr<Dialogs> dialogs = std::make_shared<Dialogs>(QtToolkit());
  fakes::TestHost host;
  QBDataExchange component;
  Person person;
};

inline bool Enabled(QWidget& window, const char* name) {
  return Find(window, name).isEnabled();
}

}  // namespace krnqb::ui::qt::tests
