#include "krnqb/variant.h"

#include <gtest/gtest.h>

#include "krnqb/error.h"
#include "krnqb/subtotals.h"

namespace krnqb {
namespace {

TEST(Variant, IsEmptyByDefault) {
  EXPECT_TRUE(Variant().IsEmpty());
  EXPECT_FALSE(Variant("").IsEmpty());
  EXPECT_FALSE(Variant(XmlElement()).IsEmpty());
}

TEST(Variant, KeepsTheTypeOfItsValue) {
  EXPECT_NE(Variant(true).AsBoolean(), nullptr);
  EXPECT_NE(Variant(std::int16_t{3}).AsInteger(), nullptr);
  EXPECT_NE(Variant(std::int32_t{3}).AsLong(), nullptr);
  EXPECT_NE(Variant(3.0).AsDouble(), nullptr);
  EXPECT_NE(Variant("text").AsText(), nullptr);
  EXPECT_EQ(Variant("text").AsDouble(), nullptr);
  EXPECT_EQ(Variant(1.5).AsText(), nullptr);
}

TEST(Variant, ConvertsToTextAsAutomationDoes) {
  EXPECT_EQ(Variant().ToText(), "");
  EXPECT_EQ(Variant(true).ToText(), "True");
  EXPECT_EQ(Variant(false).ToText(), "False");
  EXPECT_EQ(Variant(std::int16_t{-7}).ToText(), "-7");
  EXPECT_EQ(Variant(std::int32_t{70000}).ToText(), "70000");
  EXPECT_EQ(Variant(0.25).ToText(), "0.25");
  EXPECT_EQ(Variant("abc").ToText(), "abc");
}

TEST(Variant, HasNoTextIfItHoldsAnObject) {
  const auto number = [](const Variant& value) {
    try {
      static_cast<void>(value.ToText());
    } catch (const Error& error) {
      return error.Number();
    }
    return std::int32_t{0};
  };
  EXPECT_EQ(number(Variant(ObjectReference())), 91);
  EXPECT_EQ(number(Variant(XmlElement())), 91);
  EXPECT_EQ(number(Variant(XmlElement::Parse("<a/>"))), 13);
  EXPECT_EQ(number(Variant(std::make_shared<cSubtotals>())), 13);
}

TEST(Variant, IsEmptyOnceItsTextIsTaken) {
  Variant value("a text");
  EXPECT_EQ(value.TakeText(), "a text");
  EXPECT_TRUE(value.IsEmpty());
  EXPECT_EQ(value.TakeText(), "");
  Variant number(std::int16_t{3});
  EXPECT_EQ(number.TakeText(), "");
  EXPECT_EQ(*number.AsInteger(), 3);
}

TEST(Variant, ReturnsItsObjectByClass) {
  const auto record = std::make_shared<cSubtotals>("Rent");
  const Variant value(record);
  EXPECT_TRUE(value.IsObject());
  EXPECT_FALSE(value.IsNothing());
  EXPECT_EQ(value.AsObject<cSubtotals>(), record);
  EXPECT_EQ(value.AsObject<Collection>(), nullptr);
  EXPECT_EQ(value.AsElement(), nullptr);
  EXPECT_TRUE(Variant(ObjectReference()).IsNothing());
}

}  // namespace
}  // namespace krnqb
