#include <gtest/gtest.h>

#include "expected_sequences.h"
#include "fakes/outside_element.h"
#include "fakes/test_host.h"

// The rows that an account list adds to the plan's tables. Whole documents are compared.

namespace krnqb {
namespace {

using fakes::Account;
using fakes::AccountAnswer;
using fakes::Block;
using fakes::Row;
using fakes::TableBlocks;
using fakes::TableId;
using fakes::TableRecord;
using fakes::TablesDocument;
using fakes::TableText;
using fakes::TestHost;
using fakes::TextOf;

class AccountRows : public testing::Test {
 protected:
  void Put(const std::string& id, const std::string& tableBlocks) {
    host.planContent->tables[id] = TableText(id, tableBlocks);
  }
  std::string Document(const std::string& answer) {
    return TextOf(host.component.KRNDeserialize(Variant(answer)));
  }

  TestHost host;
  const std::string plannedExpenses = TableId("20", "0600");
  const std::string actualExpenses = TableId("21", "0600");
  const std::string plannedSales = TableId("20", "0400");
  const std::string actualSales = TableId("21", "0400");
};

TEST_F(AccountRows, OfExpensesAreAddedToTheIncomeRangeAndItsTwin) {
  EXPECT_EQ(
      Document(host.quickBooks->answers["4"]),
      TablesDocument(
          {TableRecord(plannedExpenses,
                       TableBlocks({Block("db_income_range_cat3",
                                          {Row({"Wages", "0.1", "*null*"}), Row({"Rent", "0", "*null*"}),
                                           Row({"Utilities", "0", "*null*"}), Row({"Depreciation", "0", "0"}),
                                           Row({"Total", "0", "0"})})})),
           TableRecord(actualExpenses,
                       TableBlocks({Block("db_income_range_cat3_actual",
                                          {Row({"Wages", "5"}), Row({"*null*", "0"}), Row({"*null*", "0"}),
                                           Row({"Depreciation", "0"}), Row({"Total", "0"})})}))}));
  EXPECT_EQ(host.journal->Text(), expected::ReadsExpenseTables()) << "nothing is sent to QuickBooks";
}

TEST_F(AccountRows, OfSalesAreAddedAboveTheClosingRow) {
  EXPECT_EQ(
      Document(host.quickBooks->answers["1"]),
      TablesDocument(
          {TableRecord(plannedSales,
                       TableBlocks({Block("db_sales_values_sales",
                                          {Row({"Shop", "0.1", "*null*"}), Row({"Plants", "0", "*null*"}),
                                           Row({"Tools", "0", "*null*"}), Row({"Total", "0", "0"})}),
                                    Block("db_sales_values_costs",
                                          {Row({"Goods", "0.1", "*null*"}), Row({"Total", "0", "0"})})})),
           TableRecord(actualSales, TableBlocks({Block("db_sales_values_sales_actual",
                                                       {Row({"Shop", "5"}), Row({"*null*", "0"}),
                                                        Row({"*null*", "0"}), Row({"Total", "0"})}),
                                                 Block("db_sales_values_costs_actual",
                                                       {Row({"Goods", "5"}), Row({"Total", "0"})})}))}));
}

TEST_F(AccountRows, OfCostsAreAddedToTheCostBlocks) {
  EXPECT_EQ(
      Document(host.quickBooks->answers["2"]),
      TablesDocument(
          {TableRecord(plannedSales,
                       TableBlocks({Block("db_sales_values_sales",
                                          {Row({"Shop", "0.1", "*null*"}), Row({"Total", "0", "0"})}),
                                    Block("db_sales_values_costs",
                                          {Row({"Goods", "0.1", "*null*"}), Row({"Seeds", "0", "*null*"}),
                                           Row({"Freight", "0", "*null*"}), Row({"Total", "0", "0"})})})),
           TableRecord(actualSales, TableBlocks({Block("db_sales_values_sales_actual",
                                                       {Row({"Shop", "5"}), Row({"Total", "0"})}),
                                                 Block("db_sales_values_costs_actual",
                                                       {Row({"Goods", "5"}), Row({"*null*", "0"}),
                                                        Row({"*null*", "0"}), Row({"Total", "0"})})}))}));
}

TEST_F(AccountRows, AreNotAddedForNamesAlreadyPresent) {
  const std::string planned = TableBlocks(
      {Block("db_income_range_cat3", {Row({"Wages", "=B2"}), Row({"Rent", "7"}), Row({"Total", "0"})})});
  const std::string actual =
      TableBlocks({Block("db_income_range_cat3_actual", {Row({"Wages", "=B2"}), Row({"Total", "0"})})});
  Put(plannedExpenses, planned);
  Put(actualExpenses, actual);
  EXPECT_EQ(
      Document(AccountAnswer("4", {Account("1", "Rent"), Account("2", "Wages"), Account("3", "Total")})),
      TablesDocument({TableRecord(plannedExpenses, planned), TableRecord(actualExpenses, actual)}))
      << "and no formula is cleared";
}

TEST_F(AccountRows, AreAddedForANameThatDiffersInCaseOrBlanks) {
  Put(plannedExpenses, TableBlocks({Block("db_income_range_cat3", {Row({"Rent"}), Row({"A"}), Row({"B"})})}));
  Put(actualExpenses, TableBlocks({}));
  const std::string document = Document(AccountAnswer("4", {Account("1", "RENT"), Account("2", "Rent ")}));
  EXPECT_TRUE(
      fakes::Holds(document, Row({"Rent"}) + Row({"RENT"}) + Row({"Rent "}) + Row({"A"}) + Row({"B"})))
      << document;
}

TEST_F(AccountRows, AreAddedOnceForARepeatedName) {
  Put(plannedExpenses, TableBlocks({Block("db_income_range_cat3", {Row({"A"}), Row({"B"}), Row({"C"})})}));
  Put(actualExpenses,
      TableBlocks({Block("db_income_range_cat3_actual", {Row({"A"}), Row({"B"}), Row({"C"})})}));
  EXPECT_EQ(Document(AccountAnswer("4", {Account("1", "Rent"), Account("2", "Rent")})),
            TablesDocument(
                {TableRecord(plannedExpenses,
                             TableBlocks({Block("db_income_range_cat3",
                                                {Row({"A"}), Row({"Rent"}), Row({"B"}), Row({"C"})})})),
                 TableRecord(actualExpenses,
                             TableBlocks({Block("db_income_range_cat3_actual",
                                                {Row({"A"}), Row({"*null*"}), Row({"B"}), Row({"C"})})}))}));
}

TEST_F(AccountRows, OfEmptyNamesAreAddedUnnamedEachTime) {
  Put(plannedSales, TableBlocks({Block("db_sales_values_sales", {Row({"A", "1"}), Row({"T"})})}));
  Put(actualSales, TableBlocks({Block("db_sales_values_sales_actual", {Row({"5"}), Row({"T"})})}));
  EXPECT_EQ(
      Document(AccountAnswer("1", {Account("1", ""), Account("2", "")})),
      TablesDocument({TableRecord(plannedSales, TableBlocks({Block("db_sales_values_sales",
                                                                   {Row({"A", "1"}), Row({"*null*", "0"}),
                                                                    Row({"*null*", "0"}), Row({"T"})})})),
                      TableRecord(actualSales,
                                  TableBlocks({Block("db_sales_values_sales_actual",
                                                     {Row({"5"}), Row({"0"}), Row({"0"}), Row({"T"})})}))}));
}

TEST_F(AccountRows, AreAddedOnlyForASublevelOfExactlyZero) {
  Put(plannedExpenses, TableBlocks({Block("db_income_range_cat3", {Row({"A"}), Row({"B"}), Row({"C"})})}));
  std::string records = Account("1", "Top");
  for (const char* sublevel : {"1", "00", " 0", "0 ", "", "zero"}) {
    records += "<AccountRet><Name>Sub" + std::string(sublevel) + "</Name><Sublevel>" + sublevel +
               "</Sublevel></AccountRet>";
  }
  records += "<AccountRet><Name>NoSublevel</Name></AccountRet>";
  const std::string document = Document(AccountAnswer("4", {records}));
  EXPECT_TRUE(fakes::Holds(document, Row({"A"}) + Row({"Top"}) + Row({"B"}) + Row({"C"}))) << document;
}

TEST_F(AccountRows, AreAddedForRecordsOfAnyElementName) {
  Put(plannedExpenses, TableBlocks({Block("db_income_range_cat3", {Row({"A"}), Row({"B"}), Row({"C"})})}));
  const std::string document = Document(AccountAnswer(
      "4", {"<!-- a comment -->\n<?hint?>\n<Other><Name>Rent</Name><Sublevel>0</Sublevel></Other>"}));
  EXPECT_TRUE(fakes::Holds(document, Row({"A"}) + Row({"Rent"}) + Row({"B"}) + Row({"C"}))) << document;
}

TEST_F(AccountRows, AreAddedToEveryTwinInBothTables) {
  Put(plannedSales, TableBlocks({Block("db_sales_values_sales", {Row({"S"}), Row({"T"})}),
                                 Block("db_sales_values_annual_growth", {Row({"1"}), Row({"T"})}),
                                 Block("db_sales_values_sales_annual_growth", {Row({"2", "x"}), Row({"T"})}),
                                 Block("db_sales_values_costs_annual_growth", {Row({"3"}), Row({"T"})}),
                                 Block("db_sales_values_sales_actual", {Row({"U"}), Row({"T"})})}));
  Put(actualSales, TableBlocks({Block("DB_Sales_Values_SALES_Actual", {Row({"S"}), Row({"T"})}),
                                Block("db_sales_values_sales_actual", {Row({"V"}), Row({"T"})}),
                                Block("db_sales_values_sales", {Row({"W"}), Row({"T"})})}));
  EXPECT_EQ(
      Document(AccountAnswer("1", {Account("1", "Plants")})),
      TablesDocument(
          {TableRecord(
               plannedSales,
               TableBlocks(
                   {Block("db_sales_values_sales", {Row({"S"}), Row({"Plants"}), Row({"T"})}),
                    Block("db_sales_values_annual_growth", {Row({"1"}), Row({"0"}), Row({"T"})}),
                    Block("db_sales_values_sales_annual_growth",
                          {Row({"2", "x"}), Row({"0", "*null*"}), Row({"T"})}),
                    Block("db_sales_values_costs_annual_growth", {Row({"3"}), Row({"T"})}),
                    Block("db_sales_values_sales_actual", {Row({"U"}), Row({"*null*"}), Row({"T"})})})),
           TableRecord(
               actualSales,
               TableBlocks({Block("DB_Sales_Values_SALES_Actual", {Row({"S"}), Row({"*null*"}), Row({"T"})}),
                            Block("db_sales_values_sales_actual", {Row({"V"}), Row({"*null*"}), Row({"T"})}),
                            Block("db_sales_values_sales", {Row({"W"}), Row({"T"})})}))}))
      << "twins match case-insensitively; the main block of the actual table is unchanged";
}

TEST_F(AccountRows, OfCostsAreAddedToTheCostGrowthTwinOnly) {
  Put(plannedSales, TableBlocks({Block("db_sales_values_costs", {Row({"C"}), Row({"T"})}),
                                 Block("db_sales_values_costs_annual_growth", {Row({"3"}), Row({"T"})}),
                                 Block("db_sales_values_annual_growth", {Row({"1"}), Row({"T"})})}));
  Put(actualSales, TableBlocks({}));
  const std::string document = Document(AccountAnswer("2", {Account("1", "Seeds")}));
  EXPECT_TRUE(fakes::Holds(
      document, Block("db_sales_values_costs_annual_growth", {Row({"3"}), Row({"0"}), Row({"T"})})));
  EXPECT_TRUE(fakes::Holds(document, Block("db_sales_values_annual_growth", {Row({"1"}), Row({"T"})})));
}

TEST_F(AccountRows, AreTheSameForAnElementAndForItsText) {
  const std::string fromText = Document(host.quickBooks->answers["4"]);
  const XmlElement own = XmlElement::Parse(host.quickBooks->answers["4"]);
  EXPECT_EQ(TextOf(host.component.KRNDeserialize(Variant(own))), fromText);
  const auto outside = std::make_shared<fakes::OutsideElement>(own.Xml());
  EXPECT_EQ(TextOf(host.component.KRNDeserialize(Variant(XmlElement(outside)))), fromText);
}

TEST_F(AccountRows, AreReadFromTheCurrentTextOfAnOutsideElement) {
  const auto outside = std::make_shared<fakes::OutsideElement>(
      AccountAnswer("4", {Account("1", "First")})
          .substr(std::string_view("<?xml version=\"1.0\" ?>\n").size()));
  const Variant data{XmlElement(outside)};
  EXPECT_TRUE(fakes::Holds(TextOf(host.component.KRNDeserialize(data)), "<c>First</c>"));
  outside->text.replace(outside->text.find("First"), 5, "Second");
  EXPECT_TRUE(fakes::Holds(TextOf(host.component.KRNDeserialize(data)), "<c>Second</c>"));
}

TEST_F(AccountRows, ComeFromTheWholeDocumentOfAnInnerElement) {
  const XmlElement root = XmlElement::Parse(host.quickBooks->answers["4"]);
  const std::string expected = Document(host.quickBooks->answers["4"]);
  const XmlElement inner = root.Select("//AccountRet/Name");
  EXPECT_EQ(TextOf(host.component.KRNDeserialize(Variant(inner))), expected);
}

TEST_F(AccountRows, ComeFromTheWholeDocumentOfAnOutsideElement) {
  const std::string expected = Document(host.quickBooks->answers["4"]);
  const auto outside = std::make_shared<fakes::OutsideElement>("<Name>Rent</Name>");
  outside->documentText = host.quickBooks->answers["4"];
  outside->path = {0, 0, 0, 1};
  EXPECT_EQ(TextOf(host.component.KRNDeserialize(Variant(XmlElement(outside)))), expected);
}

TEST_F(AccountRows, ComeFromTheTopmostAncestorOfADetachedElement) {
  const XmlElement root =
      XmlElement::Parse("<all>" + AccountAnswer("1", {Account("1", "Plants")}).substr(22) +
                        AccountAnswer("4", {Account("2", "Rent")}).substr(22) + "</all>");
  XmlElement detached = root.LastChild();
  const XmlElement inner = detached.Select("./QBXMLMsgsRs/AccountQueryRs/AccountRet");
  detached.Remove();
  const std::string document = TextOf(host.component.KRNDeserialize(Variant(inner)));
  EXPECT_TRUE(fakes::Holds(document, "<c>Rent</c>"));
  EXPECT_FALSE(fakes::Holds(document, "<c>Plants</c>"));
}

TEST_F(AccountRows, LeaveTheAccountListAndThePlanUnchanged) {
  const XmlElement list = XmlElement::Parse(host.quickBooks->answers["4"]);
  const std::string before = list.Xml();
  const auto tables = host.planContent->tables;
  host.component.KRNDeserialize(Variant(list));
  EXPECT_EQ(list.Xml(), before);
  EXPECT_EQ(host.planContent->tables, tables) << "KRNDeserialize loads nothing";
}

TEST_F(AccountRows, AreReadFromTheFirstAccountQuery) {
  const std::string two =
      fakes::Answer("<AccountQueryRs requestID=\"4\">" + Account("1", "Rent") + "</AccountQueryRs>" +
                    "<AccountQueryRs requestID=\"1\">" + Account("2", "Plants") + "</AccountQueryRs>");
  const std::string document = Document(two);
  EXPECT_TRUE(fakes::Holds(document, "<c>Rent</c>"));
  EXPECT_FALSE(fakes::Holds(document, "<c>Plants</c>"));
}

struct RequestCase {
  const char* requestId;
  const char* firstTable;  // "" when no table is read
};

TEST_F(AccountRows, FollowTheLeadingNumberOfTheRequestId) {
  const RequestCase cases[] = {{"1", "20..0400"},  {"2", "20..0400"},   {"4", "20..0600"}, {" 4", "20..0600"},
                               {"4x", "20..0600"}, {"4.0", "20..0600"}, {"3", ""},         {"0", ""},
                               {"40", ""},         {"-4", ""},          {"", ""},          {"x4", ""}};
  for (const RequestCase& each : cases) {
    host.journal->Clear();
    const std::string document = Document(AccountAnswer(each.requestId, {Account("1", "New")}));
    const std::string table = each.firstTable;
    if (table.empty()) {
      EXPECT_EQ(document, "<tables>\r\n\r\n</tables>") << each.requestId;
      EXPECT_EQ(host.journal->Text(), "") << each.requestId;
    } else {
      EXPECT_EQ(host.journal->Count("tables " + table), 1) << each.requestId;
    }
  }
}

TEST_F(AccountRows, OfExpensesAreNotAddedForAnotherProduct) {
  for (const std::int32_t product : {0, 4, -1}) {
    host.component.KRNProduct(static_cast<QBKRNproduct>(product));
    EXPECT_EQ(Document(host.quickBooks->answers["4"]), "<tables>\r\n\r\n</tables>");
  }
  EXPECT_EQ(host.journal->Text(), "");
  EXPECT_NE(Document(host.quickBooks->answers["1"]), "<tables>\r\n\r\n</tables>")
      << "every product has sales";
}

}  // namespace
}  // namespace krnqb
