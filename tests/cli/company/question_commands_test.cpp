#include <gtest/gtest.h>

#include "cli/workplace.h"

namespace krnqb::cli {
namespace {

using tests::ProgramRun;
using tests::RunProgram;
using tests::Workplace;

TEST(RequestCommand, PrintsTheDocumentByteForByteWithoutALineEnd) {
  const ProgramRun run = RunProgram({"request", "10", "--from", "2002-01-01", "--to", "2002-01-31"});
  EXPECT_EQ(run.code, 0);
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.out,
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

TEST(RequestCommand, PrintsARequestWithOneDate) {
  const ProgramRun run = RunProgram({"request", "11", "--from", "2002-01-01"});
  EXPECT_NE(run.out.find("<FromTxnDate>2002-01-01</FromTxnDate><ToTxnDate></ToTxnDate>"), std::string::npos);
  EXPECT_EQ(run.err, "");
}

TEST(RequestCommand, WarnsThatDatesAreIgnored) {
  const ProgramRun run = RunProgram({"request", "9", "--from", "2002-01-01"});
  EXPECT_EQ(run.code, 0);
  EXPECT_EQ(run.err, "krnqb: warning: --from and --to are ignored because request 9 takes no dates\n");
}

TEST(RequestCommand, WarnsOfAnUnknownRequestNumber) {
  const ProgramRun run = RunProgram({"request", "3"});
  EXPECT_EQ(run.code, 0);
  EXPECT_EQ(run.err, "krnqb: warning: there is no request 3; the document contains no request\n");
  EXPECT_TRUE(run.out.ends_with("continueOnError\">\r\n</QBXMLMsgsRq>\r\n</QBXML>"));
}

TEST(SupportsCommand, PrintsYesAndExitsWithZeroOrNoAndExitsWithOne) {
  const Workplace place;
  const std::string company = place.Nursery("1.1");
  const ProgramRun yes = RunProgram({"supports", "1.1", "--company", company});
  EXPECT_EQ(yes.code, 0);
  EXPECT_EQ(yes.out, "yes\n");
  const ProgramRun no = RunProgram({"supports", "2.0", "--company", company});
  EXPECT_EQ(no.code, 1);
  EXPECT_EQ(no.out, "no\n");
  EXPECT_EQ(no.err, "");
  EXPECT_EQ(RunProgram({"supports", "1.10", "--company", company}).out, "no\n");
}

TEST(SupportsCommand, ReportsWhatIsWrongWithTheCompany) {
  const Workplace place;
  const ProgramRun run = RunProgram({"supports", "1.1", "--company", place / "none.qbw"});
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.err, "krnqb: opening the company failed: There is no company file " + (place / "none.qbw") +
                         "; check the path, or create a company with krnqb company new\n");
}

TEST(TablesCommand, ListsTheTablesThatAnImportMayChange) {
  EXPECT_EQ(RunProgram({"tables", "--product", "bri"}).out,
            "20000000000000000000000000002090  Planned contribution margin\n"
            "20000000000000000000000000002000  Planned contribution margin expenses\n"
            "20000000000000000000000000000400  Planned sales and costs\n"
            "21000000000000000000000000000400  Actual sales and costs\n");
  const std::string ald = RunProgram({"tables", "--product", "ald"}).out;
  EXPECT_EQ(ald,
            "20000000000000000000000000000400  Planned sales and costs\n"
            "21000000000000000000000000000400  Actual sales and costs\n"
            "20000000000000000000000000000600  Planned expenses\n"
            "21000000000000000000000000000600  Actual expenses\n"
            "20000000000000000000000000000800  Past performance\n");
  EXPECT_EQ(RunProgram({"tables", "--product", "cor"}).out, ald);
}

}  // namespace
}  // namespace krnqb::cli
