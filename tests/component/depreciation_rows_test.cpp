#include <gtest/gtest.h>

#include "fakes/test_host.h"

// The plan keeps depreciation in a separate row: accounts whose names occur within "Depreciation" get no row.

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

class DepreciationRows : public testing::Test {
 protected:
  DepreciationRows() {
    Put(planned, TableBlocks({Block("db_income_range_cat3", {Row({"A", "=B1"}), Row({"B"}), Row({"C"})}),
                              Block("db_income_range_cat3_actual", {Row({"A"}), Row({"B"}), Row({"C"})})}));
    Put(actual,
        TableBlocks({Block("db_income_range_cat3_actual", {Row({"A", "=B1"}), Row({"B"}), Row({"C"})})}));
  }
  void Put(const std::string& id, const std::string& tableBlocks) {
    host.planContent->tables[id] = TableText(id, tableBlocks);
  }
  std::string Document(const std::string& answer) {
    return TextOf(host.component.KRNDeserialize(Variant(answer)));
  }

  TestHost host;
  const std::string planned = TableId("20", "0600");
  const std::string actual = TableId("21", "0600");
};

TEST_F(DepreciationRows, AreRemovedButTheirPlannedTwinsStay) {
  EXPECT_EQ(
      Document(
          AccountAnswer("4", {Account("1", "Depreciation"), Account("2", "Rent"), Account("3", "Deprec")})),
      TablesDocument({TableRecord(planned, TableBlocks({Block("db_income_range_cat3",
                                                              {Row({"A", "*null*"}), Row({"Rent", "*null*"}),
                                                               Row({"B"}), Row({"C"})}),
                                                        Block("db_income_range_cat3_actual",
                                                              {Row({"A"}), Row({"*null*"}), Row({"*null*"}),
                                                               Row({"*null*"}), Row({"B"}), Row({"C"})})})),
                      TableRecord(actual, TableBlocks({Block("db_income_range_cat3_actual",
                                                             {Row({"A", "*null*"}), Row({"*null*", "*null*"}),
                                                              Row({"B"}), Row({"C"})})}))}));
}

TEST_F(DepreciationRows, LeaveTheActualTableUnchangedWhenNoOtherNameIsNew) {
  EXPECT_EQ(
      Document(AccountAnswer("4", {Account("1", "Depreciation")})),
      TablesDocument(
          {TableRecord(planned, TableBlocks({Block("db_income_range_cat3",
                                                   {Row({"A", "*null*"}), Row({"B"}), Row({"C"})}),
                                             Block("db_income_range_cat3_actual",
                                                   {Row({"A"}), Row({"*null*"}), Row({"B"}), Row({"C"})})})),
           TableRecord(actual, TableBlocks({Block("db_income_range_cat3_actual",
                                                  {Row({"A", "=B1"}), Row({"B"}), Row({"C"})})}))}));
}

TEST_F(DepreciationRows, AreRecognisedByAnyPartOfTheWordCaseSensitively) {
  for (const char* name : {"Depreciation", "Deprec", "preciation", "ation", "D", "n", "ecia"}) {
    EXPECT_FALSE(fakes::Holds(Document(AccountAnswer("4", {Account("1", name)})), Row({name, "*null*"})))
        << name;
  }
  for (const char* name :
       {"depreciation", "DEPRECIATION", "Depreciations", "Depreciation ", "deprec", "N", "Dep n"}) {
    EXPECT_TRUE(fakes::Holds(Document(AccountAnswer("4", {Account("1", name)})), Row({name, "*null*"})))
        << name;
  }
}

TEST_F(DepreciationRows, StayWhenThePlanAlreadyHasThem) {
  Put(planned,
      TableBlocks({Block("db_income_range_cat3", {Row({"A"}), Row({"Depreciation", "7"}), Row({"C"})})}));
  const std::string document =
      Document(AccountAnswer("4", {Account("1", "Depreciation"), Account("2", "Rent")}));
  EXPECT_TRUE(fakes::Holds(document, Block("db_income_range_cat3", {Row({"A"}), Row({"Rent"}),
                                                                    Row({"Depreciation", "7"}), Row({"C"})})))
      << document;
}

TEST_F(DepreciationRows, AreOrdinaryAccountsInTheOtherTables) {
  const std::string sales = Document(AccountAnswer("1", {Account("1", "Depreciation")}));
  EXPECT_TRUE(fakes::Holds(sales, Row({"Depreciation", "0", "*null*"})));
  const std::string costs = Document(AccountAnswer("2", {Account("1", "Deprec")}));
  EXPECT_TRUE(fakes::Holds(costs, Row({"Deprec", "0", "*null*"})));
  host.component.KRNProduct(QBKRN_BRI);
  host.component.SelectedExpenses(Variant(XmlElement::Parse("<expenseAccounts/>")));
  const std::string margin = Document(AccountAnswer("4", {Account("1", "Depreciation")}));
  EXPECT_TRUE(fakes::Holds(margin, Row({"Depreciation", "0", "*null*"})));
}

}  // namespace
}  // namespace krnqb
