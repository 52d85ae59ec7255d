#include "krnqb/import_report.h"

#include <gtest/gtest.h>

#include "fakes/test_host.h"
#include "limited_child.h"

namespace krnqb {
namespace {

using fakes::TestHost;

const Place januaryBills{.operation = Operation::ReadExpenseTransactions,
                         .request = 10,
                         .fromDate = "2002-01-01",
                         .toDate = "2002-01-31"};

Notice Incomplete(NoticeKind kind, const Place& place, std::int32_t number = 0,
                  const std::string& description = {}) {
  return {.kind = kind,
          .meaning = NoticeMeaning::Incomplete,
          .place = place,
          .number = number,
          .description = description};
}

Notice LeftOut(SkipReason reason, const std::string& amount, std::optional<std::int16_t> pastPeriod = {}) {
  Notice notice{.kind = NoticeKind::AmountSkipped,
                .meaning = NoticeMeaning::LeftOut,
                .place = januaryBills,
                .skipped = Skipped{.reason = reason, .transactionId = "T-1", .amount = amount}};
  notice.place.pastPeriod = pastPeriod;
  return notice;
}

Notice Described(NoticeKind kind, const std::string& description) {
  return {.kind = kind, .description = description};
}

TEST(ImportReport, OfAnImportWithoutNoticesIsComplete) {
  const ImportReport report;
  EXPECT_TRUE(report.Complete());
  EXPECT_TRUE(report.Missing().empty());
  EXPECT_TRUE(report.Journal().empty());
  EXPECT_EQ(report.LeftOut().count, 0);
  EXPECT_EQ(report.LeftOut().sum, 0);
}

TEST(ImportReport, DependsOnTheMeaningOfANoticeNotOnItsKind) {
  for (const NoticeKind kind : {NoticeKind::StatementSkipped, NoticeKind::OperationEnded,
                                NoticeKind::AnswerStatus, NoticeKind::RequestRefused}) {
    ImportReport report;
    report.Notify({.kind = kind, .meaning = NoticeMeaning::Complete});
    EXPECT_TRUE(report.Complete());
    report.Notify(Incomplete(kind, januaryBills, 7));
    EXPECT_FALSE(report.Complete());
    ASSERT_EQ(report.Missing().size(), 1U);
    EXPECT_EQ(report.Missing()[0].kind, kind);
    EXPECT_EQ(report.Missing()[0].number, 7);
    EXPECT_EQ(report.Missing()[0].place.request, 10);
  }
}

TEST(ImportReport, ListsTheSameNoticeOnce) {
  ImportReport report;
  for (int pass = 0; pass < 2; ++pass) {
    report.Notify(Incomplete(NoticeKind::AnswerStatus, januaryBills, 3260, "No permission"));
  }
  EXPECT_EQ(report.Missing().size(), 1U);
}

TEST(ImportReport, ListsTablesThatWereNotLoadedUnlessAnotherNoticeNamesTheCause) {
  const Notice empty = Incomplete(NoticeKind::TablesNotLoaded, {.operation = Operation::Deserialize}, 0,
                                  "the import changed no tables");
  ImportReport report;
  report.Notify(empty);
  report.Notify(empty);
  EXPECT_EQ(report.Missing().size(), 1U);
  ImportReport explained;
  explained.Notify(Incomplete(NoticeKind::AnswerStatus, januaryBills, 500));
  explained.Notify(empty);
  ASSERT_EQ(explained.Missing().size(), 1U);
  EXPECT_EQ(explained.Missing()[0].kind, NoticeKind::AnswerStatus);
}

TEST(ImportReport, ListsEachReasonForWhichThePlanRefusedTablesOnce) {
  ImportReport report;
  report.Notify(Incomplete(NoticeKind::AnswerStatus, januaryBills, 500));
  for (const char* reason : {"line 3: no XML", "line 3: no XML", "line 4: no XML"}) {
    report.Notify(Incomplete(NoticeKind::TablesRefused, {.operation = Operation::Deserialize}, 0, reason));
  }
  EXPECT_EQ(report.Missing().size(), 3U);
}

TEST(ImportReport, ListsNoticesThatDifferInAnyField) {
  const Notice first = Incomplete(NoticeKind::AnswerStatus, januaryBills, 3260, "No permission");
  std::vector<Notice> others(8, first);
  others[0].kind = NoticeKind::AnswerUnreadable;
  others[1].number = 3261;
  others[2].severity = "Warn";
  others[3].description = "Other";
  others[4].place.operation = Operation::OffsetBilledExpense;
  others[5].place.request = 11;
  others[6].place.fromDate = "2002-01-02";
  others[7].place.toDate = "2002-01-30";
  ImportReport report;
  report.Notify(first);
  for (std::size_t index = 0; index < others.size(); ++index) {
    report.Notify(others[index]);
    EXPECT_EQ(report.Missing().size(), index + 2) << index;
  }
}

TEST(ImportReport, ListsARefusedRequestOnceWhicheverOperationsSentIt) {
  ImportReport report;
  for (const Operation operation : {Operation::SelectedExpenses, Operation::LoadQuickBooksLists}) {
    report.Notify(Incomplete(NoticeKind::RequestRefused, {.operation = operation, .request = 4}, -1, "No"));
  }
  EXPECT_EQ(report.Missing().size(), 1U);
}

TEST(ImportReport, SumsWhatWasLeftOutByReason) {
  ImportReport report;
  report.Notify(LeftOut(SkipReason::NoAccount, "10"));
  report.Notify(LeftOut(SkipReason::NoItem, "-2.5"));
  report.Notify(LeftOut(SkipReason::NoAccount, "1"));
  EXPECT_TRUE(report.Complete()) << "left-out amounts are not missing";
  EXPECT_EQ(report.LeftOut().count, 3);
  EXPECT_EQ(report.LeftOut().sum, 8.5);
  ASSERT_EQ(report.LeftOutByReason().size(), 2U);
  EXPECT_EQ(report.LeftOutByReason().at(SkipReason::NoAccount).count, 2);
  EXPECT_EQ(report.LeftOutByReason().at(SkipReason::NoAccount).sum, 11);
  EXPECT_EQ(report.LeftOutByReason().at(SkipReason::NoItem).sum, -2.5);
  ASSERT_EQ(report.Journal().size(), 3U);
  EXPECT_EQ(report.Journal()[1].skipped->reason, SkipReason::NoItem);
  EXPECT_EQ(report.Journal()[1].skipped->transactionId, "T-1");
}

TEST(ImportReport, CountsATextThatIsNotANumberAsZero) {
  ImportReport report;
  report.Notify(LeftOut(SkipReason::AmountIsNoNumber, "12 EUR"));
  EXPECT_EQ(report.LeftOut().count, 1);
  EXPECT_EQ(report.LeftOut().sum, 0);
}

TEST(ImportReport, KeepsAmountsOfPastPeriodsSeparate) {
  ImportReport report;
  report.Notify(LeftOut(SkipReason::NoAccount, "10", std::int16_t{2}));
  EXPECT_EQ(report.LeftOut().count, 0);
  EXPECT_EQ(report.LeftOutOfPast().count, 1);
  EXPECT_EQ(report.LeftOutOfPast().sum, 10);
  EXPECT_TRUE(report.LeftOutByReason().empty());
  EXPECT_EQ(report.Journal().size(), 1U);
}

TEST(ImportReport, HasNoSumOnceItExceedsTheRangeOfADouble) {
  ImportReport report;
  report.Notify(LeftOut(SkipReason::NoAccount, "1.7E308"));
  EXPECT_EQ(report.LeftOut().sum, 1.7E308);
  report.Notify(LeftOut(SkipReason::NoAccount, "1.7E308"));
  EXPECT_EQ(report.LeftOut().sum, std::nullopt);
  EXPECT_EQ(report.LeftOutByReason().at(SkipReason::NoAccount).sum, std::nullopt);
  report.Notify(LeftOut(SkipReason::NoAccount, "-1.7E308"));
  EXPECT_EQ(report.LeftOut().sum, std::nullopt) << "the sum stays unknown";
  EXPECT_EQ(report.LeftOut().count, 3);
}

TEST(ImportReport, ListsRepeatedAccountsOnceEach) {
  ImportReport report;
  for (const std::string name : {"A", "B", "A"}) {
    report.Notify(Described(NoticeKind::AccountInSeveralRows, name));
  }
  EXPECT_EQ(report.RepeatedAccounts(), (std::vector<std::string>{"A", "B"}));
  EXPECT_EQ(report.Journal().size(), 3U);
}

TEST(ImportReport, HoldsTheFirstEndOfPastPerformance) {
  ImportReport report;
  EXPECT_EQ(report.PastPerformanceEnd(), "");
  report.Notify(Described(NoticeKind::PastPerformanceEnded, "CostOfGoodsSold"));
  report.Notify(Described(NoticeKind::PastPerformanceEnded, "Bank"));
  EXPECT_EQ(report.PastPerformanceEnd(), "CostOfGoodsSold");
  EXPECT_EQ(report.Journal().size(), 2U);
}

TEST(ImportReport, PassesEveryNoticeOn) {
  const auto next = std::make_shared<fakes::RecordingObserver>();
  ImportReport report(next);
  report.Notify(Incomplete(NoticeKind::AnswerStatus, januaryBills, 3260));
  report.Notify(Incomplete(NoticeKind::AnswerStatus, januaryBills, 3260));
  report.Notify(Described(NoticeKind::StatementSkipped, "x"));
  EXPECT_EQ(next->notices.size(), 3U);
}

// A host with a report as its observer.
class ReportedImport : public testing::Test {
 protected:
  bool Go() {
    OutsideWorld world = host.World();
    world.observer = report;
    QBDataExchange component(world);
    component.KRNPlanData(Variant(host.plan));
    component.IncludeExpenseAccounts(true);
    component.BalancesImport(balances);
    component.KRNStartingMonth(1);
    component.KRNStartingYear(2003);
    const bool result = component.Go();
    number = component.ErrorNumber();
    return result;
  }
  std::vector<NoticeKind> MissingKinds() const {
    std::vector<NoticeKind> kinds;
    for (const Notice& notice : report->Missing()) kinds.push_back(notice.kind);
    return kinds;
  }

  TestHost host;
  const std::shared_ptr<ImportReport> report = std::make_shared<ImportReport>();
  QBKRN_BalancesImport balances = BalImport_None;
  std::int32_t number = 0;
};

using Kinds = std::vector<NoticeKind>;

TEST_F(ReportedImport, IsComplete) {
  EXPECT_TRUE(Go());
  EXPECT_TRUE(report->Complete());
}

TEST_F(ReportedImport, IsCompleteWithoutListsThatWereNotRequested) {
  balances = BalImport_Planned;
  EXPECT_TRUE(Go());
  for (const Notice& notice : report->Missing()) {
    ADD_FAILURE() << OperationName(notice.place.operation) << ": " << notice.description;
  }
}

TEST_F(ReportedImport, MissesARefusedRequestOnceWhenItAlsoEndsTheImport) {
  host.journal->Fail("ProcessRequest 4", Error(-2147220458, "Gone away"));
  EXPECT_TRUE(Go());
  EXPECT_EQ(number, -2147220458);
  ASSERT_EQ(MissingKinds(), Kinds{NoticeKind::RequestRefused});
  const Notice& refused = report->Missing()[0];
  EXPECT_EQ(refused.place.request, 4);
  EXPECT_EQ(refused.number, -2147220458);
  EXPECT_EQ(refused.description, "Gone away");
  EXPECT_EQ(refused.errorKind, ErrorKind::RequestRefused);
}

TEST_F(ReportedImport, MissesTheTablesOfAnOperationThatEnded) {
  host.planContent->tables.erase(fakes::TableId("20", "0600"));
  Go();
  ASSERT_EQ(MissingKinds(), Kinds{NoticeKind::OperationEnded});
  EXPECT_EQ(report->Missing()[0].place.operation, Operation::KRNDeserialize);
}

TEST_F(ReportedImport, LeavesTheFailureOfTheWholeImportToTheErrorPair) {
  host.journal->Fail("AfterImport", Error(-2147220991, "the host refuses"));
  EXPECT_TRUE(Go());
  EXPECT_NE(number, 0);
  EXPECT_TRUE(report->Complete());
}

TEST(ImportReport, KeepsThirtyTwoThousandNoticesInTime) {
  EXPECT_TRUE(tests::StaysWithinLimits(32'000 * 100, [] {
    ImportReport report;
    for (int repetition = 0; repetition < 2; ++repetition) {
      for (int index = 0; index < 32'000; ++index) {
        report.Notify(Incomplete(NoticeKind::AnswerStatus, januaryBills, index, "refused"));
        report.Notify(Described(NoticeKind::AccountInSeveralRows, "account " + std::to_string(index)));
      }
    }
    return report.Missing().size() == 32'000 && report.RepeatedAccounts().size() == 32'000 &&
           report.Missing()[7].number == 7 && report.RepeatedAccounts()[7] == "account 7";
  }));
}

Notice Warned(const Finding& finding, NoticeMeaning meaning = NoticeMeaning::Complete) {
  Notice notice{.kind = NoticeKind::Warning, .meaning = meaning};
  notice.finding = finding;
  return notice;
}

TEST(ImportReport, KeepsEachFindingOnceUnderItsCode) {
  ImportReport report;
  for (int pass = 0; pass < 2; ++pass) {
    report.Notify(Warned({.code = WarningCode::NoRow, .name = "Rent", .amount = 5}));
    report.Notify(Warned({.code = WarningCode::RowTwice, .name = "Gas", .amount = 5}));
    report.Notify(Warned({.code = WarningCode::NoRow, .name = "Gas", .amount = 5}));
  }
  report.Notify(Warned({.code = WarningCode::NoRow, .name = "Gas", .amount = 6}));
  ASSERT_EQ(report.Warnings().size(), 2U);
  EXPECT_EQ(report.Warnings()[0].code, WarningCode::NoRow);
  ASSERT_EQ(report.Warnings()[0].findings.size(), 3U);
  EXPECT_EQ(report.Warnings()[0].findings[1].name, "Gas");
  EXPECT_EQ(report.Warnings()[1].findings.size(), 1U);
  EXPECT_TRUE(report.Complete());
}

TEST(ImportReport, IsIncompleteAfterAWarningThatMakesItSo) {
  ImportReport report;
  report.Notify(Warned({.code = WarningCode::UnsupportedProcessor, .name = "16"}, NoticeMeaning::Incomplete));
  EXPECT_FALSE(report.Complete());
  ASSERT_EQ(report.Missing().size(), 1U);
  EXPECT_EQ(report.Missing()[0].finding->name, "16");
  EXPECT_EQ(report.Warnings().size(), 1U);
}

TEST(ImportReport, DoesNotCallAPeriodEmptyThatCouldNotBeRead) {
  const Notice empty = Warned({.code = WarningCode::EmptyPeriod, .text = "2002-01"});
  ImportReport report;
  report.Notify(empty);
  EXPECT_EQ(report.Warnings().size(), 1U);
  ImportReport unread;
  unread.Notify(Incomplete(NoticeKind::AnswerStatus, januaryBills, 3260, "No permission"));
  unread.Notify(empty);
  EXPECT_TRUE(unread.Warnings().empty());
}

TEST(ImportReport, WarnsOfTablesThatThePlanDidNotTake) {
  for (const NoticeKind kind : {NoticeKind::TablesRefused, NoticeKind::TablesNotLoaded}) {
    ImportReport report;
    report.Notify(Incomplete(kind, {.operation = Operation::Deserialize}, 0, "line 3: no root"));
    ASSERT_EQ(report.Warnings().size(), 1U);
    EXPECT_EQ(report.Warnings()[0].code, WarningCode::TablesNotLoaded);
    EXPECT_EQ(report.Warnings()[0].findings[0].name, "line 3: no root");
  }
  ImportReport explained;
  explained.Notify(Incomplete(NoticeKind::AnswerStatus, januaryBills, 500));
  explained.Notify(Incomplete(NoticeKind::TablesNotLoaded, {.operation = Operation::Deserialize}));
  EXPECT_TRUE(explained.Warnings().empty());
}

TEST(ImportReport, GroupsWhatWasLeftOutByKindAndReasonWithNames) {
  ImportReport report;
  const auto leftOut = [](SkipKind kind, SkipReason reason, const char* name) {
    Notice notice = LeftOut(reason, "5");
    notice.skipped->kind = kind;
    notice.skipped->account = "8000-1";
    notice.skipped->accountName = name;
    return notice;
  };
  report.Notify(leftOut(SkipKind::NotRequested, SkipReason::AccountInNoList, "Checking"));
  EXPECT_FALSE(report.AnyLeftOutOfRequested());
  for (const char* name : {"Stock", "Deposits", "Stock", ""})
    report.Notify(leftOut(SkipKind::NotImported, SkipReason::AccountInNoList, name));
  const auto groups = report.LeftOutGroups();
  ASSERT_EQ(groups.size(), 2U);
  EXPECT_EQ(groups[1].kind, SkipKind::NotImported);
  EXPECT_EQ(groups[1].total.count, 4);
  EXPECT_EQ(groups[1].total.sum, 20);
  EXPECT_EQ(groups[1].names, (std::vector<std::string>{"Stock", "Deposits", "8000-1"}));
  EXPECT_TRUE(report.AnyLeftOutOfRequested());
}

}  // namespace
}  // namespace krnqb
