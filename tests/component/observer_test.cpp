#include <gtest/gtest.h>

#include "fakes/test_host.h"

// The observer receives the failures that an import otherwise skips silently.

namespace krnqb {
namespace {

using fakes::TestHost;

TEST(Observer, GetsNoNoticeFromACompleteImport) {
  TestHost host;
  host.component.IncludeExpenseAccounts(true);
  host.component.IncludeIncomeAccounts(true);
  EXPECT_TRUE(host.component.Go());
  EXPECT_TRUE(host.observer->notices.empty())
      << OperationName(host.observer->notices.front().place.operation);
}

TEST(Observer, GetsTheErrorStatusOfAResponse) {
  TestHost host;
  host.component.IncludeExpenseAccounts(true);
  host.quickBooks->answers["4"] = fakes::Answer(
      "<AccountQueryRs requestID=\"4\" statusCode=\"3260\" statusSeverity=\"Error\" "
      "statusMessage=\"Insufficient permission\"/>\n");
  EXPECT_TRUE(host.component.Go());
  ASSERT_EQ(host.observer->notices.size(), 1U);
  const Notice& notice = host.observer->notices.front();
  EXPECT_EQ(notice.kind, NoticeKind::AnswerStatus);
  EXPECT_EQ(notice.number, 3260);
  EXPECT_EQ(notice.severity, "Error");
  EXPECT_EQ(notice.description, "Insufficient permission");
  ASSERT_TRUE(notice.place.request.has_value());
  EXPECT_EQ(*notice.place.request, 4);
  EXPECT_EQ(host.component.ErrorNumber(), 0) << "the status does not affect the import";
}

TEST(Observer, GetsNoNoticeWhenAQueryFindsNothing) {
  TestHost host;
  host.component.IncludeExpenseAccounts(true);
  host.quickBooks->answers["4"] = fakes::Answer(
      "<AccountQueryRs requestID=\"4\" statusCode=\"1\" statusSeverity=\"Info\" "
      "statusMessage=\"A query request did not find a matching object in QuickBooks\"/>\n");
  EXPECT_TRUE(host.component.Go());
  EXPECT_TRUE(host.observer->notices.empty());
}

TEST(Observer, GetsANoticeWhenAResponseDoesNotParse) {
  TestHost host;
  host.component.IncludeExpenseAccounts(true);
  host.quickBooks->answers["4"] = "<QBXML>";
  EXPECT_TRUE(host.component.Go());
  ASSERT_FALSE(host.observer->notices.empty());
  const Notice& notice = host.observer->notices.front();
  EXPECT_EQ(notice.kind, NoticeKind::AnswerUnreadable);
  ASSERT_TRUE(notice.place.request.has_value());
  EXPECT_EQ(*notice.place.request, 4);
}

TEST(Observer, GetsANoticeWhenATableDoesNotParseOrHasNoBlocks) {
  for (const char* table : {"<tableitem>", "<tableitem id=\"x\"/>", "no XML"}) {
    TestHost host;
    host.planContent->tables[fakes::TableId("21", "0600")] = table;
    host.component.KRNDeserialize(Variant(host.quickBooks->answers["4"]));
    ASSERT_EQ(host.observer->notices.size(), 2U) << table;
    EXPECT_EQ(host.observer->notices.front().kind, NoticeKind::TableUnreadable) << table;
    EXPECT_EQ(host.observer->notices.back().kind, NoticeKind::Warning) << "the planned table is changed";
    EXPECT_EQ(host.observer->notices.front().description, "21000000000000000000000000000600") << table;
  }
}

TEST(Observer, GetsTheErrorThatEndedAnOperation) {
  TestHost host;
  host.planContent->tables.erase(fakes::TableId("20", "0600"));
  host.component.KRNDeserialize(Variant(host.quickBooks->answers["4"]));
  ASSERT_EQ(host.observer->notices.size(), 1U);
  const Notice& notice = host.observer->notices.front();
  EXPECT_EQ(notice.kind, NoticeKind::OperationEnded);
  EXPECT_EQ(notice.place.operation, Operation::KRNDeserialize);
  EXPECT_EQ(notice.number, 9);
  EXPECT_EQ(notice.description, "Subscript out of range");
}

TEST(Observer, GetsTheErrorThatTheCompanyCheckSkipped) {
  TestHost host;
  host.journal->Fail("ProcessRequest 101", Error(-2147220478, "unexpected"));
  host.component.StartingMonth();
  EXPECT_TRUE(host.observer->Reported(NoticeKind::StatementSkipped, -2147220478));
}

}  // namespace
}  // namespace krnqb
