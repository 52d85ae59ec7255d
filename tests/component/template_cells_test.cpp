#include <gtest/gtest.h>

#include "fakes/test_host.h"

// What a new row copies from the block's first row, and what happens to formulas.

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

class NewRow : public testing::Test {
 protected:
  void Put(const std::string& id, const std::string& tableBlocks) {
    host.planContent->tables[id] = TableText(id, tableBlocks);
  }
  /// Returns the document with one new account "Rent".
  std::string AfterRent() {
    return TextOf(host.component.KRNDeserialize(Variant(AccountAnswer("4", {Account("1", "Rent")}))));
  }

  TestHost host;
  const std::string planned = TableId("20", "0600");
  const std::string actual = TableId("21", "0600");
};

TEST_F(NewRow, HasZeroForANumberInTheTemplate) {
  for (const char* number :
       {"0",   "1",  "-1",        "+1",    "1-",  "1+",  "12.5", ".5",       "5.",  " 7 ",
        "(7)", "$7", "$1,234.50", "1,234", "-$7", "1E3", "1e-3", "-1.5E+10", "007", "($1,000.00)"}) {
    Put(planned, TableBlocks({Block("db_income_range_cat3", {Row({"A", number}), Row({"B"}), Row({"C"})})}));
    const std::string document = AfterRent();
    EXPECT_TRUE(fakes::Holds(document, Row({"Rent", "0"}))) << number << " in " << document;
  }
}

TEST_F(NewRow, HasNoValueForAnythingElseInTheTemplate) {
  for (const char* text : {"",
                           " ",
                           "*null*",
                           "abc",
                           "=B2",
                           "1 2",
                           "1.2.3",
                           "--1",
                           "-",
                           "$",
                           ".",
                           "1E",
                           "E5",
                           "7%",
                           "True",
                           "7x",
                           "0x10",
                           "NaN",
                           "inf",
                           "()",
                           "\xE2\x82\xAC"
                           "7"}) {
    Put(planned, TableBlocks({Block("db_income_range_cat3", {Row({"A", text}), Row({"B"}), Row({"C"})})}));
    const std::string document = AfterRent();
    EXPECT_TRUE(fakes::Holds(document, Row({"Rent", "*null*"}))) << "\"" << text << "\" in " << document;
  }
}

TEST_F(NewRow, CopiesItsCellsFromTheFirstRowOnly) {
  Put(planned, TableBlocks({Block("db_income_range_cat3", {Row({"A", "1", "x", "2", "=B2", "*null*", ""}),
                                                           Row({"B", "y"}), Row({"C"})})}));
  EXPECT_TRUE(fakes::Holds(AfterRent(), Row({"A", "1", "x", "2", "*null*", "*null*", ""}) +
                                            Row({"Rent", "0", "*null*", "0", "*null*", "*null*", "*null*"}) +
                                            Row({"B", "y"})));
}

TEST_F(NewRow, KeepsTheTemplatesAttributes) {
  Put(planned,
      TableBlocks({Block("db_income_range_cat3", {"<row h=\"12\"><c s=\"2\">A</c><c f=\"a b\">1</c></row>",
                                                  Row({"B"}), Row({"C"})})}));
  EXPECT_TRUE(fakes::Holds(AfterRent(), "<row h=\"12\"><c s=\"2\">Rent</c><c f=\"a b\">0</c></row>"));
}

TEST_F(NewRow, OfATwinHasNoNameOrZeroForANumericTemplateName) {
  Put(actual, TableBlocks({Block("db_income_range_cat3_actual", {Row({"5", "A"}), Row({"B"}), Row({"C"})}),
                           Block("DB_INCOME_RANGE_CAT3_ACTUAL", {Row({"A", "5"}), Row({"B"}), Row({"C"})})}));
  const std::string document = AfterRent();
  EXPECT_TRUE(fakes::Holds(document, Row({"5", "A"}) + Row({"0", "*null*"}) + Row({"B"}))) << document;
  EXPECT_TRUE(fakes::Holds(document, Row({"A", "5"}) + Row({"*null*", "0"}) + Row({"B"}))) << document;
}

TEST_F(NewRow, ClearsEveryFormulaOfBothTables) {
  Put(planned,
      TableBlocks({Block("db_income_range_cat3", {Row({"A", "=B1*2", "1"}), Row({"=name", "="}), Row({"C"})}),
                   Block("db_other", {Row({"X", "=SUM(B1:B9)", " =B2", "B2=3"})})}));
  Put(actual, TableBlocks({Block("db_other", {Row({"X", "=B1"})}),
                           Block("db_income_range_cat3_actual", {Row({"A"}), Row({"B"}), Row({"C"})})}));
  EXPECT_EQ(
      AfterRent(),
      TablesDocument(
          {TableRecord(planned, TableBlocks({Block("db_income_range_cat3",
                                                   {Row({"A", "*null*", "1"}), Row({"Rent", "*null*", "0"}),
                                                    Row({"*null*", "*null*"}), Row({"C"})}),
                                             Block("db_other", {Row({"X", "*null*", " =B2", "B2=3"})})})),
           TableRecord(actual,
                       TableBlocks({Block("db_other", {Row({"X", "*null*"})}),
                                    Block("db_income_range_cat3_actual",
                                          {Row({"A"}), Row({"*null*"}), Row({"B"}), Row({"C"})})}))}));
}

TEST_F(NewRow, ClearsTheFormulasOfAnActualTableThatHasNoTwinBlock) {
  Put(actual, TableBlocks({Block("db_other", {Row({"X", "=B1"})})}));
  EXPECT_TRUE(fakes::Holds(AfterRent(), Block("db_other", {Row({"X", "*null*"})})));
}

TEST_F(NewRow, LosesANameThatLooksLikeAFormula) {
  Put(planned, TableBlocks({Block("db_income_range_cat3", {Row({"A"}), Row({"B"}), Row({"C"})})}));
  const std::string document =
      TextOf(host.component.KRNDeserialize(Variant(AccountAnswer("4", {Account("1", "=Rent")}))));
  EXPECT_TRUE(fakes::Holds(document, Row({"A"}) + Row({"*null*"}) + Row({"B"}))) << document;
}

}  // namespace
}  // namespace krnqb
