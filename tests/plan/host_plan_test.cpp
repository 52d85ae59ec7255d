#include "plan/host_plan.h"

#include <gtest/gtest.h>

#include "fakes/plan.h"
#include "fakes/recording_observer.h"
#include "krnqb/subtotals.h"
#include "plan/table_identifiers.h"
#include "thrown_error.h"

namespace krnqb {
namespace {

using tests::NumberThrownBy;

// A plan object in which no plan is open.
class EmptyPlan final : public PlanObject {
 public:
  bool OpenPlan(std::string_view /*planFile*/) override { return false; }
  std::shared_ptr<PlanData> Data() override { return nullptr; }
};

TEST(HostPlan, FailsWithoutAPlan) {
  fakes::RecordingObserver observer;
  for (const Variant& plan :
       {Variant(), Variant(ObjectReference()), Variant(std::make_shared<EmptyPlan>())}) {
    const HostPlan access(plan, observer);
    EXPECT_EQ(NumberThrownBy([&] { static_cast<void>(access.TableText(table_id::plannedSales)); }), 91);
    EXPECT_EQ(NumberThrownBy([&] { access.Load("<tables/>"); }), 91);
  }
}

TEST(HostPlan, FailsForAnObjectOfAnotherKind) {
  fakes::RecordingObserver observer;
  for (const Variant& plan : {Variant(std::make_shared<cSubtotals>()), Variant("a text")}) {
    const HostPlan access(plan, observer);
    EXPECT_EQ(NumberThrownBy([&] { static_cast<void>(access.OpenPlan("x.kpf")); }), 438);
  }
}

TEST(ReadPlanTable, ReturnsTheTableBlocksChildOfTheRoot) {
  fakes::RecordingObserver observer;
  const auto content = std::make_shared<fakes::PlanContent>();
  const Variant plan(std::make_shared<fakes::FakePlan>(content, std::make_shared<fakes::Journal>()));
  const std::string id(table_id::plannedSales);
  content->tables[id] = "<tableitem><lastsavedid/><tableblocks n=\"1\"/></tableitem>";
  EXPECT_EQ(HostPlan(plan, observer).ReadPlanTable(id).Attribute("n"), "1");
  EXPECT_TRUE(observer.notices.empty());
}

TEST(ReadPlanTable, ReportsATableThatCannotBeRead) {
  fakes::RecordingObserver observer;
  const auto content = std::make_shared<fakes::PlanContent>();
  const Variant plan(std::make_shared<fakes::FakePlan>(content, std::make_shared<fakes::Journal>()));
  const std::string id(table_id::plannedSales);
  for (const std::string text :
       {"", "no xml", "<tableitem/>", "<tableitem><deeper><tableblocks/></deeper></tableitem>"}) {
    observer.notices.clear();
    content->tables[id] = text;
    EXPECT_FALSE(HostPlan(plan, observer).ReadPlanTable(id)) << text;
    ASSERT_EQ(observer.notices.size(), 1U) << text;
    EXPECT_EQ(observer.notices[0].kind, NoticeKind::TableUnreadable);
    EXPECT_EQ(observer.notices[0].meaning, NoticeMeaning::Incomplete);
    EXPECT_EQ(observer.notices[0].description, id);
  }
}

TEST(HostPlan, ReportsAnEmptyText) {
  fakes::RecordingObserver observer;
  const auto content = std::make_shared<fakes::PlanContent>();
  const Variant plan(std::make_shared<fakes::FakePlan>(content, std::make_shared<fakes::Journal>()));
  HostPlan(plan, observer).Load("<tables/>");
  EXPECT_TRUE(observer.notices.empty());
  HostPlan(plan, observer).Load("");
  ASSERT_EQ(observer.notices.size(), 1U);
  EXPECT_EQ(observer.notices[0].kind, NoticeKind::TablesNotLoaded);
  EXPECT_EQ(observer.notices[0].meaning, NoticeMeaning::Incomplete);
  EXPECT_EQ(observer.notices[0].place.operation, Operation::Deserialize);
  EXPECT_EQ(content->loaded, (std::vector<std::string>{"<tables/>", ""})) << "the plan receives every text";
}

}  // namespace
}  // namespace krnqb
