#include <fmt/format.h>

#include "company/testing.h"

namespace krnqb::company {
namespace {

using testing::Request;
using testing::Response;
using testing::TextsOf;

constexpr std::string_view lines =
    "<ExpenseLineRet>\n<TxnLineID>A</TxnLineID>\n<Amount>5.00</Amount>\n</ExpenseLineRet>\n"
    "<ItemLineRet>\n<TxnLineID>B</TxnLineID>\n</ItemLineRet>\n";

std::string Transaction(std::string_view kind, std::string_view id, std::string_view date,
                        std::string_view transactionLines = {}) {
  const std::string element = std::string(kind) + "Ret";
  return "<" + element + ">\n<TxnID>" + std::string(id) + "</TxnID>\n<TxnDate>" + std::string(date) +
         "</TxnDate>\n" + std::string(transactionLines) + "<OpenAmount>0.00</OpenAmount>\n</" + element +
         ">\n";
}

std::string Range(std::string_view from, std::string_view to) {
  return "<TxnDateRangeFilter><FromTxnDate>" + std::string(from) + "</FromTxnDate><ToTxnDate>" +
         std::string(to) + "</ToTxnDate></TxnDateRangeFilter>";
}

class CompanyTransactions : public testing::CompanyTest {
 protected:
  std::vector<std::string> IdsOf(std::string_view query) {
    return TextsOf(company.Answer(Request("1.0", query)), "//TxnID");
  }

  CompanyFile company = NewCompany("1.1");
};

using Ids = std::vector<std::string>;

TEST_F(CompanyTransactions, AreFilteredByAnInclusiveDateRange) {
  company.Load("bills.xml", Response("<BillQueryRs>" + Transaction("Bill", "dec", "2001-12-31") +
                                     Transaction("Bill", "jan1", "2002-01-01") +
                                     Transaction("Bill", "jan31", "2002-01-31") +
                                     Transaction("Bill", "feb", "2002-02-01") + "</BillQueryRs>"));
  EXPECT_EQ(IdsOf("<BillQueryRq>" + Range("2002-01-01", "2002-01-31") + "</BillQueryRq>"),
            (Ids{"jan1", "jan31"}));
  EXPECT_EQ(IdsOf("<BillQueryRq>" + Range("", "2002-01-01") + "</BillQueryRq>"), (Ids{"dec", "jan1"}));
  EXPECT_EQ(IdsOf("<BillQueryRq>" + Range("2002-01-31", "") + "</BillQueryRq>"), (Ids{"jan31", "feb"}));
  EXPECT_EQ(IdsOf("<BillQueryRq></BillQueryRq>"), (Ids{"dec", "jan1", "jan31", "feb"}));
  EXPECT_EQ(IdsOf("<BillQueryRq>" + Range("2003-01-01", "2003-12-31") + "</BillQueryRq>"), Ids{});
  EXPECT_EQ(IdsOf("<CheckQueryRq></CheckQueryRq>"), Ids{});
}

TEST_F(CompanyTransactions, AreOrderedByDateThenByLoading) {
  company.Load("checks.xml", Response("<CheckQueryRs>" + Transaction("Check", "c", "2002-03-01") +
                                      Transaction("Check", "b", "2002-01-05") +
                                      Transaction("Check", "a", "2002-01-05") + "</CheckQueryRs>"));
  company.Load("more.xml", Response("<CheckQueryRs>" + Transaction("Check", "0", "2002-01-05") +
                                    Transaction("Check", "b", "2002-01-05", lines) + "</CheckQueryRs>"));
  EXPECT_EQ(IdsOf("<CheckQueryRq/>"), (Ids{"b", "a", "0", "c"}));
}

TEST_F(CompanyTransactions, HaveLinesOnlyOnRequest) {
  const std::string whole = Transaction("Bill", "1-2", "2002-01-05", lines);
  const std::string bare = Transaction("Bill", "1-2", "2002-01-05");
  company.Load("bills.xml", Response("<BillQueryRs>" + whole + "</BillQueryRs>"));
  struct Case {
    std::string_view include;
    bool hasLines;
  };
  const std::vector<Case> cases = {{"", false},
                                   {"<IncludeLineItems>0</IncludeLineItems>", false},
                                   {"<IncludeLineItems>false</IncludeLineItems>", false},
                                   {"<IncludeLineItems>1</IncludeLineItems>", true},
                                   {"<IncludeLineItems>true</IncludeLineItems>", true}};
  for (const auto& [include, hasLines] : cases) {
    SCOPED_TRACE(include);
    EXPECT_EQ(
        company.Answer(Request("1.0", "<BillQueryRq>" + std::string(include) + "</BillQueryRq>")),
        Response("<BillQueryRs statusCode=\"0\" statusSeverity=\"Info\" statusMessage=\"Status OK\">\n" +
                 (hasLines ? whole : bare) + "</BillQueryRs>\n"));
  }
}

TEST_F(CompanyTransactions, WithoutLinesAreTheSameEitherWay) {
  const std::string bare = Transaction("Bill", "1-2", "2002-01-05");
  company.Load("bills.xml", Response("<BillQueryRs>" + bare + "</BillQueryRs>"));
  EXPECT_EQ(
      company.Answer(Request("1.0", "<BillQueryRq></BillQueryRq>")),
      company.Answer(Request("1.0", "<BillQueryRq><IncludeLineItems>1</IncludeLineItems></BillQueryRq>")));
  EXPECT_NE(company.Answer(Request("1.0", "<BillQueryRq></BillQueryRq>")).find(bare), std::string::npos);
}

TEST_F(CompanyTransactions, AreAnsweredOnlyToTheirOwnRequest) {
  const std::vector<std::string_view> kinds = {"Bill", "Check", "CreditCardCharge", "Invoice",
                                               "SalesReceipt"};
  std::string answers;
  for (const std::string_view kind : kinds) {  // one TxnID for all: ids are unique per kind
    answers += fmt::format("<{0}QueryRs>{1}</{0}QueryRs>", kind, Transaction(kind, "7-7", "2002-01-05"));
  }
  company.Load("all.xml", Response(answers));
  for (const std::string_view kind : kinds) {
    SCOPED_TRACE(kind);
    const std::string request = Request("1.0", fmt::format("<{0}QueryRq></{0}QueryRq>", kind));
    EXPECT_EQ(TextsOf(company.Answer(request), fmt::format("//{0}QueryRs/{0}Ret/TxnID", kind)), Ids{"7-7"});
  }
}

TEST_F(CompanyTransactions, AreReadToTheLastDayOfTheCalendarWithoutAnEnd) {
  company.Load("bills.xml", "<QBXML><QBXMLMsgsRs><BillQueryRs>" + Transaction("Bill", "1", "9999-12-31") +
                                "</BillQueryRs></QBXMLMsgsRs></QBXML>");
  EXPECT_EQ(IdsOf("<BillQueryRq/>"), Ids{"1"});
}

}  // namespace
}  // namespace krnqb::company
