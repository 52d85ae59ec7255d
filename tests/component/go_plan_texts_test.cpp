#include <gtest/gtest.h>

#include "fakes/test_host.h"

// The texts that an import loads into the plan.

namespace krnqb {
namespace {

using fakes::Block;
using fakes::Holds;
using fakes::Row;
using fakes::TableId;
using fakes::TestHost;

const std::string expenses = TableId("20", "0600");
const std::string actualExpenses = TableId("21", "0600");

// A table whose root declares a prefix that a cell of its blocks uses.
std::string TableWithPrefix(const std::string& id, const std::string& block) {
  return "<tableitem xmlns:dt=\"urn:types\" id=\"" + id + "\"><tableblocks>" + block +
         "</tableblocks></tableitem>";
}

std::string ExpenseBlock(const std::string& id) {
  const std::string wages =
      "<row><c dt:type=\"text\">Wages</c>" + fakes::Cell("1") + fakes::Cell("2") + "</row>";
  return Block(id, {wages, Row({"Depreciation", "0", "0"}), Row({"Total", "0", "0"})});
}

std::size_t NoticesOf(const TestHost& host, NoticeKind kind) {
  std::size_t count = 0;
  for (const Notice& notice : host.observer->notices) count += notice.kind == kind ? 1 : 0;
  return count;
}

class GoPlanTexts : public testing::Test {
 protected:
  GoPlanTexts() { host.component.IncludeExpenseAccounts(true); }

  void UsePrefixes() {
    host.planContent->tables[expenses] = TableWithPrefix(expenses, ExpenseBlock("db_income_range_cat3"));
    host.planContent->tables[actualExpenses] =
        TableWithPrefix(actualExpenses, ExpenseBlock("db_income_range_cat3_actual"));
  }

  TestHost host;
};

TEST_F(GoPlanTexts, DeclareThePrefixesThatTheTablesInherit) {
  UsePrefixes();
  for (const QBKRN_BalancesImport balances : {BalImport_None, BalImport_Planned, BalImport_All}) {
    UsePrefixes();
    host.planContent->loaded.clear();
    host.component.BalancesImport(balances);
    EXPECT_TRUE(host.component.Go());
    ASSERT_FALSE(host.planContent->loaded.empty());
    for (const std::string& text : host.planContent->loaded) {
      EXPECT_TRUE(XmlElement::Parse(text)) << text;
      EXPECT_TRUE(Holds(text, "<tableblocks xmlns:dt=\"urn:types\">")) << text;
      EXPECT_TRUE(Holds(text, "<c dt:type=\"text\">Rent</c>")) << text;
    }
    EXPECT_EQ(host.component.ErrorNumber(), 0);
    EXPECT_EQ(NoticesOf(host, NoticeKind::TablesNotLoaded), 0U);
  }
}

TEST_F(GoPlanTexts, HoldTheGrowthOfTablesWithPrefixes) {
  UsePrefixes();
  host.component.BalancesImport(BalImport_Planned);
  host.component.GrowthRateExpenses(7);
  EXPECT_TRUE(host.component.Go());
  const XmlElement loaded = XmlElement::Parse(host.planContent->loaded.back());
  ASSERT_TRUE(loaded);
  EXPECT_EQ(loaded.Select("//row[c = 'Rent']/c[2]").Text(), "0.07");
}

TEST_F(GoPlanTexts, EndTheirLinesInCrLfWithoutGrowthAndInLfWithIt) {
  host.component.BalancesImport(BalImport_All);
  EXPECT_TRUE(host.component.Go());
  ASSERT_EQ(host.planContent->loaded.size(), 2U);
  EXPECT_TRUE(host.planContent->loaded[0].starts_with("<tables>\r\n\r\n<tableitem "));
  EXPECT_TRUE(host.planContent->loaded[1].starts_with("<tables>\n\n<tableitem "));
  EXPECT_FALSE(Holds(host.planContent->loaded[1], "\r"));
}

TEST_F(GoPlanTexts, AreReportedWhenTheyAreEmpty) {
  host.planContent->tables.erase(expenses);
  EXPECT_TRUE(host.component.Go());
  ASSERT_EQ(host.observer->notices.size(), 2U);
  EXPECT_EQ(host.observer->notices[0].kind, NoticeKind::OperationEnded);
  EXPECT_EQ(host.observer->notices[1].kind, NoticeKind::TablesNotLoaded);
  EXPECT_EQ(host.component.ErrorNumber(), 0);
}

TEST_F(GoPlanTexts, AreReportedForAPastPerformanceTableThatDoesNotParse) {
  host.component.IncludeExpenseAccounts(false);
  host.component.IncludePastPerformance(true);
  host.component.BalancesImport(BalImport_All);
  host.planContent->tables[TableId("20", "0800")] = "<tableitem>";
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(NoticesOf(host, NoticeKind::TablesNotLoaded), 1U);
  EXPECT_EQ(host.planContent->loaded.back(), "");
}

TEST_F(GoPlanTexts, AreNoOmissionWithoutAccounts) {
  host.component.IncludeIncomeAccounts(true);
  host.component.BalancesImport(BalImport_All);
  for (const char* request : {"1", "2", "4"}) {
    host.quickBooks->answers[request] = fakes::AccountAnswer(request, {});
  }
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(NoticesOf(host, NoticeKind::TablesNotLoaded), 0U);
}

}  // namespace
}  // namespace krnqb
