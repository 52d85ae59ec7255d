#include <gtest/gtest.h>

#include "expected_sequences.h"
#include "fakes/outside_element.h"
#include "fakes/test_host.h"

// What KRNDeserialize returns when something is missing or fails in the middle.

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

constexpr auto emptyBody = "<tables>\r\n\r\n</tables>";

class AccountRowFailures : public testing::Test {
 protected:
  void Put(const std::string& id, const std::string& tableBlocks) {
    host.planContent->tables[id] = TableText(id, tableBlocks);
  }
  std::string Document(const std::string& answer) {
    return TextOf(host.component.KRNDeserialize(Variant(answer)));
  }
  /// Returns the document of the planned table with one new account and of the given actual table.
  std::string OneRentInPlanned() const {
    return TableRecord(
        planned,
        TableBlocks({Block("db_income_range_cat3", {Row({"A"}), Row({"Rent"}), Row({"B"}), Row({"C"})})}));
  }
  void PutPlainPlanned() {
    Put(planned, TableBlocks({Block("db_income_range_cat3", {Row({"A"}), Row({"B"}), Row({"C"})})}));
  }

  TestHost host;
  const std::string planned = TableId("20", "0600");
  const std::string actual = TableId("21", "0600");
  const std::string rent = AccountAnswer("4", {Account("1", "Rent")});
  const std::string noAccounts = AccountAnswer("4", {});
};

TEST_F(AccountRowFailures, ReturnTheEmptyTextForDataWithoutAnAccountList) {
  for (const char* data : {"", "  ", "no XML", "<QBXML>", "<QBXML></qbxml>", "<a/><b/>", "<QBXML/>",
                           "<QBXML><QBXMLMsgsRs><ItemQueryRs requestID=\"1\"/></QBXMLMsgsRs></QBXML>",
                           "<QBXML><accountqueryrs requestID=\"1\"/></QBXML>"}) {
    EXPECT_EQ(Document(data), "") << data;
  }
  EXPECT_EQ(host.journal->Text(), "") << "the plan is not called";
}

TEST_F(AccountRowFailures, ReturnTheEmptyTextForAListWithoutARequestId) {
  EXPECT_EQ(Document(fakes::Answer("<AccountQueryRs>" + Account("1", "Rent") + "</AccountQueryRs>")), "");
  EXPECT_EQ(Document(fakes::Answer("<AccountQueryRs requestid=\"4\"/>")), "");
}

TEST_F(AccountRowFailures, ReturnTheEmptyTextForValuesWithoutText) {
  EXPECT_EQ(TextOf(host.component.KRNDeserialize(Variant())), "");
  EXPECT_EQ(TextOf(host.component.KRNDeserialize(Variant(ObjectReference()))), "");
  EXPECT_EQ(TextOf(host.component.KRNDeserialize(Variant(XmlElement()))), "");
  EXPECT_EQ(TextOf(host.component.KRNDeserialize(Variant(std::int16_t{4}))), "");
  EXPECT_EQ(TextOf(host.component.KRNDeserialize(Variant(std::make_shared<Collection>()))), "");
  EXPECT_EQ(TextOf(host.component.KRNDeserialize(Variant(host.plan))), "");
}

TEST_F(AccountRowFailures, ReturnTheEmptyTextForAnUnreadableOutsideElement) {
  EXPECT_EQ(TextOf(host.component.KRNDeserialize(
                Variant(XmlElement(std::make_shared<fakes::BrokenOutsideElement>())))),
            "");
  EXPECT_EQ(TextOf(host.component.KRNDeserialize(
                Variant(XmlElement(std::make_shared<fakes::OutsideElement>("<AccountQueryRs"))))),
            "");
}

TEST_F(AccountRowFailures, ReturnTheEmptyTextWithoutAPlan) {
  host.component.KRNPlanData(Variant(std::shared_ptr<PlanObject>()));
  EXPECT_EQ(Document(rent), "");
  EXPECT_EQ(Document(AccountAnswer("3", {})), emptyBody) << "no table is read, so none is missing";
}

TEST_F(AccountRowFailures, ReturnTheEmptyTextWhenThePlannedTableCannotBeRead) {
  host.planContent->tables.erase(planned);
  EXPECT_EQ(Document(rent), "");
  EXPECT_EQ(host.journal->Text(), expected::Lines({"Data", "tables 20..0600"}))
      << "the actual table is not read";
}

TEST_F(AccountRowFailures, KeepThePlannedTableWhenTheActualOneCannotBeRead) {
  PutPlainPlanned();
  host.planContent->tables.erase(actual);
  EXPECT_EQ(Document(rent), TablesDocument({OneRentInPlanned()}));
}

TEST_F(AccountRowFailures, KeepThePlannedTableWhenSerializeOfTheActualOneFails) {
  PutPlainPlanned();
  host.journal->FailOccurrence("Serialize", 2, Error(-2147220991, "locked"));
  EXPECT_EQ(Document(rent), TablesDocument({OneRentInPlanned()}));
}

TEST_F(AccountRowFailures, KeepThePlannedTableWhenATwinOfTheActualOneHasNoRows) {
  PutPlainPlanned();
  Put(actual, TableBlocks({Block("db_income_range_cat3_actual", {})}));
  EXPECT_EQ(Document(rent), TablesDocument({OneRentInPlanned()}));
}

TEST_F(AccountRowFailures, SkipATableWithoutBlocks) {
  PutPlainPlanned();
  for (const char* text :
       {"no XML", "", "<tableitem/>", "<tableitem><deeper><tableblocks/></deeper></tableitem>",
        "<!DOCTYPE t [<!ENTITY e \"x\">]><t><tableblocks/></t>"}) {
    host.planContent->tables[actual] = text;
    EXPECT_EQ(Document(rent), TablesDocument({OneRentInPlanned()})) << text;
  }
}

TEST_F(AccountRowFailures, AddNoActualRowsWhenThePlannedTableHasNoBlocks) {
  const std::string blocks =
      TableBlocks({Block("db_income_range_cat3_actual", {Row({"A", "=B1"}), Row({"B", "1"})})});
  host.planContent->tables[planned] = "<tableitem/>";
  Put(actual, blocks);
  EXPECT_EQ(Document(rent), TablesDocument({TableRecord(actual, blocks)}));
}

TEST_F(AccountRowFailures, ReturnAnEmptyBodyWhenNeitherTableHasBlocks) {
  host.planContent->tables[planned] = "<tableitem/>";
  host.planContent->tables[actual] = "no XML";
  EXPECT_EQ(Document(rent), emptyBody);
}

TEST_F(AccountRowFailures, DoNotOccurForEmptyTableBlocks) {
  host.planContent->tables[planned] = "<t><tableblocks/></t>";
  host.planContent->tables[actual] = "<t><tableblocks/></t>";
  EXPECT_EQ(Document(rent),
            TablesDocument({TableRecord(planned, "<tableblocks/>"), TableRecord(actual, "<tableblocks/>")}));
}

TEST_F(AccountRowFailures, OccurForAMissingMainBlockOnlyWhenAnAccountNeedsIt) {
  const std::string blocks = TableBlocks({Block("db_other", {Row({"A", "=B1"})})});
  Put(planned, blocks);
  Put(actual, blocks);
  EXPECT_EQ(Document(rent), "");
  const std::string unchanged = TablesDocument({TableRecord(planned, blocks), TableRecord(actual, blocks)});
  EXPECT_EQ(Document(noAccounts), unchanged);
  EXPECT_EQ(Document(AccountAnswer("4", {fakes::SubAccount("2", "Gas", "1")})), unchanged);
}

TEST_F(AccountRowFailures, OccurForAMainBlockWithoutRowsOnlyWhenAnAccountNeedsIt) {
  const std::string blocks = TableBlocks({"<block id=\"db_income_range_cat3\"/>"});
  Put(planned, blocks);
  EXPECT_EQ(Document(rent), "");
  EXPECT_TRUE(fakes::Holds(Document(noAccounts), blocks));
}

TEST_F(AccountRowFailures, OccurForAPlannedTwinWithoutRows) {
  Put(planned, TableBlocks({Block("db_income_range_cat3", {Row({"A"})}),
                            "<block id=\"db_income_range_cat3_actual\"/>"}));
  EXPECT_EQ(Document(rent), "");
  EXPECT_NE(Document(noAccounts), "");
}

TEST_F(AccountRowFailures, OccurWhenARowWithoutCellsIsCompared) {
  Put(planned, TableBlocks({Block("db_income_range_cat3", {Row({"Rent"}), Row({}), Row({"C"})})}));
  EXPECT_NE(Document(rent), "") << "the search ends before that row";
  EXPECT_EQ(Document(AccountAnswer("4", {Account("1", "Phone")})), "");
}

TEST_F(AccountRowFailures, DoNotOccurForAnUnnamedCopyOfARowWithoutCells) {
  PutPlainPlanned();
  Put(actual, TableBlocks({Block("db_income_range_cat3_actual", {"<row/>", Row({"B"}), Row({"C"})})}));
  EXPECT_EQ(Document(rent),
            TablesDocument(
                {OneRentInPlanned(),
                 TableRecord(actual, TableBlocks({Block("db_income_range_cat3_actual",
                                                        {"<row/>", "<row/>", Row({"B"}), Row({"C"})})}))}));
}

TEST_F(AccountRowFailures, OccurForATopLevelAccountWithoutAName) {
  EXPECT_EQ(Document(AccountAnswer("4", {"<AccountRet><Sublevel>0</Sublevel></AccountRet>"})), "");
  EXPECT_NE(Document(AccountAnswer("4", {"<AccountRet><Sublevel>1</Sublevel></AccountRet>"})), "");
}

TEST_F(AccountRowFailures, LeaveTheComponentUsable) {
  host.journal->FailOccurrence("Serialize", 1, Error(-2147220991, "locked"));
  EXPECT_EQ(Document(rent), "");
  EXPECT_TRUE(fakes::Holds(Document(rent), "<c>Rent</c>"));
}

}  // namespace
}  // namespace krnqb
