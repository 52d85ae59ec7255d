#include <gtest/gtest.h>

#include <limits>

#include "fakes/releasable_object.h"
#include "fakes/test_host.h"

namespace krnqb {
namespace {

using fakes::TestHost;

TEST(FreshComponent, HasAllOptionsOffAndTheFirstProduct) {
  QBDataExchange component{OutsideWorld{}};
  EXPECT_EQ(component.KRNProduct(), QBKRN_ALD);
  EXPECT_FALSE(component.IncludeExpenseAccounts());
  EXPECT_FALSE(component.IncludeIncomeAccounts());
  EXPECT_FALSE(component.IncludePastPerformance());
  EXPECT_EQ(component.BalancesImport(), BalImport_None);
  EXPECT_EQ(component.GrowthRateCOGS(), 0);
  EXPECT_EQ(component.GrowthRateIncome(), 0);
  EXPECT_EQ(component.GrowthRateExpenses(), 0);
  EXPECT_EQ(component.QBStartingMonth(), 0);
  EXPECT_EQ(component.QBMajorVersion(), 0);
  EXPECT_EQ(component.QBMinorVersion(), 0);
  EXPECT_EQ(component.ErrorNumber(), 0);
  EXPECT_EQ(component.ErrorDescription(), "");
}

TEST(FreshComponent, HoldsNoPlanAndNothingInTheHostsSlot) {
  QBDataExchange component{OutsideWorld{}};
  EXPECT_EQ(component.KRNPlanData().AsObject<PlanObject>(), nullptr);
  EXPECT_EQ(component.mQBDataExchangeObject().AsObject<Object>(), nullptr);
}

TEST(PlainProperties, KeepTheirValues) {
  TestHost host;
  QBDataExchange& component = host.component;
  component.IncludeExpenseAccounts(true);
  component.IncludeIncomeAccounts(true);
  component.IncludePastPerformance(true);
  component.BalancesImport(BalImport_All);
  component.GrowthRateCOGS(-32768);
  component.GrowthRateIncome(32767);
  component.GrowthRateExpenses(7);
  component.KRNProduct(QBKRN_COR);
  component.QBStartingMonth(4);
  component.QBMajorVersion(2);
  component.QBMinorVersion(-1);
  component.ErrorNumber(-2147221504);
  component.ErrorDescription("set by the host");

  EXPECT_TRUE(component.IncludeExpenseAccounts());
  EXPECT_TRUE(component.IncludeIncomeAccounts());
  EXPECT_TRUE(component.IncludePastPerformance());
  EXPECT_EQ(component.BalancesImport(), BalImport_All);
  EXPECT_EQ(component.GrowthRateCOGS(), -32768);
  EXPECT_EQ(component.GrowthRateIncome(), 32767);
  EXPECT_EQ(component.GrowthRateExpenses(), 7);
  EXPECT_EQ(component.KRNProduct(), QBKRN_COR);
  EXPECT_EQ(component.QBStartingMonth(), 4);
  EXPECT_EQ(component.QBMajorVersion(), 2);
  EXPECT_EQ(component.QBMinorVersion(), -1);
  EXPECT_EQ(component.ErrorNumber(), -2147221504);
  EXPECT_EQ(component.ErrorDescription(), "set by the host");
  EXPECT_EQ(host.journal->Text(), "") << "a plain property calls nothing outside";
}

TEST(Options, AreTheFieldsOfTheProperties) {
  TestHost host;
  QBDataExchange& component = host.component;
  component.IncludeExpenseAccounts(true);
  component.IncludeIncomeAccounts(true);
  component.IncludePastPerformance(true);
  component.GrowthRateCOGS(1);
  component.GrowthRateIncome(2);
  component.GrowthRateExpenses(3);
  component.BalancesImport(BalImport_Actual);
  component.KRNProduct(QBKRN_COR);
  component.KRNStartingMonth(4);
  component.KRNStartingYear(2004);
  component.StartingMonth(5);
  component.StartingYear(2005);
  const ImportOptions options = component.Options();
  EXPECT_TRUE(options.includeExpenseAccounts);
  EXPECT_TRUE(options.includeIncomeAccounts);
  EXPECT_TRUE(options.includePastPerformance);
  EXPECT_EQ(options.growthRateCogs, 1);
  EXPECT_EQ(options.growthRateIncome, 2);
  EXPECT_EQ(options.growthRateExpenses, 3);
  EXPECT_EQ(options.balancesImport, BalImport_Actual);
  EXPECT_EQ(options.krnProduct, QBKRN_COR);
  EXPECT_EQ(options.period.krnStartingMonth, 4);
  EXPECT_EQ(options.period.krnStartingYear, 2004);
  EXPECT_EQ(options.period.startingMonth, 5);
  EXPECT_EQ(options.period.startingYear, 2005);
}

TEST(Options, ReplaceTheFieldsOfTheProperties) {
  TestHost host;
  QBDataExchange& component = host.component;
  component.Options(
      {.includeExpenseAccounts = true,
       .includeIncomeAccounts = false,
       .includePastPerformance = true,
       .growthRateCogs = -1,
       .growthRateIncome = 2,
       .growthRateExpenses = 3,
       .balancesImport = BalImport_Planned,
       .krnProduct = QBKRN_BRI,
       .period = {.krnStartingMonth = 4, .krnStartingYear = 2004, .startingMonth = 5, .startingYear = 2005}});
  EXPECT_TRUE(component.IncludeExpenseAccounts());
  EXPECT_FALSE(component.IncludeIncomeAccounts());
  EXPECT_TRUE(component.IncludePastPerformance());
  EXPECT_EQ(component.GrowthRateCOGS(), -1);
  EXPECT_EQ(component.GrowthRateIncome(), 2);
  EXPECT_EQ(component.GrowthRateExpenses(), 3);
  EXPECT_EQ(component.BalancesImport(), BalImport_Planned);
  EXPECT_EQ(component.KRNProduct(), QBKRN_BRI);
  EXPECT_EQ(component.KRNStartingMonth(), 4);
  EXPECT_EQ(component.KRNStartingYear(), 2004);
  EXPECT_EQ(component.StartingMonth(), 5);
  EXPECT_EQ(component.StartingYear(), 2005);
}

TEST(Options, SettleNoDefaultAndOpenNoSession) {
  TestHost host;
  host.component.KRNStartingMonth(4);
  host.component.KRNStartingYear(2004);
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(host.component.Options().period.startingMonth, 0);
    EXPECT_EQ(host.component.Options().period.startingYear, 0);
  }
  EXPECT_EQ(host.journal->Text(), "");
  EXPECT_EQ(host.component.StartingYear(), 2003);
  EXPECT_EQ(host.component.Options().period.startingYear, 2003) << "the property stores its default";
}

TEST(PlainProperties, AcceptValuesOutsideTheirEnumerations) {
  TestHost host;
  host.component.KRNProduct(static_cast<QBKRNproduct>(77));
  host.component.BalancesImport(static_cast<QBKRN_BalancesImport>(-5));
  EXPECT_EQ(static_cast<std::int32_t>(host.component.KRNProduct()), 77);
  EXPECT_EQ(static_cast<std::int32_t>(host.component.BalancesImport()), -5);
}

TEST(HostsSlot, ReturnsTheSameObject) {
  TestHost host;
  const auto object = std::make_shared<fakes::ReleasableObject>(host.journal, "slot released");
  host.component.mQBDataExchangeObject(Variant(object));
  EXPECT_EQ(host.component.mQBDataExchangeObject().AsObject<fakes::ReleasableObject>(), object);
}

TEST(Execute, ReturnsEmptyForAnyArgument) {
  TestHost host;
  for (const char* name : {"", "Go", "Import"}) {
    std::string action = name;
    EXPECT_TRUE(host.component.Execute(action).IsEmpty());
    EXPECT_TRUE(host.component.Execute(action, Variant("argument")).IsEmpty());
    EXPECT_EQ(action, name);
  }
  EXPECT_EQ(host.journal->Text(), "");
}

TEST(KRNSerialize, ReturnsEmptyForAnyArgument) {
  TestHost host;
  EXPECT_TRUE(host.component.KRNSerialize().IsEmpty());
  EXPECT_TRUE(host.component.KRNSerialize(static_cast<QBKRN_SerializeOptions>(9)).IsEmpty());
  EXPECT_EQ(host.journal->Text(), "");
}

TEST(SubmitCustomRequest, ShowsThatItIsNotAvailableAndReturnsEmpty) {
  TestHost host;
  EXPECT_TRUE(host.component.SubmitCustomRequest("<QBXML/>").IsEmpty());
  EXPECT_EQ(host.userInterface->messages, std::vector<std::string>{"future implementation"});
  EXPECT_EQ(host.journal->Text(), "") << "nothing is sent";
}

TEST(SubmitCustomRequest, ShowsNothingWithoutAUserInterface) {
  QBDataExchange component{OutsideWorld{}};
  EXPECT_TRUE(component.SubmitCustomRequest("<QBXML/>").IsEmpty());
}

TEST(ShowDialog, ReturnsEmptyWithoutAUserInterface) {
  QBDataExchange component{OutsideWorld{}};
  EXPECT_TRUE(component.ShowDialog(dlg_QBtoKRN).IsEmpty());
}

TEST(ShowDialog, PassesTheDialogAndTheComponentToTheUserInterface) {
  TestHost host;
  EXPECT_EQ(fakes::TextOf(host.component.ShowDialog(dlg_SelectKRNplan)), "C:\\Plans\\Nursery.kpf");
  EXPECT_EQ(host.userInterface->dialogs, std::vector<QBKRN_Dialogs>{dlg_SelectKRNplan});
  EXPECT_EQ(host.userInterface->caller, &host.component);
}

struct TablesCase {
  std::int32_t product;
  std::vector<std::string> tables;
};

class TablesAffected : public testing::TestWithParam<TablesCase> {};

TEST_P(TablesAffected, AreListedInOrderByProduct) {
  TestHost host;
  host.component.KRNProduct(static_cast<QBKRNproduct>(GetParam().product));
  const std::shared_ptr<Collection> collection = host.component.GetTablesAffected();
  ASSERT_NE(collection, nullptr);
  std::vector<std::string> tables;
  for (const Variant& id : *collection) tables.push_back(fakes::TextOf(id));
  EXPECT_EQ(tables, GetParam().tables);
}

INSTANTIATE_TEST_SUITE_P(
    Products, TablesAffected,
    testing::Values(TablesCase{1,
                               {"20000000000000000000000000000400", "21000000000000000000000000000400",
                                "20000000000000000000000000000600", "21000000000000000000000000000600",
                                "20000000000000000000000000000800"}},
                    TablesCase{2,
                               {"20000000000000000000000000002090", "20000000000000000000000000002000",
                                "20000000000000000000000000000400", "21000000000000000000000000000400"}},
                    TablesCase{3,
                               {"20000000000000000000000000000400", "21000000000000000000000000000400",
                                "20000000000000000000000000000600", "21000000000000000000000000000600",
                                "20000000000000000000000000000800"}},
                    TablesCase{0, {}}, TablesCase{4, {}}, TablesCase{-1, {}}),
    [](const testing::TestParamInfo<TablesCase>& parameter) {
      const std::int32_t product = parameter.param.product;
      return product < 0 ? std::string("BelowAll") : "Product" + std::to_string(product);
    });

}  // namespace
}  // namespace krnqb
