#include "cli/import/omissions.h"

#include <gtest/gtest.h>

#include "qbxml/request_catalogue.h"

namespace krnqb::cli {
namespace {

Notice Told(NoticeKind kind, const Place& place, std::int32_t number, std::string severity,
            std::string description) {
  return {kind, place, number, std::move(severity), std::move(description)};
}

Notice Status(std::int32_t number, std::string severity) {
  return Told(NoticeKind::AnswerStatus, {"LoadQuickBooksLists", 4, "", ""}, number, std::move(severity),
              "Because");
}

std::vector<std::string> TextsOf(const std::vector<Notice>& notices) {
  Omissions omissions;
  for (const Notice& notice : notices) omissions.Add(notice);
  std::vector<std::string> texts;
  for (const Omission& omission : omissions.All()) texts.push_back(OmissionText(omission));
  return texts;
}

using Texts = std::vector<std::string>;

TEST(Omissions, HoldAnswersWithAnError) {
  EXPECT_EQ(TextsOf({Status(3260, "Error")}),
            Texts{"request 4 (expense accounts): status 3260 (Error): Because"});
}

TEST(Omissions, HoldAnswersWithAWarning) {
  EXPECT_EQ(TextsOf({Status(500, "Warn")}),
            Texts{"request 4 (expense accounts): status 500 (Warn): Because"});
}

TEST(Omissions, HoldAWarningWhateverItsNumber) {
  EXPECT_EQ(TextsOf({Status(2, "Warn")}).size(), 1U);
}

TEST(Omissions, HoldAnErrorStatusWhateverItsSeverity) {
  EXPECT_EQ(TextsOf({Status(1000, "Info")}).size(), 1U);
  EXPECT_EQ(TextsOf({Status(2, "Error")}).size(), 1U);
}

TEST(Omissions, PassOverInformation) {
  EXPECT_EQ(TextsOf({Status(2, "Info"), Status(499, "Info")}), Texts{});
}

TEST(Omissions, HoldUnreadableAnswersWithTheirPeriod) {
  EXPECT_EQ(TextsOf({Told(NoticeKind::AnswerUnreadable, {"Go", 10, "2002-01-01", "2002-01-31"}, 0, "", "")}),
            Texts{"request 10 (bills) for 2002-01-01 to 2002-01-31: the answer is no well-formed XML"});
}

TEST(Omissions, PassOverWhatEndedForWantOfAListThatWasNotAskedFor) {
  for (const std::string operation : {"SpreadExpenseBalances", "TopLevelSubtotals"}) {
    EXPECT_EQ(TextsOf({Told(NoticeKind::OperationEnded, {operation, {}, "", ""}, 91, "", "Not set")}),
              Texts{});
    EXPECT_EQ(TextsOf({Told(NoticeKind::OperationEnded, {operation, {}, "", ""}, 13, "", "Mismatch")}).size(),
              1U);
  }
}

TEST(Omissions, HoldUnreadableTables) {
  EXPECT_EQ(TextsOf({Told(NoticeKind::TableUnreadable, {"ReadPlanTable", {}, "", ""}, 0, "",
                          "20000000000000000000000000000600")}),
            Texts{"plan table 20000000000000000000000000000600 (Planned expenses) cannot be read"});
}

TEST(Omissions, HoldTablesThatWereNotLoadedUnlessAnotherOmissionNamesTheCause) {
  const Notice empty =
      Told(NoticeKind::TablesNotLoaded, {"Deserialize", {}, "", ""}, 0, "", "the import changed no tables");
  EXPECT_EQ(TextsOf({empty, empty}),
            Texts{"changed tables were not loaded into the plan: the import changed no tables"});
  EXPECT_EQ(TextsOf({Status(500, "Warn"), empty}).size(), 1U);
}

TEST(Omissions, HoldEveryLoadThatThePlanRefused) {
  Omissions omissions;
  omissions.Add(Status(500, "Warn"));
  omissions.AddRefusedLoad("line 3: no XML");
  omissions.AddRefusedLoad("line 3: no XML");
  ASSERT_EQ(omissions.All().size(), 2U);
  EXPECT_EQ(OmissionText(omissions.All()[1]), "changed tables were not loaded into the plan: line 3: no XML");
  EXPECT_EQ(KindWord(omissions.All()[1].kind), "load");
}

TEST(Omissions, HoldOperationsThatEndedEarly) {
  EXPECT_EQ(TextsOf({Told(NoticeKind::OperationEnded, {"KRNDeserialize", {}, "", ""}, 9, "",
                          "Subscript out of range"),
                     Told(NoticeKind::OperationEnded, {"SelectedExpenses", 4, "", ""}, 91, "", "Not set")}),
            (Texts{"KRNDeserialize ended early: Subscript out of range",
                   "request 4 (expense accounts): SelectedExpenses ended early: Not set"}));
}

TEST(Omissions, LeaveTheFailureOfTheWholeImportToTheErrorPair) {
  EXPECT_EQ(TextsOf({Told(NoticeKind::OperationEnded, {"Go", {}, "", ""}, 9, "", "Subscript out of range")}),
            Texts{});
}

TEST(Omissions, PassOverSkippedStatements) {
  EXPECT_EQ(TextsOf({Told(NoticeKind::StatementSkipped, {"BookExpenseLine", 10, "", ""}, 5, "", "No key")}),
            Texts{});
}

TEST(Omissions, HoldEachOmissionOnce) {
  EXPECT_EQ(
      TextsOf({Status(3260, "Error"), Status(3260, "Error"), Status(1000, "Error"), Status(3260, "Error")})
          .size(),
      2U);
}

TEST(Omissions, HoldFailedRequestsWithTheirPeriod) {
  Omissions omissions;
  omissions.AddFailedRequest(BuildRequest(10, "2002-01-01", "2002-01-31"), Error(-2147220458, "Gone away"));
  ASSERT_EQ(omissions.All().size(), 1U);
  EXPECT_EQ(OmissionText(omissions.All()[0]),
            "request 10 (bills) for 2002-01-01 to 2002-01-31: refused: Gone away");
  EXPECT_EQ(omissions.All()[0].number, -2147220458);
}

TEST(Omissions, HoldAFailedRequestOnceThoughItAlsoEndsAnOperation) {
  Omissions omissions;
  omissions.AddFailedRequest(BuildRequest(4, {}, {}), Error(-2147220458, "Gone away"));
  omissions.Add(
      Told(NoticeKind::OperationEnded, {"SelectedExpenses", 4, "", ""}, -2147220458, "", "Gone away"));
  EXPECT_EQ(omissions.All().size(), 1U);
  omissions.Add(Told(NoticeKind::OperationEnded, {"SelectedExpenses", 4, "", ""}, 91, "", "Not set"));
  EXPECT_EQ(omissions.All().size(), 2U);
}

}  // namespace
}  // namespace krnqb::cli
