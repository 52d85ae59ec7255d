#include <gtest/gtest.h>

#include <stdexcept>

#include "fakes/releasable_object.h"
#include "fakes/test_host.h"
#include "thrown_error.h"

namespace krnqb {
namespace {

using fakes::TestHost;
using tests::NumberThrownBy;

TEST(KRNPlanData, ReturnsTheSameObject) {
  TestHost host;
  EXPECT_EQ(host.component.KRNPlanData().AsObject<fakes::FakePlan>(), host.plan);
}

TEST(KRNPlanData, IsNotCheckedWhenSet) {
  TestHost host;
  const auto stranger = std::make_shared<fakes::ReleasableObject>(host.journal, "stranger released");
  host.component.KRNPlanData(Variant(stranger));
  EXPECT_EQ(host.component.KRNPlanData().AsObject<fakes::ReleasableObject>(), stranger);
  EXPECT_EQ(host.journal->Text(), "");
}

TEST(KRNOpenPlan, PassesThePathAndReturnsThePlansAnswer) {
  TestHost host;
  EXPECT_TRUE(host.component.KRNOpenPlan("C:\\Pl\xC3\xA4ne\\A.kpf"));
  host.plan->canOpen = false;
  EXPECT_FALSE(host.component.KRNOpenPlan(""));
  EXPECT_EQ(host.journal->Text(), "OpenPlan C:\\Pl\xC3\xA4ne\\A.kpf\nOpenPlan \n");
}

TEST(KRNOpenPlan, RaisesError91WithoutAPlan) {
  QBDataExchange component{OutsideWorld{}};
  EXPECT_EQ(NumberThrownBy([&component] { component.KRNOpenPlan("C:\\A.kpf"); }), 91);
  component.KRNPlanData(Variant(std::shared_ptr<PlanObject>()));
  EXPECT_EQ(NumberThrownBy([&component] { component.KRNOpenPlan("C:\\A.kpf"); }), 91);
  EXPECT_EQ(component.ErrorNumber(), 0);
}

TEST(KRNOpenPlan, RaisesThePlansOwnError) {
  TestHost host;
  host.journal->Fail("OpenPlan C:\\A.kpf", Error(-2147220991, "the plan is locked"));
  const auto error = tests::ErrorOf([&host] { host.component.KRNOpenPlan("C:\\A.kpf"); });
  ASSERT_TRUE(error.has_value());
  EXPECT_EQ(error->Number(), -2147220991);
  EXPECT_EQ(error->Description(), "the plan is locked");
  EXPECT_EQ(host.component.ErrorNumber(), 0);
}

TEST(KRNOpenPlan, RaisesAnExceptionOfAnotherKindAsAnInternalError) {
  TestHost host;
  host.journal->On("OpenPlan C:\\A.kpf", [] { throw std::runtime_error("x"); });
  try {
    host.component.KRNOpenPlan("C:\\A.kpf");
    ADD_FAILURE() << "nothing was raised";
  } catch (const Error& error) {
    EXPECT_EQ(error.Number(), 51);
  } catch (const std::exception& other) {
    ADD_FAILURE() << "raised an exception other than Error: " << other.what();
  }
}

TEST(KRNOpenPlan, RaisesError438ForAnObjectOfAnotherKind) {
  TestHost host;
  host.component.KRNPlanData(Variant(std::make_shared<Collection>()));
  EXPECT_EQ(NumberThrownBy([&host] { host.component.KRNOpenPlan("C:\\A.kpf"); }), 438);
}

}  // namespace
}  // namespace krnqb
