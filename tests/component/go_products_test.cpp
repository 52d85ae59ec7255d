#include <gtest/gtest.h>

#include "expected_sequences.h"
#include "fakes/outside_element.h"
#include "fakes/test_host.h"

namespace krnqb {
namespace {

using expected::Asks;
using expected::FindsSession;
using expected::Progress;
using expected::Sequence;
using fakes::TestHost;

std::string ReadsMarginTables() {
  return expected::ReadsTables("20..2000", "21..2000");
}
std::string LoadsMarginTables() {
  return expected::LoadsTables("20..2000 21..2000");
}

TEST(GoForCor, ImportsExpensesAndPastPerformance) {
  TestHost host;
  host.component.KRNStartingMonth(1);
  host.component.KRNStartingYear(2003);
  host.component.KRNProduct(QBKRN_COR);
  host.component.IncludeExpenseAccounts(true);
  host.component.IncludePastPerformance(true);
  host.component.BalancesImport(BalImport_Planned);
  EXPECT_TRUE(host.component.Go());
  const std::string pass =
      Sequence({expected::AsksAllLists(), Progress(80), expected::ReadsExpenseTables(), Progress(100)});
  EXPECT_EQ(host.journal->Text(), Sequence({expected::BeginsFirstPass(), pass, expected::LoadsExpenseTables(),
                                            "XMLprocessing\n", expected::BeginsPassInOpenSession(), pass,
                                            expected::ReadsTransactions(), expected::WritesFirstPastPeriod(),
                                            expected::LoadsExpenseTables(), expected::EndsImport()}));
}

TEST(GoForBri, WritesTheContributionMarginAndNeverPastPerformance) {
  TestHost host;
  host.component.KRNStartingMonth(1);
  host.component.KRNStartingYear(2003);
  host.component.KRNProduct(QBKRN_BRI);
  host.component.SelectedExpenses(
      Variant(XmlElement::Parse(fakes::SelectionText({{"E-1", "True"}, {"E-2", "False"}}))));
  host.component.IncludeExpenseAccounts(true);
  host.component.IncludePastPerformance(true);
  host.component.BalancesImport(BalImport_All);
  EXPECT_TRUE(host.component.Go());
  const std::string pass =
      Sequence({expected::AsksAllLists(), Progress(80), ReadsMarginTables(), Progress(100)});
  EXPECT_EQ(host.journal->Text(),
            Sequence({expected::BeginsFirstPass(), pass, LoadsMarginTables(), "XMLprocessing\n",
                      expected::BeginsPassInOpenSession(), pass, expected::ReadsTransactions(),
                      LoadsMarginTables(), expected::EndsImport()}));
  const std::string margin = host.planContent->tables[fakes::TableId("20", "2000")];
  EXPECT_TRUE(fakes::Holds(margin, "<c>Rent</c>"));
  EXPECT_FALSE(fakes::Holds(margin, "<c>Utilities</c>"));
}

TEST(GoForBri, WithoutASelectionReadsNoExpenseTableAndLoadsAnEmptyText) {
  TestHost host;
  host.component.KRNProduct(QBKRN_BRI);
  host.component.IncludeExpenseAccounts(true);
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.journal->Text(),
            Sequence({expected::BeginsFirstPass(), Asks("4"), Progress(80), Progress(100),
                      expected::LoadsTables("nothing"), expected::EndsImport()}));
  EXPECT_EQ(host.component.ErrorNumber(), 0);
}

TEST(GoForBri, ReadsAnOutsideSelectionInEachPass) {
  TestHost host;
  const auto outside =
      std::make_shared<fakes::OutsideElement>(fakes::SelectionText({{"E-1", "True"}, {"E-2", "False"}}));
  host.component.KRNProduct(QBKRN_BRI);
  host.component.SelectedExpenses(Variant(XmlElement(outside)));
  host.component.IncludeExpenseAccounts(true);
  host.component.BalancesImport(BalImport_Actual);
  host.journal->On("XMLprocessing", [&outside] {
    outside->text = fakes::SelectionText({{"E-1", "False"}, {"E-2", "True"}});
  });
  EXPECT_TRUE(host.component.Go());
  ASSERT_EQ(host.planContent->loaded.size(), 2U);
  EXPECT_TRUE(fakes::Holds(host.planContent->loaded[0], "<c>Rent</c>"));
  EXPECT_FALSE(fakes::Holds(host.planContent->loaded[0], "<c>Utilities</c>"));
  EXPECT_TRUE(fakes::Holds(host.planContent->loaded[1], "<c>Utilities</c>"));
}

TEST(GoForBri, ReadsTheHostsChangesToItsSelection) {
  TestHost host;
  XmlElement selection = XmlElement::Parse(fakes::SelectionText({{"E-1", "True"}, {"E-2", "False"}}));
  host.component.KRNProduct(QBKRN_BRI);
  host.component.SelectedExpenses(Variant(selection));
  host.component.IncludeExpenseAccounts(true);
  host.component.BalancesImport(BalImport_Actual);
  host.journal->On("XMLprocessing", [&selection] { selection.LastChild().SetAttribute("selected", "True"); });
  EXPECT_TRUE(host.component.Go());
  ASSERT_EQ(host.planContent->loaded.size(), 2U);
  EXPECT_FALSE(fakes::Holds(host.planContent->loaded[0], "<c>Utilities</c>"));
  EXPECT_TRUE(fakes::Holds(host.planContent->loaded[1], "<c>Utilities</c>"));
}

TEST(GoForAnotherProduct, LoadsADocumentWithoutTablesForTheExpenses) {
  for (const std::int32_t product : {0, 4}) {
    TestHost host;
    host.component.KRNStartingMonth(1);
    host.component.KRNStartingYear(2003);
    host.component.KRNProduct(static_cast<QBKRNproduct>(product));
    host.component.IncludeExpenseAccounts(true);
    host.component.IncludePastPerformance(true);
    host.component.BalancesImport(BalImport_All);
    EXPECT_TRUE(host.component.Go());
    const std::string pass = Sequence({expected::AsksAllLists(), Progress(80), Progress(100)});
    EXPECT_EQ(
        host.journal->Text(),
        Sequence({expected::BeginsFirstPass(), pass, expected::LoadsTables("no table"), "XMLprocessing\n",
                  expected::BeginsPassInOpenSession(), pass, expected::ReadsTransactions(),
                  expected::LoadsTables("no table"), expected::EndsImport()}));
    ASSERT_EQ(host.planContent->loaded.size(), 2U);
    EXPECT_EQ(host.planContent->loaded[0], "<tables>\r\n\r\n</tables>");
  }
}

}  // namespace
}  // namespace krnqb
