#include "plan/block_rows.h"

#include <gtest/gtest.h>

#include "fakes/fixed_clock.h"
#include "thrown_error.h"

namespace krnqb {
namespace {

using tests::NumberThrownBy;

XmlElement FiveRows() {
  return XmlElement::Parse(
      "<block><row><c>a</c><c>1</c></row><row><c>b</c></row><row><c>d</c></row><row><c>e</c></row>"
      "<row><c>f</c></row></block>");
}

std::string Names(const XmlElement& block) {
  std::string names;
  for (const XmlElement& row : block.Children()) names += row.FirstChild().Text() + " ";
  return names;
}

TEST(AddBlockRow, InsertsAboveTheClosingRowsInTheOrderOfTheCalls) {
  const XmlElement block = FiveRows();
  AddBlockRow(block, "new1", 2);
  AddBlockRow(block, "new2", 2);
  EXPECT_EQ(Names(block), "a b d new1 new2 e f ");
}

TEST(AddBlockRow, AppendsIfNoRowWouldBeAboveTheRowsKeptBelow) {
  for (const auto kept : std::initializer_list<std::int16_t>{0, 5, 6, -1}) {
    const XmlElement block = FiveRows();
    AddBlockRow(block, "new1", kept);
    EXPECT_EQ(Names(block), "a b d e f new1 ") << kept;
  }
}

TEST(AddBlockRow, CanKeepAllRowsExceptTheFirstBelow) {
  const XmlElement block = FiveRows();
  AddBlockRow(block, "new", 4);
  EXPECT_EQ(Names(block), "a new b d e f ");
}

TEST(AddBlockRow, CopiesNumbersAsZeroAndEverythingElseAsNoValue) {
  XmlElement block = XmlElement::Parse(
      "<block><row h=\"15\"><c>Rent</c><c>12.5</c><c "
      "f=\"x\">=A1</c><c>*null*</c><c/><c>($1,000.00)</c><c>x</c></row>"
      "</block>");
  EXPECT_EQ(
      AddBlockRow(block, "Meals & Entertainment", 0).Xml(),
      "<row h=\"15\"><c>Meals &amp; Entertainment</c><c>0</c><c f=\"x\">*null*</c><c>*null*</c><c>*null*</c>"
      "<c>0</c><c>*null*</c></row>");
}

TEST(AddBlockRow, TreatsTheFirstCellOfAnUnnamedRowLikeTheOthers) {
  XmlElement block = XmlElement::Parse("<block><row><c>Rent</c><c>1</c></row></block>");
  EXPECT_EQ(AddBlockRow(block, {}, 0).Xml(), "<row><c>*null*</c><c>0</c></row>");
  block = XmlElement::Parse("<block><row><c>2002</c></row></block>");
  EXPECT_EQ(AddBlockRow(block, {}, 0).Xml(), "<row><c>0</c></row>");
}

TEST(AddBlockRow, FailsWithoutARowToCopy) {
  EXPECT_EQ(NumberThrownBy([] { AddBlockRow(XmlElement::Parse("<block>\n</block>"), "x", 0); }), 91);
  EXPECT_EQ(NumberThrownBy([] { AddBlockRow(XmlElement(), "x", 0); }), 91);
}

TEST(AddBlockRow, FailsWithoutACellForTheNameButCopiesAnEmptyRowWithoutAName) {
  const XmlElement block = XmlElement::Parse("<block><row/></block>");
  EXPECT_EQ(NumberThrownBy([&] { AddBlockRow(block, "x", 0); }), 91);
  EXPECT_EQ(block.Children().size(), 1U);
  EXPECT_EQ(AddBlockRow(block, {}, 0).Xml(), "<row/>");
}

TEST(FindBlock, FindsAChildByItsExactId) {
  const XmlElement blocks = XmlElement::Parse(
      "<tableblocks><other id=\"x\"/><block/><block id=\"X\"/><block id=\"x\" n=\"1\"/></tableblocks>");
  EXPECT_EQ(FindBlock(blocks, "x").Attribute("n"), "1");
  EXPECT_FALSE(FindBlock(blocks, "y"));
  EXPECT_FALSE(FindBlock(XmlElement(), "x"));
}

TEST(FindBlock, IgnoresElementsInANamespace) {
  const XmlElement blocks = XmlElement::Parse(
      "<tableblocks><block xmlns='urn:x' id='x'/><y:block xmlns:y='urn:y' id='x'/><block id='x' n='1'/>"
      "</tableblocks>");
  EXPECT_EQ(FindBlock(blocks, "x").Attribute("n"), "1");
}

TEST(ClearFormulaCells, EmptiesAFormulaInsideAChildElementOfTheCell) {
  const XmlElement block =
      XmlElement::Parse("<block><row><c><b>=A1</b>+1</c><c><b>A1</b>=</c></row></block>");
  ClearFormulaCells(block);
  EXPECT_EQ(block.Xml(), "<block><row><c>*null*</c><c><b>A1</b>=</c></row></block>");
}

TEST(ClearFormulaCells, EmptiesEveryFormulaOfTheWholeTable) {
  const XmlElement table = XmlElement::Parse(
      "<tableitem><c>=A1</c><tableblocks><block><row><c>=B1</c><c> =no</c><c>5</c></row></block>"
      "<block><row><c><![CDATA[=SUM(A1:A5)]]></c></row></block></tableblocks></tableitem>");
  ClearFormulaCells(table.Child("tableblocks"));
  EXPECT_EQ(table.Xml(),
            "<tableitem><c>*null*</c><tableblocks><block><row><c>*null*</c><c> =no</c><c>5</c></row></block>"
            "<block><row><c>*null*</c></row></block></tableblocks></tableitem>");
}

}  // namespace
}  // namespace krnqb
