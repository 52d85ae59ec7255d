#include <gtest/gtest.h>

#include "fakes/outside_element.h"
#include "fakes/releasable_object.h"
#include "fakes/test_host.h"
#include "thrown_error.h"

namespace krnqb {
namespace {

using fakes::SelectionText;
using fakes::TestHost;
using tests::NumberThrownBy;

TEST(SelectedExpensesSet, IsSharedAndNotCopied) {
  TestHost host;
  XmlElement selection = XmlElement::Parse(SelectionText({{"1", "True"}}));
  host.component.SelectedExpenses(Variant(selection));
  EXPECT_TRUE(host.component.SelectedExpenses() == selection);
  selection.FirstChild().SetAttribute("selected", "False");
  EXPECT_EQ(host.component.SelectedExpenses().FirstChild().Attribute("selected"), "False");
  host.component.SelectedExpenses().FirstChild().SetAttribute("selected", "1");
  EXPECT_EQ(selection.FirstChild().Attribute("selected"), "1");
}

TEST(SelectedExpensesSet, ReturnsAnOutsideElementAsTheSameObject) {
  TestHost host;
  const auto outside = std::make_shared<fakes::OutsideElement>(SelectionText({}));
  host.component.SelectedExpenses(Variant(XmlElement(outside)));
  EXPECT_EQ(host.component.SelectedExpenses().Outside(), outside);
}

TEST(SelectedExpensesSet, IsReturnedForEveryProductWithoutBeingRead) {
  TestHost host;
  const XmlElement unrelated = XmlElement::Parse("<anything/>");
  host.component.SelectedExpenses(Variant(unrelated));
  for (const std::int32_t product : {0, 1, 2, 3}) {
    host.component.KRNProduct(static_cast<QBKRNproduct>(product));
    EXPECT_TRUE(host.component.SelectedExpenses() == unrelated) << product;
  }
  EXPECT_EQ(host.journal->Text(), "");
}

TEST(SelectedExpensesSet, RejectsOtherValuesAndKeepsTheCurrentOne) {
  TestHost host;
  const XmlElement selection = XmlElement::Parse(SelectionText({}));
  host.component.SelectedExpenses(Variant(selection));
  const Variant strangers[] = {Variant("<expenseAccounts/>"),
                               Variant(""),
                               Variant(true),
                               Variant(std::int16_t{0}),
                               Variant(std::int32_t{1}),
                               Variant(1.5),
                               Variant(host.plan),
                               Variant(std::make_shared<Collection>()),
                               Variant(std::make_shared<fakes::ReleasableObject>(host.journal, "released"))};
  for (const Variant& stranger : strangers) {
    const auto error = tests::ErrorOf([&] { host.component.SelectedExpenses(stranger); });
    ASSERT_TRUE(error.has_value());
    EXPECT_EQ(error->Number(), 13);
    EXPECT_EQ(error->Description(), "Type mismatch");
    EXPECT_TRUE(host.component.SelectedExpenses() == selection);
  }
  EXPECT_EQ(host.component.ErrorNumber(), 0);
}

TEST(SelectedExpensesSet, IsClearedByNothing) {
  const Variant nothings[] = {Variant(), Variant(ObjectReference()), Variant(XmlElement())};
  for (const Variant& nothing : nothings) {
    TestHost host;
    host.component.SelectedExpenses(Variant(XmlElement::Parse("<expenseAccounts/>")));
    EXPECT_EQ(NumberThrownBy([&] { host.component.SelectedExpenses(nothing); }), 0);
    EXPECT_FALSE(host.component.SelectedExpenses());
  }
}

}  // namespace
}  // namespace krnqb
