#include <gtest/gtest.h>

#include "expected_sequences.h"
#include "fakes/test_host.h"

// The selection of expense accounts as the component builds it from the company and the plan.

namespace krnqb {
namespace {

using fakes::Account;
using fakes::AccountAnswer;
using fakes::Block;
using fakes::Row;
using fakes::TableBlocks;
using fakes::TableId;
using fakes::TableText;
using fakes::TestHost;

class SelectionBuilding : public testing::Test {
 protected:
  SelectionBuilding() { host.component.KRNProduct(QBKRN_BRI); }

  void PutRows(const std::string& rows) {
    host.planContent->tables[marginTable] =
        TableText(marginTable, TableBlocks({Block("db_contributionmargin_cat2", {rows})}));
  }
  /// Returns an account's "selected" attribute, or a note that the account has no record.
  std::string SelectedFor(const std::string& name) {
    host.quickBooks->answers["4"] = AccountAnswer("4", {Account("E-1", name)});
    host.component.SelectedExpenses(Variant(ObjectReference()));  // discards the current one
    const XmlElement selection = host.component.SelectedExpenses();
    return selection.FirstChild().Attribute("selected").value_or("no record");
  }

  TestHost host;
  const std::string marginTable = TableId("20", "2000");
};

TEST_F(SelectionBuilding, ListsTheTopLevelAccountsInResponseOrder) {
  PutRows(Row({"RENT", "5"}) + Row({"Wages"}));
  const XmlElement selection = host.component.SelectedExpenses();
  ASSERT_TRUE(selection);
  EXPECT_EQ(selection.Xml(),
            "<expenseAccounts>\n"
            "<account id=\"E-1\" selected=\"True\"><name><![CDATA[Rent]]></name></account>\n"
            "<account id=\"E-2\" "
            "selected=\"False\"><name><![CDATA[Utilities]]></name></account></expenseAccounts>");
}

TEST_F(SelectionBuilding, ReadsThePlanBeforeQuickBooks) {
  host.component.SelectedExpenses();
  EXPECT_EQ(host.journal->Text(), expected::Sequence({expected::ReadsTable("20..2000"),
                                                      expected::OpensSession(), "ProcessRequest 4\n"}));
}

TEST_F(SelectionBuilding, HappensOnceAndReturnsTheSameElementAfterwards) {
  const XmlElement first = host.component.SelectedExpenses();
  host.journal->Clear();
  EXPECT_TRUE(host.component.SelectedExpenses() == first);
  EXPECT_EQ(host.journal->Text(), "");
}

TEST_F(SelectionBuilding, HappensAgainAfterTheHostClearedIt) {
  const XmlElement first = host.component.SelectedExpenses();
  host.component.SelectedExpenses(Variant());
  host.journal->Clear();
  const XmlElement second = host.component.SelectedExpenses();
  EXPECT_FALSE(second == first);
  EXPECT_EQ(second.Xml(), first.Xml());
  EXPECT_EQ(host.journal->Text(), expected::ReadsTable("20..2000") + expected::Asks("4"));
}

TEST_F(SelectionBuilding, ComparesTheFirstTextOfACell) {
  PutRows(Row({"Rent<!-- monthly -->al", "Util<b>i</b>ties", "<b>x</b>Fuel"}));
  EXPECT_EQ(SelectedFor("Rent"), "True");
  EXPECT_EQ(SelectedFor("Rental"), "False");
  EXPECT_EQ(SelectedFor("Util"), "True");
  EXPECT_EQ(SelectedFor("Utilities"), "False");
  EXPECT_EQ(SelectedFor("Fuel"), "True");
}

TEST_F(SelectionBuilding, IsEmptyForACompanyWithoutExpenses) {
  host.quickBooks->answers["4"] = AccountAnswer("4", {});
  EXPECT_EQ(host.component.SelectedExpenses().Xml(), "<expenseAccounts/>");
}

TEST_F(SelectionBuilding, NeverHappensForOtherProducts) {
  for (const std::int32_t product : {0, 1, 3, 4}) {
    host.component.KRNProduct(static_cast<QBKRNproduct>(product));
    EXPECT_FALSE(host.component.SelectedExpenses()) << product;
  }
  EXPECT_EQ(host.journal->Text(), "");
  host.component.KRNProduct(QBKRN_BRI);
  EXPECT_TRUE(host.component.SelectedExpenses()) << "calls do not rebuild it";
}

struct MatchCase {
  const char* cell;
  const char* account;
  const char* selected;
};

TEST_F(SelectionBuilding, SelectsAccountsThatThePlanContains) {
  const MatchCase cases[] = {{"Rent", "Rent", "True"},
                             {"RENT", "Rent", "True"},
                             {"rent", "RENT", "True"},
                             {"Rent ", "Rent", "False"},
                             {" Rent", "Rent", "False"},
                             {"Rental", "Rent", "False"},
                             {"Rent", "Rent ", "False"},
                             {"Caf\xC3\xA9", "Caf\xC3\xA9", "True"},
                             {"CAF\xC3\xA9", "caf\xC3\xA9", "True"},
                             {"CAF\xC3\x89", "Caf\xC3\xA9", "False"},
                             {"caf\xC3\xA9", "CAF\xC3\x89", "False"},
                             {"Meals &amp; Fun", "MEALS &amp; FUN", "True"},
                             {"O'Neill", "o'neill", "True"},
                             {"*null*", "*NULL*", "True"},
                             {"1200", "1200", "True"},
                             {"<![CDATA[Rent]]>", "Rent", "True"}};
  for (const MatchCase& each : cases) {
    PutRows(Row({each.cell}));
    EXPECT_EQ(SelectedFor(each.account), each.selected) << each.cell << " and " << each.account;
  }
}

TEST_F(SelectionBuilding, SearchesEveryCellOfEveryBlock) {
  host.planContent->tables[marginTable] =
      TableText(marginTable, TableBlocks({Block("db_contributionmargin_cat2", {Row({"A", "Rent"})}),
                                          Block("db_other", {Row({"B"}), Row({"C", "1", "Phone"})})}));
  EXPECT_EQ(SelectedFor("Rent"), "True");
  EXPECT_EQ(SelectedFor("Phone"), "True");
  EXPECT_EQ(SelectedFor("Gas"), "False");
}

TEST_F(SelectionBuilding, WritesNameAndIdUnescaped) {
  host.quickBooks->answers["4"] = AccountAnswer("4", {Account("8000-1", "Meals &amp; &lt;Fun&gt; \xC3\xA9")});
  EXPECT_EQ(
      host.component.SelectedExpenses().Xml(),
      "<expenseAccounts>\n<account id=\"8000-1\" selected=\"False\"><name><![CDATA[Meals & <Fun> \xC3\xA9]]>"
      "</name></account></expenseAccounts>");
}

TEST_F(SelectionBuilding, IsNothingWhenANameOrIdBreaksTheDocument) {
  const std::string records[] = {Account("1", "The \"Shop\""), Account("1", "a ]]&gt; b"),
                                 Account("1&amp;2", "Rent"), Account("1&lt;2", "Rent"),
                                 Account("1\"2", "Rent")};
  for (const std::string& record : records) {
    host.quickBooks->answers["4"] = AccountAnswer("4", {record});
    EXPECT_FALSE(host.component.SelectedExpenses()) << record;
  }
  EXPECT_EQ(host.component.ErrorNumber(), 0);
}

TEST_F(SelectionBuilding, IsNothingForATopLevelAccountWithoutANameOrId) {
  for (const char* record : {"<AccountRet><ListID>1</ListID><Sublevel>0</Sublevel></AccountRet>",
                             "<AccountRet><Name>Rent</Name><Sublevel>0</Sublevel></AccountRet>"}) {
    host.quickBooks->answers["4"] = AccountAnswer("4", {record});
    EXPECT_FALSE(host.component.SelectedExpenses()) << record;
  }
}

TEST_F(SelectionBuilding, IsNothingWithoutThePlansTable) {
  host.planContent->tables[marginTable] = "<tableitem/>";
  EXPECT_FALSE(host.component.SelectedExpenses());
  EXPECT_EQ(host.journal->Text(), expected::ReadsTable("20..2000")) << "QuickBooks is not asked then";
  host.planContent->tables.erase(marginTable);
  EXPECT_FALSE(host.component.SelectedExpenses());
  host.component.KRNPlanData(Variant(std::shared_ptr<PlanObject>()));
  EXPECT_FALSE(host.component.SelectedExpenses());
  EXPECT_EQ(host.component.ErrorNumber(), 0);
}

TEST_F(SelectionBuilding, IsNothingWithoutAResponse) {
  host.journal->Fail("BeginSession \"\" 2", Error(-2147220458, "x"));
  EXPECT_FALSE(host.component.SelectedExpenses());
  EXPECT_EQ(host.component.ErrorNumber(), -2147220458) << "reported by opening the session";
  host.journal->Heal();
  host.component.ErrorNumber(0);
  host.quickBooks->answers["4"] = "no XML";
  EXPECT_FALSE(host.component.SelectedExpenses());
  host.journal->Fail("ProcessRequest 4", Error(-2147220478, "unexpected"));
  EXPECT_FALSE(host.component.SelectedExpenses());
  EXPECT_EQ(host.component.ErrorNumber(), 0);
  host.journal->Heal();
  host.quickBooks->answers["4"] = AccountAnswer("4", {Account("1", "Rent")});
  EXPECT_TRUE(host.component.SelectedExpenses()) << "each call tries again";
}

TEST_F(SelectionBuilding, IsNothingTheFirstTimeWhenTheCompanyCheckFails) {
  host.quickBooks->answers["101"] = fakes::NoCompanyAnswer();
  EXPECT_FALSE(host.component.SelectedExpenses());
  EXPECT_TRUE(host.component.SelectedExpenses()) << "the session is open by then";
}

}  // namespace
}  // namespace krnqb
