#include "qbxml/request_catalogue.h"

#include <gtest/gtest.h>

#include <vector>

#include "build_paths.h"
#include "golden.h"
#include "qbxml/envelope.h"

namespace krnqb {
namespace {

const std::vector<std::int32_t> catalogue = {1,  2,  4,   9,   10,  11,  12,  20,  21,
                                             50, 60, 100, 101, 102, 300, 310, 320, 330};

TEST(BuildRequest, EqualsItsGoldenDocumentWithDates) {
  for (const std::int32_t number : catalogue) {
    tests::ExpectGolden(tests::GoldenRequestsFolder() + "/request-" + std::to_string(number) + "-dated.txt",
                        BuildRequest(number, "2002-01-01", "2002-01-31"));
  }
}

TEST(BuildRequest, EqualsItsGoldenDocumentWithoutDates) {
  for (const std::int32_t number : catalogue) {
    tests::ExpectGolden(tests::GoldenRequestsFolder() + "/request-" + std::to_string(number) + ".txt",
                        BuildRequest(number, {}, {}));
  }
}

TEST(BuildRequest, BuildsTheBillsOfAMonth) {
  EXPECT_EQ(BuildRequest(10, "2002-01-01", "2002-01-31"),
            "<?xml version=\"1.0\"?>\r\n"
            "<!DOCTYPE QBXML PUBLIC '-//INTUIT//DTD QBXML QBD 1.0//EN' >\r\n"
            "<QBXML>\r\n"
            "<QBXMLMsgsRq onError=\"continueOnError\">\r\n"
            "<BillQueryRq requestID=\"10\"><TxnDateRangeFilter><FromTxnDate>2002-01-01</FromTxnDate>"
            "<ToTxnDate>2002-01-31</ToTxnDate></TxnDateRangeFilter>\r\n"
            "<IncludeLineItems>1</IncludeLineItems>\r\n"
            "</BillQueryRq>\r\n"
            "</QBXMLMsgsRq>\r\n"
            "</QBXML>");
}

TEST(BuildRequest, OmitsFilterAndLinesForUndatedBillsWhateverTheDates) {
  EXPECT_EQ(BuildRequest(9, "2002-01-01", "2002-01-31"), BuildRequest(9, {}, {}));
  EXPECT_EQ(BuildRequest(9, {}, {}).find("IncludeLineItems"), std::string::npos);
  EXPECT_EQ(BuildRequest(9, {}, {}).find("Filter"), std::string::npos);
}

TEST(BuildRequest, OmitsTheFilterForTransactionsWithoutDates) {
  const std::string request = BuildRequest(10, {}, {});
  EXPECT_NE(request.find("<IncludeLineItems>1</IncludeLineItems>"), std::string::npos);
  EXPECT_EQ(request.find("TxnDateRangeFilter"), std::string::npos);
}

TEST(BuildRequest, UsesVersion11OnlyForPreferencesAnd20OnlyForReports) {
  for (const std::int32_t number : catalogue) {
    const std::string request = BuildRequest(number, {}, {});
    const bool report = number >= 300;
    EXPECT_EQ(request.find("QBD 1.1") != std::string::npos, number == 102) << number;
    EXPECT_EQ(request.find("<?qbxml version=\"2.0\"?>") != std::string::npos, report) << number;
    EXPECT_EQ(request.find("<!DOCTYPE") == std::string::npos, report) << number;
  }
}

TEST(BuildRequest, ReturnsAnEmptyMessageSetForAnUnknownNumber) {
  for (const std::int32_t number : {3, 5, 999, 0, -1}) {
    EXPECT_EQ(BuildRequest(number, "2002-01-01", "2002-01-31"),
              EnvelopeHead("1.0") + "\r\n" + EnvelopeTail());
  }
}

TEST(BuildRequest, WritesDatesWithoutEscaping) {
  EXPECT_NE(BuildRequest(10, "a&b", "c<d").find("<FromTxnDate>a&b</FromTxnDate><ToTxnDate>c<d</ToTxnDate>"),
            std::string::npos);
  EXPECT_NE(BuildRequest(300, "a&b", "c<d")
                .find("<FromReportDate>a&b</FromReportDate><ToReportDate>c<d</ToReportDate>"),
            std::string::npos);
}

TEST(BuildRequest, WritesEmptyDatesInReports) {
  EXPECT_NE(BuildRequest(330, {}, {})
                .find("<ReportPeriod><FromReportDate></FromReportDate><ToReportDate></ToReportDate>"),
            std::string::npos);
}

TEST(BuildTxnDateRangeFilter, HasBothEndsIfEitherIsGiven) {
  EXPECT_EQ(BuildTxnDateRangeFilter({}, {}), "");
  EXPECT_EQ(BuildTxnDateRangeFilter("2002-01-01", {}),
            "<TxnDateRangeFilter><FromTxnDate>2002-01-01</FromTxnDate><ToTxnDate></ToTxnDate></"
            "TxnDateRangeFilter>");
  EXPECT_EQ(BuildTxnDateRangeFilter({}, "2002-01-31"),
            "<TxnDateRangeFilter><FromTxnDate></FromTxnDate><ToTxnDate>2002-01-31</ToTxnDate></"
            "TxnDateRangeFilter>");
}

}  // namespace
}  // namespace krnqb
