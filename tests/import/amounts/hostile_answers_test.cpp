#include <gtest/gtest.h>

#include <string>

#include "fakes/import_surroundings.h"
#include "fakes/import_texts.h"
#include "fakes/recording_observer.h"
#include "import/amounts/report_reading.h"
#include "import/amounts/transaction_reading.h"
#include "krnqb/import_report.h"
#include "limited_child.h"

namespace krnqb {
namespace {

using fakes::RecordAnswer;
using fakes::ReportAnswer;
using tests::StaysWithinLimits;

constexpr LineSelection billLines{
    .responseName = "BillQueryRs", .places = LinePlaces::DirectChildren, .lineName = {}};
const Place place{.operation = Operation::ReadExpenseTransactions, .request = 10};

std::string Repeated(std::string_view piece, std::size_t times) {
  std::string text;
  for (std::size_t time = 0; time < times; ++time) text += piece;
  return text;
}

TEST(TransactionAnswers, WithNestedAmountsKeepTheirTextOnce) {
  const std::string nested =
      Repeated("<Amount>1", 900) + std::string(1'000'000, '1') + Repeated("</Amount>", 900);
  const std::string answer =
      RecordAnswer("BillQueryRs", "<BillRet><ExpenseLineRet>" + nested + "</ExpenseLineRet></BillRet>");
  EXPECT_TRUE(StaysWithinLimits(answer.size(), [&] {
    fakes::RecordingObserver observer;
    const TransactionLines read = ReadTransactionLines(Variant(answer), billLines, observer, place);
    return read.Count() == 1 && read[0].amount == std::string(1'000'900, '1');
  }));
}

TEST(TransactionAnswers, WithNestedFieldsHaveTheFirstTextOfEach) {
  fakes::RecordingObserver observer;
  const std::string answer = RecordAnswer(
      "BillQueryRs",
      "<BillRet><ExpenseLineRet><Amount>1<x><Quantity>2</Quantity><Quantity>3</Quantity></x>4</Amount>"
      "<Amount>5</Amount><Quantity>6</Quantity><AccountRef><ListID>a<Amount>7</Amount></ListID></AccountRef>"
      "<AccountRef><ListID>b</ListID></AccountRef></ExpenseLineRet></BillRet>");
  const TransactionLines read = ReadTransactionLines(Variant(answer), billLines, observer, place);
  ASSERT_EQ(read.Count(), 1U);
  EXPECT_EQ(read[0].amount, "1234");
  EXPECT_EQ(read[0].quantity, "6");
  EXPECT_EQ(read[0].accountId, "a7");
  EXPECT_EQ(read[0].anyAccountId, "a7");
}

TEST(TransactionAnswers, WithManySmallRecordsFitIntoMemory) {
  const std::string answer = "<QBXML><QBXMLMsgsRs>" + Repeated("<a/>", 400'000) + "</QBXMLMsgsRs></QBXML>";
  EXPECT_TRUE(StaysWithinLimits(answer.size(), [&] {
    fakes::RecordingObserver observer;
    return ReadTransactionLines(Variant(answer), billLines, observer, place).Count() == 0;
  }));
  const std::string fields =
      RecordAnswer("BillQueryRs", Repeated("<a><Amount/></a>", 400'000) + Repeated("<Amount>", 500) +
                                      Repeated("</Amount>", 500));
  EXPECT_TRUE(StaysWithinLimits(fields.size(), [&] {
    fakes::RecordingObserver observer;
    return ReadTransactionLines(Variant(fields), billLines, observer, place).Count() == 0;
  }));
}

TEST(TransactionAnswers, WithThirtyTwoThousandErrorStatusesAreReportedInTime) {
  std::string answer = "<QBXML><QBXMLMsgsRs>";
  for (int index = 0; index < 32'000; ++index) {
    answer += "<BillQueryRs statusCode=\"" + std::to_string(1000 + index) +
              "\" statusSeverity=\"Error\" statusMessage=\"no\"/>";
  }
  answer += "</QBXMLMsgsRs></QBXML>";
  EXPECT_TRUE(StaysWithinLimits(answer.size(), [&] {
    ImportReport report;
    static_cast<void>(ReadTransactionLines(Variant(answer), billLines, report, place));
    return report.Missing().size() == 32'000;
  }));
}

TEST(ReportAnswers, WithManyAccountsInOneRowAreReadInTime) {
  std::string row = "<DataRow>";
  for (int index = 0; index < 15'000; ++index) {
    row += "<RowData rowType=\"account\" value=\"A" + std::to_string(index) + "\"/><ColData colID=\"" +
           std::to_string(index + 1) + "\" value=\"1\"/>";
  }
  const std::string answer = ReportAnswer(row + "</DataRow>");
  EXPECT_TRUE(StaysWithinLimits(answer.size(), [&] {
    ImportReport report;
    std::optional<SubtotalCollection> target = fakes::ImportSurroundings::Zeros({"A0", "A14999"});
    ParseProfitAndLossReport(XmlElement::Parse(answer), target, report, place);
    return target->At("A14999").SubTotal(12) == 1 && report.LeftOut().count == 14'998;
  }));
}

}  // namespace
}  // namespace krnqb
