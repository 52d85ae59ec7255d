#pragma once

#include <memory>
#include <string>

#include "fakes/answer_texts.h"
#include "fakes/fixed_clock.h"
#include "fakes/journal.h"
#include "fakes/plan.h"
#include "fakes/plan_texts.h"
#include "fakes/recording_observer.h"
#include "fakes/recording_sink.h"
#include "fakes/recording_user_interface.h"
#include "fakes/request_processor.h"
#include "krnqb/qb_data_exchange.h"

namespace krnqb::fakes {

/// A host with the component, a plan and QuickBooks, which all record in one journal. The company has two
/// top-level accounts of each kind and a sub-account; the plan has every table that an import reads. The
/// clock shows 2002-01-01, 09:00.
class TestHost {
 public:
  TestHost() : component(World()) {
    FillCompany();
    FillPlan();
    component.KRNPlanData(Variant(plan));
  }

  OutsideWorld World() const {
    OutsideWorld world;
    world.processors = std::make_shared<FakeProcessorFactory>(quickBooks, journal);
    world.sinks = {sink};
    world.observer = observer;
    world.userInterface = userInterface;
    world.clock = clock;
    return world;
  }

  std::shared_ptr<Journal> journal = std::make_shared<Journal>();
  std::shared_ptr<FakeQuickBooks> quickBooks = std::make_shared<FakeQuickBooks>();
  std::shared_ptr<PlanContent> planContent = std::make_shared<PlanContent>();
  std::shared_ptr<FakePlan> plan = std::make_shared<FakePlan>(planContent, journal);
  std::shared_ptr<RecordingSink> sink = std::make_shared<RecordingSink>(journal);
  std::shared_ptr<RecordingObserver> observer = std::make_shared<RecordingObserver>();
  std::shared_ptr<RecordingUserInterface> userInterface = std::make_shared<RecordingUserInterface>();
  std::shared_ptr<FixedClock> clock = std::make_shared<FixedClock>(LocalDateTime{2002, 1, 1, 9, 0, 0});
  QBDataExchange component;

 private:
  void FillCompany() const {
    quickBooks->answers["100"] = HostAnswer({"1.0", "1.1"});
    quickBooks->answers["101"] = CompanyAnswer("January");
    quickBooks->answers["1"] = AccountAnswer("1", {Account("I-1", "Plants"), Account("I-2", "Tools")});
    quickBooks->answers["2"] = AccountAnswer("2", {Account("C-1", "Seeds"), Account("C-2", "Freight")});
    quickBooks->answers["4"] = AccountAnswer(
        "4", {Account("E-1", "Rent"), Account("E-2", "Utilities"), SubAccount("E-3", "Gas", "E-2")});
  }

  void FillPlan() const {
    Put("20", "0600",
        TableBlocks(
            {Block("db_income_range_cat3", {Row({"Wages", "0.1", "=B2"}), Row({"Depreciation", "0", "0"}),
                                            Row({"Total", "0", "0"})})}));
    Put("21", "0600",
        TableBlocks({Block("db_income_range_cat3_actual",
                           {Row({"Wages", "5"}), Row({"Depreciation", "0"}), Row({"Total", "0"})})}));
    Put("20", "2000",
        TableBlocks(
            {Block("db_contributionmargin_cat2",
                   {Row({"Wages", "0.1", "=B2"}), Row({"Other", "0", "0"}), Row({"Total", "0", "0"})})}));
    Put("21", "2000",
        TableBlocks({Block("db_contributionmargin_cat2_actual",
                           {Row({"Wages", "5"}), Row({"Other", "0"}), Row({"Total", "0"})})}));
    Put("20", "0400",
        TableBlocks(
            {Block("db_sales_values_sales", {Row({"Shop", "0.1", "=B2"}), Row({"Total", "0", "0"})}),
             Block("db_sales_values_costs", {Row({"Goods", "0.1", "=B4"}), Row({"Total", "0", "0"})})}));
    Put("21", "0400",
        TableBlocks({Block("db_sales_values_sales_actual", {Row({"Shop", "5"}), Row({"Total", "0"})}),
                     Block("db_sales_values_costs_actual", {Row({"Goods", "5"}), Row({"Total", "0"})})}));
    Put("20", "0800", TableBlocks({Block("db_pastperformance_sales", {Row({"Sales", "1", "2", "3"})})}));
  }

  void Put(const std::string& valueSet, const std::string& table, const std::string& tableBlocks) const {
    const std::string id = TableId(valueSet, table);
    planContent->tables[id] = TableText(id, tableBlocks);
  }
};

/// Returns the text in a Variant, or "(no text)" if it has another type.
inline std::string TextOf(const Variant& value) {
  const std::string* text = value.AsText();
  return text == nullptr ? "(no text)" : *text;
}

/// Returns whether a text contains another.
inline bool Holds(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

}  // namespace krnqb::fakes
