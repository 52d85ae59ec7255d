#include "cli/company/account_tree.h"

#include <gtest/gtest.h>

namespace krnqb::cli {
namespace {

std::string Account(const std::string& id, const std::string& name, const std::string& parent) {
  const std::string parentRef =
      parent.empty() ? "" : "<ParentRef><ListID>" + parent + "</ListID></ParentRef>";
  return "<AccountRet><ListID>" + id + "</ListID><Name>" + name + "</Name>" + parentRef +
         "<AccountType>Expense</AccountType><Balance>1.50</Balance><TotalBalance>22.00</TotalBalance></"
         "AccountRet>";
}

std::vector<AccountNode> Tree(const std::string& accounts) {
  return AccountTree(XmlElement::Parse("<QBXML>" + accounts + "</QBXML>"));
}

std::string Outline(const std::vector<AccountNode>& accounts) {
  std::string text;
  for (const AccountNode& account : accounts) text += account.name + "(" + Outline(account.subAccounts) + ")";
  return text;
}

TEST(AccountTree, PutsSubAccountsBelowTheirParents) {
  EXPECT_EQ(Outline(Tree(Account("1", "A", "") + Account("2", "B", "1") + Account("3", "C", "2") +
                         Account("4", "D", "1") + Account("5", "E", ""))),
            "A(B(C())D())E()");
}

TEST(AccountTree, FindsAParentLaterInTheList) {
  EXPECT_EQ(Outline(Tree(Account("2", "B", "1") + Account("1", "A", ""))), "A(B())");
}

TEST(AccountTree, PutsAnAccountWhoseParentIsMissingAtTheTop) {
  EXPECT_EQ(Outline(Tree(Account("2", "B", "1") + Account("3", "C", "2"))), "B(C())");
}

TEST(AccountTree, KeepsEveryAccountOfACycle) {
  EXPECT_EQ(Outline(Tree(Account("1", "A", "2") + Account("2", "B", "1") + Account("3", "C", "3"))),
            "B(A())C()");
}

TEST(AccountTree, IsEmptyWithoutAccounts) {
  EXPECT_EQ(Outline(Tree("")), "");
}

TEST(AccountTreeText, IndentsNamesAndAlignsBalances) {
  EXPECT_EQ(AccountTreeText(Tree(Account("1", "Automobile", "") + Account("2", "Fuel", "1"))),
            "Account     Type     Balance  With sub-accounts\n"
            "Automobile  Expense     1.50              22.00\n"
            "  Fuel      Expense     1.50              22.00\n");
}

TEST(AccountTreeText, ShowsTheSelectionIfThereIsOne) {
  std::vector<AccountNode> accounts = Tree(Account("1", "Rent", "") + Account("2", "Fuel", ""));
  accounts[0].selected = true;
  accounts[1].selected = false;
  EXPECT_EQ(AccountTreeText(accounts),
            "Account  Type     Balance  With sub-accounts  In the plan\n"
            "Rent     Expense     1.50              22.00  selected\n"
            "Fuel     Expense     1.50              22.00\n");
}

}  // namespace
}  // namespace krnqb::cli
