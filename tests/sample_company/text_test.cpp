#include "sample_company/text.h"

#include <gtest/gtest.h>

namespace krnqb::sample_company {
namespace {

TEST(SyntheticText, WritesAmountsQuantitiesAndIds) {
  ElementText text;
  text.Money("A", -5);
  text.Money("A", 1'234'500);
  text.Quantity("Q", 625);
  text.Quantity("Q", -650);
  text.Quantity("Q", 300);
  text.Id("I", 255, 1'010'334'984);
  EXPECT_EQ(text.Xml(),
            "<A>-0.05</A>\n<A>12345.00</A>\n<Q>6.25</Q>\n<Q>-6.5</Q>\n<Q>3</Q>\n<I>FF-1010334984</I>\n");
  text.Clear();
  text.Times(1'010'334'984);
  EXPECT_EQ(
      text.Xml(),
      "<TimeCreated>2002-01-06T16:36:24</TimeCreated>\n<TimeModified>2002-01-06T16:36:24</TimeModified>\n"
      "<EditSequence>1010334984</EditSequence>\n");
  EXPECT_EQ(ReferenceLines("10000-1", "Café & Co."),
            "<ListID>10000-1</ListID>\n<FullName>Caf&#233; &amp; Co.</FullName>\n");
}

}  // namespace
}  // namespace krnqb::sample_company
