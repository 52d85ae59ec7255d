#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "fakes/import_texts.h"
#include "fakes/recording_observer.h"
#include "import/lists/item_list.h"
#include "krnqb/error.h"

namespace krnqb {
namespace {

using fakes::AccountRef;
using fakes::Element;
using fakes::InventoryItem;
using fakes::Item;
using fakes::ItemAnswer;
using fakes::OneAccountItem;
using fakes::Reference;
using fakes::TwoAccountItem;

std::string Direct(std::string_view incomeId, std::string_view expenseId) {
  return Reference("IncomeAccountRef", incomeId) + Reference("ExpenseAccountRef", expenseId);
}

class ItemAccountTest : public testing::Test {
 protected:
  std::string IncomeSide(const std::string& items, std::string_view id = "IT-1") {
    return PostingText(IncomePosting(items, id));
  }
  std::string ExpenseSide(const std::string& items, std::string_view id = "IT-1") {
    return ItemList(XmlElement::Parse(ItemAnswer(items))).ExpenseAccount(id, observer);
  }
  SalePosting IncomePosting(const std::string& items, std::string_view id = "IT-1") {
    return ItemList(XmlElement::Parse(ItemAnswer(items))).IncomePosting(id, observer);
  }

  fakes::RecordingObserver observer;
};

TEST_F(ItemAccountTest, IsTheSameOnBothSidesForAnItemWithOneAccount) {
  EXPECT_EQ(IncomeSide(OneAccountItem("IT-1", "I-1")), "I-1");
  EXPECT_EQ(ExpenseSide(OneAccountItem("IT-1", "I-1")), "I-1");
}

TEST_F(ItemAccountTest, DependsOnTheSideForAnItemThatIsBoughtAndSold) {
  EXPECT_EQ(IncomeSide(TwoAccountItem("IT-1", "I-1", "E-1")), "I-1");
  EXPECT_EQ(ExpenseSide(TwoAccountItem("IT-1", "I-1", "E-1")), "E-1");
}

TEST_F(ItemAccountTest, DependsOnTheSideForReferencesDirectlyInTheRecord) {
  EXPECT_EQ(IncomeSide(Item("ItemInventoryRet", "IT-1", Direct("I-1", "E-1"))), "I-1");
  EXPECT_EQ(ExpenseSide(Item("ItemInventoryRet", "IT-1", Direct("I-1", "E-1"))), "E-1");
}

TEST_F(ItemAccountTest, IsEmptyOnTheExpenseSideOfAnInventoryItem) {
  EXPECT_EQ(ExpenseSide(InventoryItem("IT-1", "I-1", "C-1", "2.5")), "");
}

TEST_F(ItemAccountTest, IsTheFirstThatIsNotEmpty) {
  const std::string both = Element("SalesAndPurchase", Direct("I-1", "E-1"));
  const std::string emptyBoth = Element("SalesAndPurchase", Direct("", ""));
  const std::string one = Element("SalesOrPurchase", AccountRef("A-2"));
  const std::string emptyOne = Element("SalesOrPurchase", AccountRef(""));
  const std::string direct = Direct("I-3", "E-3");
  EXPECT_EQ(IncomeSide(Item("ItemServiceRet", "IT-1", direct + one + both)), "I-1");
  EXPECT_EQ(ExpenseSide(Item("ItemServiceRet", "IT-1", direct + one + both)), "E-1");
  EXPECT_EQ(IncomeSide(Item("ItemServiceRet", "IT-1", emptyBoth + direct + one)), "A-2");
  EXPECT_EQ(ExpenseSide(Item("ItemServiceRet", "IT-1", direct + one)), "A-2");
  EXPECT_EQ(IncomeSide(Item("ItemServiceRet", "IT-1", emptyBoth + emptyOne + direct)), "I-3");
  EXPECT_EQ(ExpenseSide(Item("ItemServiceRet", "IT-1", emptyBoth + emptyOne + direct)), "E-3");
}

TEST_F(ItemAccountTest, IsTheFirstMatchOverAllStepsOfAPath) {
  const std::string noAccount = Element("SalesOrPurchase", Element("Price", "1"));
  const std::string emptyRef = Element("SalesOrPurchase", Element("AccountRef", ""));
  const std::string account = Element("SalesOrPurchase", AccountRef("I-1"));
  const std::string other = Element("SalesOrPurchase", AccountRef("I-2"));
  EXPECT_EQ(IncomeSide(Item("ItemServiceRet", "IT-1", noAccount + emptyRef + account + other)), "I-1");
  EXPECT_EQ(ExpenseSide(Item("ItemServiceRet", "IT-1", noAccount + account)), "I-1");
  EXPECT_EQ(IncomeSide(Item("ItemNonInventoryRet", "IT-1",
                            Element("SalesAndPurchase", Reference("ExpenseAccountRef", "E-1")) +
                                Element("SalesAndPurchase", Element("IncomeAccountRef", "")) +
                                Element("SalesAndPurchase", Reference("IncomeAccountRef", "I-1")))),
            "I-1");
  EXPECT_EQ(IncomeSide(Item("ItemServiceRet", "IT-1",
                            Element("IncomeAccountRef", "") + Reference("IncomeAccountRef", "I-1"))),
            "I-1");
}

TEST_F(ItemAccountTest, UsesTheFirstCostAccountThatHasAnId) {
  EXPECT_EQ(IncomeSide(Item("ItemInventoryRet", "IT-1",
                            Reference("IncomeAccountRef", "I-1") + Element("COGSAccountRef", "") +
                                Reference("COGSAccountRef", "C-1") + Element("AverageCost", "2"))),
            CostOfGoodsMarker({"C-1", "I-1", "2"}));
}

TEST_F(ItemAccountTest, IgnoresElementsInANamespace) {
  EXPECT_EQ(IncomeSide("<Note><ListID xmlns=\"urn:x\">IT-1</ListID></Note>" + OneAccountItem("IT-1", "I-1")),
            "I-1");
  EXPECT_EQ(IncomeSide(Item("ItemServiceRet", "IT-1",
                            "<SalesOrPurchase xmlns=\"urn:x\">" + AccountRef("I-2") + "</SalesOrPurchase>" +
                                Element("SalesOrPurchase", AccountRef("I-1")))),
            "I-1");
}

TEST_F(ItemAccountTest, IsEmptyForAnItemWithoutAccounts) {
  EXPECT_EQ(IncomeSide(Item("ItemGroupRet", "IT-1", Element("Name", "Garden set"))), "");
  EXPECT_EQ(ExpenseSide(Item("ItemGroupRet", "IT-1", "")), "");
}

TEST_F(ItemAccountTest, IsEmptyForAnUnlistedItem) {
  EXPECT_EQ(IncomeSide(OneAccountItem("IT-1", "I-1"), "IT-2"), "");
  EXPECT_EQ(IncomeSide(OneAccountItem("IT-1", "I-1"), "it-1"), "") << "ids are compared exactly";
  EXPECT_EQ(IncomeSide(OneAccountItem(" IT-1", "I-1")), "");
  EXPECT_EQ(IncomeSide("", ""), "");
}

TEST_F(ItemAccountTest, IsEmptyWithoutAList) {
  EXPECT_EQ(ItemList().IncomePosting("IT-1", observer), SalePosting());
  EXPECT_EQ(ItemList().ExpenseAccount("IT-1", observer), "");
}

TEST_F(ItemAccountTest, IsACostOfSaleOnTheIncomeSideOfAnInventoryItem) {
  EXPECT_EQ(IncomePosting(InventoryItem("IT-1", "I-1", "C-1", "2.50")),
            SalePosting(CostOfSale{.costAccount = "C-1", .incomeAccount = "I-1", .averageCost = "2.50"}));
}

TEST_F(ItemAccountTest, KeepsTheTextOfTheAverageCost) {
  EXPECT_EQ(IncomePosting(InventoryItem("IT-1", "I-1", "C-1", " 2,50 each ")),
            SalePosting(CostOfSale{"C-1", "I-1", " 2,50 each "}));
}

TEST_F(ItemAccountTest, IsAMarkerIfAPartDoesNotReadBackUnchanged) {
  EXPECT_EQ(IncomePosting(InventoryItem("IT-1", "I&amp;1", "C-1", "&lt;2&quot;")),
            SalePosting("<COGS  cogsid=\"C-1\" workid=\"I&1\" averagecost=\"<2\"\"/>"));
}

TEST_F(ItemAccountTest, IsKeptIfItBeginsAsAMarker) {
  EXPECT_EQ(IncomePosting(OneAccountItem("IT-1", "&lt;COGS x")), SalePosting("<COGS x"));
  EXPECT_EQ(ExpenseSide(OneAccountItem("IT-1", "&lt;COGS x")), "<COGS x");
}

TEST_F(ItemAccountTest, IsACostOfSaleForAnyItemWithCostAccountAndAverageCost) {
  const std::string cost = Reference("COGSAccountRef", "C-1") + Element("AverageCost", "1");
  EXPECT_EQ(
      IncomePosting(Item("ItemServiceRet", "IT-1", Element("SalesOrPurchase", AccountRef("I-1")) + cost)),
      SalePosting(CostOfSale{"C-1", "I-1", "1"}));
  EXPECT_EQ(ExpenseSide(Item("ItemServiceRet", "IT-1", Element("SalesOrPurchase", AccountRef("I-1")) + cost)),
            "I-1");
}

TEST_F(ItemAccountTest, IsTheIncomeAccountWithoutAverageCostOrCostAccount) {
  const std::string income = Reference("IncomeAccountRef", "I-1");
  const std::string costAccount = Reference("COGSAccountRef", "C-1");
  const std::string averageCost = Element("AverageCost", "2.5");
  for (const std::string& fields :
       {income, income + costAccount, income + averageCost, income + costAccount + Element("AverageCost", ""),
        income + Reference("COGSAccountRef", "") + averageCost,
        income + Element("COGSAccountRef", "") + averageCost}) {
    EXPECT_EQ(IncomeSide(Item("ItemInventoryRet", "IT-1", fields)), "I-1") << fields;
  }
  EXPECT_EQ(IncomeSide(Item("ItemInventoryRet", "IT-1", costAccount + averageCost)), "")
      << "an item without an income account has no marker";
}

TEST_F(ItemAccountTest, UsesTheFirstElementWithTheIdAtAnyDepth) {
  const std::string item = OneAccountItem("IT-1", "I-1");
  EXPECT_EQ(IncomeSide(Item("ItemServiceRet", "IT-2", Reference("ParentRef", "IT-1")) + item), "")
      << "a sub-item that comes before its parent";
  EXPECT_EQ(IncomeSide(item + Item("ItemServiceRet", "IT-2", Reference("ParentRef", "IT-1"))), "I-1");
  EXPECT_EQ(IncomeSide(item + OneAccountItem("IT-1", "I-2")), "I-1");
}

TEST_F(ItemAccountTest, UsesThePathForAnIdWithADoubleQuote) {
  EXPECT_EQ(IncomeSide(OneAccountItem("IT-1", "I-1"), "x\" or \"1\" = \"1"), "I-1");
  EXPECT_TRUE(observer.notices.empty());
  EXPECT_EQ(IncomeSide(OneAccountItem("a\"b", "I-1"), "a\"b"), "") << "the path is malformed";
  ASSERT_EQ(observer.notices.size(), 1U);
  EXPECT_EQ(observer.notices[0].number, error_number::unspecified);
}

TEST_F(ItemAccountTest, IsTheSameOnRepeatedCalls) {
  const ItemList list(XmlElement::Parse(
      ItemAnswer(TwoAccountItem("IT-1", "I-1", "E-1") + TwoAccountItem("IT-2", "I-2", "E-2"))));
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(PostingText(list.IncomePosting("IT-1", observer)), "I-1");
    EXPECT_EQ(list.ExpenseAccount("IT-1", observer), "E-1");
    EXPECT_EQ(list.ExpenseAccount("IT-2", observer), "E-2");
    EXPECT_EQ(PostingText(list.IncomePosting("IT-2", observer)), "I-2");
  }
}

TEST_F(ItemAccountTest, IsReportedAsAnErrorWithoutAList) {
  EXPECT_EQ(ItemList().ExpenseAccount("IT-1", observer), "");
  EXPECT_TRUE(observer.Reported(NoticeKind::StatementSkipped, error_number::objectNotSet));
}

}  // namespace
}  // namespace krnqb
