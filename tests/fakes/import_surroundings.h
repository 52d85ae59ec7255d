#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "fakes/answer_texts.h"
#include "fakes/dated_quickbooks.h"
#include "fakes/fixed_clock.h"
#include "fakes/import_texts.h"
#include "fakes/journal.h"
#include "fakes/plan.h"
#include "fakes/recording_observer.h"
#include "fakes/recording_sink.h"
#include "import/context.h"

namespace krnqb::fakes {

/// Everything that an import's operations need. The lists of a small company are already read, and their
/// subtotals are 0:
///
///     expense  E-1 Rent, E-2 Utilities (below it E-3 Gas)
///     income   I-1 Plants (below it I-3 Bulbs), I-2 Tools
///     cost     C-1 Seeds (below it C-3 Tulip seeds), C-2 Freight
struct ImportSurroundings {
  ImportSurroundings() {
    sessionState.qbStartingMonth = 1;
    state.expenseAccounts =
        List("4", {Account("E-1", "Rent"), Account("E-2", "Utilities"), SubAccount("E-3", "Gas", "E-2")});
    state.incomeAccounts =
        List("1", {Account("I-1", "Plants"), Account("I-2", "Tools"), SubAccount("I-3", "Bulbs", "I-1")});
    state.costAccounts = List(
        "2", {Account("C-1", "Seeds"), Account("C-2", "Freight"), SubAccount("C-3", "Tulip seeds", "C-1")});
    state.expenseSubtotals = Zeros({"Rent", "Utilities"});
    state.incomeSubtotals = Zeros({"Plants", "Tools"});
    state.costSubtotals = Zeros({"Seeds", "Freight"});
    state.billableExpenses.emplace();
  }

  static AccountList List(std::string_view requestId, std::initializer_list<std::string> accounts) {
    return AccountList(XmlElement::Parse(AccountAnswer(requestId, accounts)));
  }
  static SubtotalCollection Zeros(std::initializer_list<std::string_view> names) {
    SubtotalCollection collection;
    for (const std::string_view name : names) collection.Add(cSubtotals(name), name);
    return collection;
  }
  void SetItems(const std::string& items) {
    state.itemListDocument = ItemList(XmlElement::Parse(ItemAnswer(items)));
  }

  double Expense(std::string_view name, std::int16_t month) const {
    return state.expenseSubtotals->At(name).SubTotal(month);
  }
  double Income(std::string_view name, std::int16_t month) const {
    return state.incomeSubtotals->At(name).SubTotal(month);
  }
  double Cost(std::string_view name, std::int16_t month) const {
    return state.costSubtotals->At(name).SubTotal(month);
  }
  /// Returns the sum of all subtotals, to check that no other amount has changed.
  double SumOfAll() const {
    double sum = 0;
    for (const auto* collection : {&state.expenseSubtotals, &state.incomeSubtotals, &state.costSubtotals}) {
      if (!*collection) continue;
      for (const cSubtotals& record : **collection) {
        for (std::int16_t month = 1; month <= cSubtotals::slotCount; ++month) sum += record.SubTotal(month);
      }
    }
    return sum;
  }

  /// Returns the notices of left-out amounts, in order.
  std::vector<Notice> SkippedAmounts() const {
    std::vector<Notice> amounts;
    for (const Notice& notice : observer.notices) {
      if (notice.kind == NoticeKind::AmountSkipped) amounts.push_back(notice);
    }
    return amounts;
  }
  std::vector<SkipReason> SkipReasons() const {
    std::vector<SkipReason> reasons;
    for (const Notice& notice : SkippedAmounts()) {
      reasons.push_back(notice.skipped.value_or(Skipped{}).reason);
    }
    return reasons;
  }
  std::size_t NoticesOf(NoticeKind kind) const {
    std::size_t count = 0;
    for (const Notice& notice : observer.notices) count += notice.kind == kind ? 1 : 0;
    return count;
  }

  ImportState state;
  SessionState sessionState;
  ErrorPair errorPair;
  RecordingObserver observer;
  std::shared_ptr<Journal> journal = std::make_shared<Journal>();
  std::shared_ptr<DatedQuickBooks> quickBooks = std::make_shared<DatedQuickBooks>();
  DatedProcessorFactory processors{quickBooks, journal};
  std::shared_ptr<PlanContent> planContent = std::make_shared<PlanContent>();
  Variant planData{std::make_shared<FakePlan>(planContent, journal)};
  std::vector<std::shared_ptr<EventSink>> sinks{std::make_shared<RecordingSink>(journal)};
  FixedClock clock{LocalDateTime{2002, 1, 1, 9, 0, 0}};
  ImportContext context{.state = state,
                        .session = Session(sessionState, errorPair, &processors, observer),
                        .plan = HostPlan(planData, observer),
                        .events = Events(sinks),
                        .observer = observer,
                        .clock = clock};
};

}  // namespace krnqb::fakes
