#include "cli/import/notices/omissions.h"

#include <gtest/gtest.h>

namespace krnqb::cli {
namespace {

struct OmissionCase {
  Notice notice;
  std::string word;
  std::string text;
};

TEST(OmissionText, NamesTheRequestItsPeriodAndTheReason) {
  const Place bills{.operation = Operation::ReadExpenseTransactions,
                    .request = 10,
                    .fromDate = "2002-01-01",
                    .toDate = "2002-01-31"};
  const Place lists{.operation = Operation::LoadQuickBooksLists, .request = 4};
  const OmissionCase table[] = {
      {{.kind = NoticeKind::RequestRefused, .place = bills, .description = "Gone away"},
       "request",
       "request 10 (bills) for 2002-01-01 to 2002-01-31: refused: Gone away"},
      {{.kind = NoticeKind::RequestRefused,
        .place = {.operation = Operation::QbSerialize},
        .description = "Gone away"},
       "request",
       "a request: refused: Gone away"},
      {{.kind = NoticeKind::AnswerStatus,
        .place = lists,
        .number = 3260,
        .severity = "Error",
        .description = "Because"},
       "status",
       "request 4 (expense accounts): status 3260 (Error): Because"},
      {{.kind = NoticeKind::AnswerUnreadable, .place = bills},
       "answer",
       "request 10 (bills) for 2002-01-01 to 2002-01-31: the answer is not well-formed XML"},
      {{.kind = NoticeKind::TableUnreadable,
        .place = {.operation = Operation::ReadPlanTable},
        .description = "20000000000000000000000000000600"},
       "table",
       "plan table 20000000000000000000000000000600 (Planned expenses) cannot be read"},
      {{.kind = NoticeKind::TablesNotLoaded, .description = "the import changed no tables"},
       "load",
       "changed tables were not loaded into the plan: the import changed no tables"},
      {RefusedLoad("line 3: no XML"), "load", "changed tables were not loaded into the plan: line 3: no XML"},
      {{.kind = NoticeKind::ColumnsMisaligned,
        .place = {.operation = Operation::ParseProfitAndLossReport, .request = 300},
        .description = "Rent"},
       "columns",
       "request 300 (income by month): the columns of the row Rent are misaligned"},
      {{.kind = NoticeKind::OperationEnded,
        .place = {.operation = Operation::KRNDeserialize},
        .description = "Subscript out of range"},
       "operation",
       "KRNDeserialize ended early: Subscript out of range"},
      {{.kind = NoticeKind::OperationEnded,
        .place = {.operation = Operation::SelectedExpenses, .request = 4},
        .description = "Not set"},
       "operation",
       "request 4 (expense accounts): SelectedExpenses ended early: Not set"}};
  for (const OmissionCase& expected : table) {
    EXPECT_EQ(OmissionText(expected.notice), expected.text);
    EXPECT_EQ(KindWord(expected.notice.kind), expected.word) << expected.text;
  }
}

}  // namespace
}  // namespace krnqb::cli
