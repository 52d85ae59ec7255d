#include "cli/company/account_tree.h"

#include <gtest/gtest.h>

#include "limited_child.h"
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
  std::size_t open = 0;
  for (const AccountNode& account : accounts) {
    for (; open > account.level; --open) text += ")";
    text += account.name + "(";
    ++open;
  }
  return text + std::string(open, ')');
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

TEST(AccountTreeText, ShortensANameThatWouldFillTheScreen) {
  std::string name;
  for (int count = 0; count < 150'000; ++count) name += "é";
  std::string shown;
  for (int count = 0; count < 97; ++count) shown += "é";
  const std::string text = AccountTreeText(Tree(Account("1", name, "") + Account("2", "Fuel", "1")));
  EXPECT_NE(text.find('\n' + shown + "...  Expense     1.50              22.00\n"), std::string::npos)
      << text.substr(0, 1000);
  EXPECT_LT(text.size(), 1000U);
}

TEST(AccountTreeText, ShowsANameOfAHundredCharactersInFull) {
  const std::string name(100, 'n');
  EXPECT_NE(AccountTreeText(Tree(Account("1", name, ""))).find('\n' + name + "  Expense"), std::string::npos);
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

std::string Chain(int depth) {
  std::string accounts;
  for (int level = 0; level < depth; ++level) {
    accounts += Account(std::to_string(level), "N" + std::to_string(level),
                        level == 0 ? std::string() : std::to_string(level - 1));
  }
  return accounts;
}

TEST(AccountTree, OfTwentyThousandLevelsIsWalkedWithoutTheStack) {
  const std::string accounts = Chain(20'000);
  EXPECT_TRUE(tests::StaysWithinLimits(accounts.size(), [&] {
    const std::string text = AccountTreeText(Tree(accounts));
    return std::count(text.begin(), text.end(), '\n') == 20'001 && text.find("N19999 ") != std::string::npos;
  }));
}

TEST(AccountTree, WithTheDeepestAccountFirstIsFoundInTime) {
  std::string accounts;
  for (int level = 20'000; level > 0; --level) {
    accounts += Account(std::to_string(level), "N", std::to_string(level - 1));
  }
  EXPECT_TRUE(
      tests::StaysWithinLimits(accounts.size(), [&] { return !AccountTreeText(Tree(accounts)).empty(); }));
}

TEST(AccountTreeText, WithAnEndlessNameDoesNotPadEveryLine) {
  std::string accounts = Account("0", std::string(300'000, 'x'), "");
  for (int index = 1; index < 2'000; ++index) accounts += Account(std::to_string(index), "Rent", "");
  EXPECT_TRUE(tests::StaysWithinLimits(
      accounts.size(), [&] { return AccountTreeText(Tree(accounts)).size() < 2 * accounts.size(); }));
}

}  // namespace
}  // namespace krnqb::cli
