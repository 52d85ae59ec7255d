#include "plan/account_rows.h"

#include <gtest/gtest.h>

#include "fakes/answer_texts.h"
#include "thrown_error.h"

namespace krnqb {
namespace {

using tests::NumberThrownBy;

// Returns an account list with these records.
XmlElement Accounts(const std::string& records) {
  return XmlElement::Parse("<AccountQueryRs>" + records + "</AccountQueryRs>");
}

XmlElement Tables() {
  return XmlElement::Parse(
      "<tableblocks><block "
      "id=\"main\"><row><c>Sales</c><c>1</c></row><row><c>Total</c><c>=B1</c></row></block>"
      "<block id=\"Main_Actual\"><row><c>Sales</c><c>1</c></row><row><c>Total</c><c>=B1</c></row></block>"
      "<block id=\"other\"><row><c>x</c><c>=B9</c></row></block></tableblocks>");
}

const TwinBlocks twins = {"main_actual"};

std::vector<std::string> Merge(const XmlElement& tables, std::string_view block, const std::string& records) {
  std::vector<NewAccountRow> rows;
  MergeAccountRows(tables, block, Accounts(records), rows, twins, 1);
  std::vector<std::string> names;
  for (const NewAccountRow& row : rows) names.push_back(row.name);
  return names;
}

TEST(MergeAccountRows, AddsNamesMissingFromTheBlock) {
  const XmlElement tables = Tables();
  EXPECT_EQ(
      Merge(tables, "main",
            fakes::Account("1", "Sales") + fakes::Account("2", "Plants") + fakes::Account("3", "sales")),
      (std::vector<std::string>{"Plants", "sales"}));
  EXPECT_EQ(tables.FirstChild().Xml(),
            "<block id=\"main\"><row><c>Sales</c><c>1</c></row><row><c>Plants</c><c>0</c></row>"
            "<row><c>sales</c><c>0</c></row><row><c>Total</c><c>*null*</c></row></block>");
}

TEST(MergeAccountRows, AddsAsManyBlankRowsToEachTwinWithACaseInsensitiveId) {
  const XmlElement tables = Tables();
  Merge(tables, "main", fakes::Account("2", "Plants") + fakes::Account("3", "Seeds"));
  EXPECT_EQ(tables.Children()[1].Xml(),
            "<block id=\"Main_Actual\"><row><c>Sales</c><c>1</c></row><row><c>*null*</c><c>0</c></row>"
            "<row><c>*null*</c><c>0</c></row><row><c>Total</c><c>*null*</c></row></block>");
}

TEST(MergeAccountRows, ClearsAllFormulasOfTheTableWhenARowIsAdded) {
  XmlElement tables = Tables();
  Merge(tables, "main", fakes::Account("1", "Sales"));
  EXPECT_EQ(tables.Children()[2].Xml(), "<block id=\"other\"><row><c>x</c><c>=B9</c></row></block>");
  Merge(tables, "main", fakes::Account("2", "Plants"));
  EXPECT_EQ(tables.Children()[2].Xml(), "<block id=\"other\"><row><c>x</c><c>*null*</c></row></block>");
}

TEST(MergeAccountRows, AddsANameSharedByTwoAccountsOnce) {
  EXPECT_EQ(Merge(Tables(), "main", fakes::Account("2", "Plants") + fakes::Account("3", "Plants")).size(),
            1U);
}

TEST(MergeAccountRows, AddsTopLevelAccountsOnly) {
  EXPECT_TRUE(Merge(Tables(), "main",
                    fakes::SubAccount("2", "Plants", "1") +
                        "<AccountRet><Name>NoLevel</Name></AccountRet>"
                        "<AccountRet><Name>Blank</Name><Sublevel> 0</Sublevel></AccountRet>")
                  .empty());
}

TEST(MergeAccountRows, AlignsOnlyTheTwinsForAnEmptyBlockName) {
  const XmlElement tables = Tables();
  std::vector<NewAccountRow> rows(2);
  MergeAccountRows(tables, {}, Accounts(fakes::Account("2", "Plants")), rows, twins, 1);
  EXPECT_EQ(rows.size(), 2U);
  EXPECT_EQ(tables.Children()[0].Children().size(), 2U);
  EXPECT_EQ(tables.Children()[1].Children().size(), 4U);
}

TEST(MergeAccountRows, DoesNothingWithoutTableBlocks) {
  EXPECT_TRUE(Merge(XmlElement(), "main", fakes::Account("2", "Plants")).empty());
  EXPECT_TRUE(Merge(XmlElement::Parse("<tableblocks> </tableblocks>"), "main", fakes::Account("2", "Plants"))
                  .empty());
}

TEST(MergeAccountRows, FailsForAMissingBlockThatAnAccountNeeds) {
  EXPECT_EQ(NumberThrownBy([] { Merge(Tables(), "missing", fakes::Account("2", "Plants")); }), 91);
  EXPECT_EQ(NumberThrownBy([] { Merge(Tables(), "missing", fakes::SubAccount("2", "Plants", "1")); }), 0);
}

TEST(MergeAccountRows, FailsForABlockWithoutARowToCopy) {
  const XmlElement tables = XmlElement::Parse("<tableblocks><block id=\"main\"/></tableblocks>");
  EXPECT_EQ(NumberThrownBy([&] { Merge(tables, "main", fakes::Account("2", "Plants")); }), 91);
}

TEST(MergeAccountRows, FailsAtARowWithoutCellsUnlessTheNameComesBeforeIt) {
  const auto tables = [] {
    return XmlElement::Parse(
        "<tableblocks><block id=\"main\"><row><c>Sales</c></row><row/><row><c>Seeds</c></row></block>"
        "</tableblocks>");
  };
  EXPECT_EQ(NumberThrownBy([&] { Merge(tables(), "main", fakes::Account("1", "Sales")); }), 0);
  EXPECT_EQ(NumberThrownBy([&] { Merge(tables(), "main", fakes::Account("1", "Seeds")); }), 91);
}

TEST(MergeAccountRows, FailsForATopLevelAccountWithoutAName) {
  EXPECT_EQ(
      NumberThrownBy([] { Merge(Tables(), "main", "<AccountRet><Sublevel>0</Sublevel></AccountRet>"); }), 91);
}

}  // namespace
}  // namespace krnqb
