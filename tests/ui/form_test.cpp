#include "ui/form.h"

#include <gtest/gtest.h>

#include <set>

#include "fakes/scripted_toolkit.h"
#include "ui/about_dialog.h"
#include "ui/divider.h"
#include "ui/options_dialog.h"

namespace krnqb::ui {
namespace {

std::vector<Form> EveryForm() {
  fakes::ScriptedToolkit toolkit;
  return {OptionsDialog(toolkit).Shown(), DesignedAboutForm()};
}

TEST(Form, FindsItsControlsByName) {
  Form form;
  form.controls.push_back(MakeControl(ControlKind::Button, {"cmdGo", 7}, "&Go"));
  EXPECT_TRUE(form.Has("cmdGo"));
  EXPECT_FALSE(form.Has("cmdStop"));
  EXPECT_EQ(form.At("cmdGo").identifier, 7);
  EXPECT_EQ(form.At("cmdGo").text, "&Go");
  form.At("cmdGo").enabled = false;
  EXPECT_FALSE(form.controls.front().enabled);
  try {
    form.At("cmdStop");
    FAIL();
  } catch (const Error& error) {
    EXPECT_EQ(error.Number(), 5);
  }
}

TEST(Form, MakesVisibleEnabledControlsOnAVisiblePageUsable) {
  Form form;
  form.controls.push_back(MakeControl(ControlKind::Page, {"page", 1}));
  form.controls.push_back(MakeControl(ControlKind::Button, {"button", 2}));
  form.At("button").page = "page";
  EXPECT_TRUE(form.IsUsable("button"));
  form.At("page").visible = false;
  EXPECT_FALSE(form.IsUsable("button"));
  form.At("page").visible = true;
  form.At("button").visible = false;
  EXPECT_FALSE(form.IsUsable("button"));
  form.At("button").visible = true;
  form.At("button").enabled = false;
  EXPECT_FALSE(form.IsUsable("button"));
  EXPECT_FALSE(form.IsUsable("nothing"));
}

TEST(Form, DerivesTheAccessibleNameFromTheCaption) {
  EXPECT_EQ(SpokenText("&Import"), "Import");
  EXPECT_EQ(SpokenText("Import Account Balances:"), "Import Account Balances");
  EXPECT_EQ(SpokenText(""), "");
}

TEST(EveryForm, NamesAndNumbersEachControlOnce) {
  for (const Form& form : EveryForm()) {
    std::set<std::string> names;
    std::set<int> numbers;
    for (const Control& control : form.controls) {
      EXPECT_TRUE(names.insert(control.name).second) << control.name;
      EXPECT_TRUE(numbers.insert(control.identifier).second) << control.name;
      EXPECT_GT(control.identifier, 0) << control.name;
    }
  }
}

TEST(EveryForm, GivesEachControlAnAccessibleName) {
  for (const Form& form : EveryForm()) {
    for (const Control& control : form.controls) EXPECT_NE(control.accessibleName, "") << control.name;
  }
}

TEST(EveryForm, HasTheButtonsThatEnterAndEscapePress) {
  for (const Form& form : EveryForm()) {
    EXPECT_EQ(form.At(form.defaultButton).kind, ControlKind::Button);
    EXPECT_EQ(form.At(form.cancelButton).kind, ControlKind::Button);
  }
}

TEST(EveryForm, PutsPagesBeforeTheirControls) {
  for (const Form& form : EveryForm()) {
    std::set<std::string> pages{""};
    for (const Control& control : form.controls) {
      EXPECT_TRUE(pages.contains(control.page)) << control.name;
      if (control.kind == ControlKind::Page) pages.insert(control.name);
    }
  }
}

TEST(EveryForm, UsesEachAccessKeyOnce) {
  for (const Form& form : EveryForm()) {
    std::set<char> letters;
    for (const Control& control : form.controls) {
      const auto mark = control.text.find('&');
      if (mark == std::string::npos) continue;
      EXPECT_TRUE(letters.insert(control.text.at(mark + 1)).second) << control.text;
    }
  }
}

TEST(Divider, HasTwoLinesOfItsWidthOneUnitApart) {
  for (const int width : {0, 1, 340}) {
    const DividerLines lines = LinesOfDivider(width);
    EXPECT_EQ(lines.top.left, 0);
    EXPECT_EQ(lines.top.width, width);
    EXPECT_EQ(lines.bottom.left, 0);
    EXPECT_EQ(lines.bottom.width, width);
    EXPECT_EQ(lines.bottom.top, lines.top.top + 1);
  }
}

}  // namespace
}  // namespace krnqb::ui
