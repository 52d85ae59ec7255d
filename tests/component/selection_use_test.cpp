#include <gtest/gtest.h>

#include "expected_sequences.h"
#include "fakes/outside_element.h"
#include "fakes/test_host.h"

// The contribution margin gets rows for the selected expense accounts.

namespace krnqb {
namespace {

using fakes::Account;
using fakes::AccountAnswer;
using fakes::Block;
using fakes::Row;
using fakes::SelectionText;
using fakes::SubAccount;
using fakes::TableBlocks;
using fakes::TableId;
using fakes::TableRecord;
using fakes::TablesDocument;
using fakes::TestHost;
using fakes::TextOf;

class SelectionUse : public testing::Test {
 protected:
  SelectionUse() { host.component.KRNProduct(QBKRN_BRI); }

  void Select(const std::string& selection) {
    host.component.SelectedExpenses(Variant(XmlElement::Parse(selection)));
  }
  std::string Document(const std::string& answer) {
    return TextOf(host.component.KRNDeserialize(Variant(answer)));
  }
  std::string DefaultDocument() { return Document(host.quickBooks->answers["4"]); }
  static bool HasRow(const std::string& document, const std::string& name) {
    return fakes::Holds(document, Row({name, "0", "*null*"}));
  }

  TestHost host;
  const std::string planned = TableId("20", "2000");
  const std::string actual = TableId("21", "2000");
};

TEST_F(SelectionUse, AddsTheSelectedAccountsToTheContributionMarginAndItsTwin) {
  Select(SelectionText({{"E-1", "False"}, {"E-2", "True"}}));
  EXPECT_EQ(
      DefaultDocument(),
      TablesDocument(
          {TableRecord(planned,
                       TableBlocks({Block("db_contributionmargin_cat2",
                                          {Row({"Wages", "0.1", "*null*"}), Row({"Utilities", "0", "*null*"}),
                                           Row({"Other", "0", "0"}), Row({"Total", "0", "0"})})})),
           TableRecord(actual, TableBlocks({Block("db_contributionmargin_cat2_actual",
                                                  {Row({"Wages", "5"}), Row({"*null*", "0"}),
                                                   Row({"Other", "0"}), Row({"Total", "0"})})}))}));
  EXPECT_EQ(host.journal->Text(), expected::ReadsTables("20..2000", "21..2000"))
      << "the selection is not built and nothing is sent to QuickBooks";
}

TEST_F(SelectionUse, KeepsAnAccountWithoutARecord) {
  Select(SelectionText({{"E-2", "False"}}));
  EXPECT_TRUE(HasRow(DefaultDocument(), "Rent"));
  Select("<expenseAccounts/>");
  const std::string document = DefaultDocument();
  EXPECT_TRUE(HasRow(document, "Rent"));
  EXPECT_TRUE(HasRow(document, "Utilities"));
}

TEST_F(SelectionUse, NeverAddsASubAccount) {
  const std::string answer = AccountAnswer(
      "4", {Account("1", "Utilities"), SubAccount("2", "Gas", "1"), SubAccount("3", "Oil", "2", "2")});
  Select(SelectionText({{"1", "False"}, {"2", "True"}, {"3", "True"}}));
  const std::string document = Document(answer);
  for (const char* name : {"Utilities", "Gas", "Oil"}) EXPECT_FALSE(HasRow(document, name)) << name;
  EXPECT_TRUE(fakes::Holds(document, "=B2")) << "without a new row no formula is cleared";
  Select(SelectionText({{"1", "True"}, {"2", "True"}, {"3", "True"}}));
  EXPECT_TRUE(HasRow(Document(answer), "Utilities"));
  EXPECT_FALSE(HasRow(Document(answer), "Gas"));
}

struct TruthCase {
  const char* text;
  bool selected;
};

TEST_F(SelectionUse, ReadsSelectedAsABooleanOrANumber) {
  const TruthCase cases[] = {{"True", true},   {"true", true},   {"TRUE", true},   {"tRuE", true},
                             {"False", false}, {"FALSE", false}, {"fAlSe", false}, {"0", false},
                             {"0.0", false},   {"1", true},      {"-1", true},     {"2.5", true},
                             {"1E3", true},    {"0.0001", true}};
  for (const TruthCase& each : cases) {
    Select(SelectionText({{"E-1", each.text}}));
    EXPECT_EQ(HasRow(DefaultDocument(), "Rent"), each.selected) << each.text;
  }
}

TEST_F(SelectionUse, ReturnsNothingForAnyOtherTextOfSelected) {
  for (const char* text : {"", "yes", "no", "Wahr", "T", "1x"}) {
    Select(SelectionText({{"E-1", text}}));
    host.observer->notices.clear();
    EXPECT_EQ(DefaultDocument(), "") << text;
    EXPECT_TRUE(host.observer->Reported(NoticeKind::OperationEnded, 13)) << text;
  }
  EXPECT_EQ(host.journal->Text(), "") << "no table was read";
}

TEST_F(SelectionUse, EndsWithNothingForARecordWithoutSelected) {
  Select("<expenseAccounts><account id=\"E-1\"/></expenseAccounts>");
  EXPECT_EQ(DefaultDocument(), "");
  EXPECT_TRUE(host.observer->Reported(NoticeKind::OperationEnded, 13));
  EXPECT_EQ(host.journal->Text(), "") << "no table was read";
}

TEST_F(SelectionUse, RemovesTheFirstOfSeveralAccountsWithTheSameId) {
  for (const int count : {2, 3, 10, 21, 50}) {
    std::string accounts;
    for (int i = 1; i <= count; ++i) accounts += Account("E-1", "Name " + std::to_string(i));
    Select(SelectionText({{"E-1", "False"}}));
    const std::string document = Document(AccountAnswer("4", {accounts}));
    EXPECT_FALSE(HasRow(document, "Name 1")) << count;
    for (int i = 2; i <= count; ++i) EXPECT_TRUE(HasRow(document, "Name " + std::to_string(i))) << count;
  }
}

TEST_F(SelectionUse, RemovesAnotherAccountForEachRecordOfTheSameId) {
  Select(SelectionText({{"E-1", "False"}, {"E-1", "True"}, {"E-1", "False"}}));
  const std::string document =
      Document(AccountAnswer("4", {Account("E-1", "First"), Account("E-2", "Fuel"), Account("E-1", "Second"),
                                   Account("E-1", "Third")}));
  EXPECT_FALSE(HasRow(document, "First"));
  EXPECT_FALSE(HasRow(document, "Second"));
  EXPECT_TRUE(HasRow(document, "Third"));
  EXPECT_TRUE(HasRow(document, "Fuel"));
}

TEST_F(SelectionUse, MatchesAnAccountByAnyOfItsIds) {
  const std::string twice =
      "<AccountRet><ListID>A</ListID><ListID>B</ListID><ListID>B</ListID>"
      "<Name>Two ids</Name><Sublevel>0</Sublevel></AccountRet>";
  const std::string answer = AccountAnswer("4", {twice, Account("B", "Next"), Account("A", "Last")});
  Select(SelectionText({{"B", "False"}}));
  const std::string document = Document(answer);
  EXPECT_FALSE(HasRow(document, "Two ids"));
  EXPECT_TRUE(HasRow(document, "Next"));
  EXPECT_TRUE(HasRow(document, "Last"));
  Select(SelectionText({{"A", "False"}, {"B", "False"}}));
  const std::string both = Document(answer);
  EXPECT_FALSE(HasRow(both, "Two ids"));
  EXPECT_FALSE(HasRow(both, "Next"));
  EXPECT_TRUE(HasRow(both, "Last"));
}

TEST_F(SelectionUse, RemovesOnlyAccountsByTheirId) {
  const auto record = [](const std::string& name, const std::string& attributes, const std::string& of) {
    return "<" + name + attributes + "><ListID>E-1</ListID><Name>" + of + "</Name><Sublevel>0</Sublevel></" +
           name + ">";
  };
  Select(SelectionText({{"E-1", "False"}}));
  const std::string foreignId =
      "<AccountRet><ListID xmlns=\"urn:x\">E-1</ListID><Name>Foreign "
      "id</Name><Sublevel>0</Sublevel></AccountRet>";
  const std::string document = Document(AccountAnswer(
      "4", {record("Other", "", "Not an account"), foreignId, record("AccountRet", "", "Account")}));
  EXPECT_TRUE(HasRow(document, "Not an account"));
  EXPECT_TRUE(HasRow(document, "Foreign id"));
  EXPECT_FALSE(HasRow(document, "Account"));
}

TEST_F(SelectionUse, ReadsAnOutsideElementWithinALargerDocument) {
  const auto outside = std::make_shared<fakes::OutsideElement>("<not read/>");
  outside->documentText =
      "<page><choices/>" + SelectionText({{"E-1", "True"}, {"E-2", "False"}}) + "<choices/></page>";
  outside->path = {1};
  host.component.SelectedExpenses(Variant(XmlElement(outside)));
  const std::string document = DefaultDocument();
  EXPECT_TRUE(HasRow(document, "Rent"));
  EXPECT_FALSE(HasRow(document, "Utilities"));
}

TEST_F(SelectionUse, ReturnsNothingWithoutASelection) {
  EXPECT_EQ(DefaultDocument(), "");
  EXPECT_EQ(host.journal->Text(), "");
}

TEST_F(SelectionUse, ReturnsNothingForAnUnselectedIdWithADoubleQuote) {
  Select(SelectionText({{"E&quot;1", "False"}}));
  EXPECT_EQ(DefaultDocument(), "");
  EXPECT_TRUE(host.observer->Reported(NoticeKind::OperationEnded, -2147467259));
  Select(SelectionText({{"E&quot;1", "True"}}));
  EXPECT_TRUE(HasRow(DefaultDocument(), "Rent")) << "a selected account is not searched for";
}

TEST_F(SelectionUse, AppliesToTheContributionMarginOnly) {
  Select(SelectionText({{"I-1", "False"}}));
  EXPECT_TRUE(HasRow(Document(host.quickBooks->answers["1"]), "Plants"));
  for (const QBKRNproduct product : {QBKRN_ALD, QBKRN_COR}) {
    host.component.KRNProduct(product);
    Select(SelectionText({{"E-1", "False"}, {"E-2", "nonsense"}}));
    EXPECT_TRUE(HasRow(DefaultDocument(), "Rent"));
  }
}

TEST_F(SelectionUse, LeavesTheAccountListUnchanged) {
  Select(SelectionText({{"E-1", "False"}, {"E-2", "False"}}));
  const XmlElement list = XmlElement::Parse(host.quickBooks->answers["4"]);
  const std::string before = list.Xml();
  host.component.KRNDeserialize(Variant(list));
  EXPECT_EQ(list.Xml(), before);
}

TEST_F(SelectionUse, ReadsTheCurrentTextOfAnOutsideElement) {
  const auto outside = std::make_shared<fakes::OutsideElement>(SelectionText({{"E-1", "False"}}));
  host.component.SelectedExpenses(Variant(XmlElement(outside)));
  EXPECT_FALSE(HasRow(DefaultDocument(), "Rent"));
  outside->text = SelectionText({{"E-1", "True"}});
  EXPECT_TRUE(HasRow(DefaultDocument(), "Rent"));
  outside->text = "no XML any more";
  EXPECT_EQ(DefaultDocument(), "");
  host.component.SelectedExpenses(Variant(XmlElement(std::make_shared<fakes::BrokenOutsideElement>())));
  EXPECT_EQ(DefaultDocument(), "");
}

TEST_F(SelectionUse, UsesTheSelectionThatTheComponentBuilt) {
  host.planContent->tables[planned] = fakes::TableText(
      planned, TableBlocks({Block(
                   "db_contributionmargin_cat2",
                   {Row({"Wages", "0.1", "=B2"}), Row({"UTILITIES", "0", "0"}), Row({"Total", "0", "0"})})}));
  host.component.SelectedExpenses();
  const std::string document = DefaultDocument();
  EXPECT_FALSE(HasRow(document, "Rent"));
  EXPECT_TRUE(HasRow(document, "Utilities")) << "the plan has the name in different case, so a row is added";
}

}  // namespace
}  // namespace krnqb
