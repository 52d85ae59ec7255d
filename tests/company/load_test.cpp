#include <fmt/format.h>

#include <algorithm>
#include <span>

#include "company/records/database.h"
#include "company/records/errors.h"
#include "company/testing.h"
#include "limited_child.h"

namespace krnqb::company {
namespace {

using testing::Account;
using testing::Accounts;
using testing::Request;
using testing::Response;
using testing::TextsOf;
using tests::ThrownError;

class CompanyLoad : public testing::CompanyTest {
 protected:
  std::vector<std::string> Texts(const std::string& path) const {
    return TextsOf(company.Answer(Request("1.0", "<AccountQueryRq/>")), path);
  }

  CompanyFile company = NewCompany("1.1");
};

using Values = std::vector<std::string>;

std::string CountsText(const std::vector<RecordCount>& counts) {
  std::string text;
  for (const RecordCount& count : counts) text += fmt::format("{} {}, ", count.count, count.kind);
  return text;
}

TEST_F(CompanyLoad, LoadsAndCountsSeveralKindsFromOneDocument) {
  const LoadSummary summary = company.Load(
      "all.xml",
      Response(
          "<HostQueryRs><HostRet><SupportedQBXMLVersion>9.0</SupportedQBXMLVersion></HostRet></HostQueryRs>"
          "<AccountQueryRs>" +
          Account("a1", "Bank") + Account("a2", "Income") +
          "</AccountQueryRs><ItemServiceQueryRs><ItemServiceRet><ListID>s1</ListID></ItemServiceRet>"
          "</ItemServiceQueryRs><ItemQueryRs statusCode=\"0\"><ItemGroupRet><ListID>g1</ListID>"
          "</ItemGroupRet></ItemQueryRs><InvoiceQueryRs statusCode=\"1\"/>"));
  EXPECT_EQ(summary.document, "all.xml");
  EXPECT_EQ(CountsText(summary.added), "2 AccountRet, 1 ItemServiceRet, 1 ItemGroupRet, ");
  EXPECT_EQ(CountsText(summary.replaced), "");
  EXPECT_EQ(CountsText(company.Info().records),
            "1 CompanyRet, 2 AccountRet, 1 ItemServiceRet, 1 ItemGroupRet, ");
}

std::string Transaction(std::string_view kind, std::string_view id) {
  return fmt::format(
      "<{0}QueryRs>\n<{0}Ret>\n<TxnID>{1}</TxnID>\n<TxnDate>2002-03-04</TxnDate>\n</{0}Ret>\n"
      "</{0}QueryRs>\n",
      kind, id);
}

TEST_F(CompanyLoad, FilesTheTransactionsOfAKindTogetherAndRemembersTheOrderOfAll) {
  company.Load("1.xml", Response(Transaction("Invoice", "1") + Transaction("Bill", "2")));
  company = CompanyFile::Open(folder / "company.qbw", FileAccess::ReadWrite);
  company.Load("2.xml", Accounts(Account("a", "Bank")));
  company.Load("3.xml", Response(Transaction("Bill", "3") + Transaction("Invoice", "4") +
                                 Transaction("Bill", "2") + Transaction("Check", "5")));
  const Database database(folder / "company.qbw", FileAccess::ReadOnly);
  const auto keysBy = [&](const std::string& column) {
    Statement rows =
        database.Prepare("SELECT kind, key FROM record WHERE txn_date IS NOT NULL ORDER BY " + column);
    std::string keys;
    while (rows.Step()) keys += fmt::format("{} {}, ", rows.Text(0), rows.Text(1));
    return keys;
  };
  EXPECT_EQ(keysBy("position"), "InvoiceRet 1, BillRet 2, BillRet 3, InvoiceRet 4, CheckRet 5, ");
  EXPECT_EQ(keysBy("id"), "BillRet 2, BillRet 3, CheckRet 5, InvoiceRet 1, InvoiceRet 4, ");
}

TEST_F(CompanyLoad, IgnoresTheVersionsInAHostRecord) {
  company.Load("host.xml",
               Response("<HostQueryRs><HostRet><SupportedQBXMLVersion>9.0</SupportedQBXMLVersion></HostRet>"
                        "</HostQueryRs>"));
  EXPECT_EQ(TextsOf(company.Answer(Request("1.0", "<HostQueryRq/>")), "//SupportedQBXMLVersion"),
            (Values{"1.0", "1.1"}));
}

std::string AccountWith(const std::string& members) {
  return Accounts("<AccountRet><ListID>a</ListID>" + members +
                  "<AccountType>Income</AccountType></AccountRet>");
}

TEST_F(CompanyLoad, RefusesABalanceThatIsNotANumberWithItsRecord) {
  const auto refusal = [&](const std::string& members) {
    return ThrownError([&] { company.Load("doc.xml", AccountWith(members)); }).Description();
  };
  const std::string line = "doc.xml, line 5: ";
  EXPECT_EQ(refusal("<Name>Rent</Name><Balance>n/a</Balance>"),
            line + "AccountRet Rent has the Balance \"n/a\", which is not a number");
  EXPECT_EQ(refusal("<Name>Rent</Name><Balance/>"),
            line + "AccountRet Rent has the Balance \"\", which is not a number");
  EXPECT_EQ(refusal("<Name>Rent</Name><TotalBalance>12.5.1</TotalBalance>"),
            line + "AccountRet Rent has the TotalBalance \"12.5.1\", which is not a number");
  EXPECT_EQ(refusal("<Balance>five</Balance>"),
            line + "AccountRet a has the Balance \"five\", which is not a number");
  EXPECT_EQ(refusal("<Name>" + std::string(300'000, 'n') + "</Name><Balance>" + std::string(300'000, 'b') +
                    "</Balance>"),
            line + "AccountRet " + std::string(40, 'n') + "... has the Balance \"" + std::string(40, 'b') +
                "...\", which is not a number");
  EXPECT_EQ(Texts("//ListID"), Values{});
}

TEST_F(CompanyLoad, TakesABalanceInEveryFormOfANumber) {
  for (const char* balance : {"0", "-12.50", "1,234.56", "(5.00)", " 7 ", "$3"}) {
    company.Load("doc.xml", AccountWith(std::string("<Balance>") + balance + "</Balance>"));
    EXPECT_EQ(Texts("//Balance"), Values{balance});
  }
}

TEST_F(CompanyLoad, ReplacesARecordInItsPlace) {
  company.Load("first.xml",
               Accounts(Account("a", "Income") + Account("b", "Income") + Account("c", "Income")));
  const LoadSummary summary = company.Load(
      "second.xml",
      Accounts(
          Account("d", "Income") +
          "<AccountRet><ListID>a</ListID><Name>New</Name><AccountType>Income</AccountType></AccountRet>"));
  EXPECT_EQ(CountsText(summary.added), "1 AccountRet, ");
  EXPECT_EQ(CountsText(summary.replaced), "1 AccountRet, ");
  EXPECT_EQ(Texts("//ListID"), (Values{"a", "b", "c", "d"}));
  EXPECT_EQ(Texts("//Name"), Values{"New"});
}

TEST_F(CompanyLoad, MovesARecordWithAnotherTypeOrParent) {
  company.Load("first.xml",
               Accounts(Account("a", "Income") + Account("b", "Income") + Account("c", "Income")));
  company.Load("second.xml", Accounts(Account("b", "Expense") + Account("a", "Income", "c")));
  EXPECT_EQ(Texts("//AccountRet/ListID"), (Values{"c", "a", "b"}));
  EXPECT_EQ(TextsOf(company.Answer(
                        Request("1.0", "<AccountQueryRq><AccountType>Income</AccountType></AccountQueryRq>")),
                    "//AccountRet/ListID"),
            (Values{"c", "a"}));
}

TEST_F(CompanyLoad, ReplacesAnItemWithAnotherKind) {
  company.Load("first.xml",
               Response("<ItemQueryRs><ItemServiceRet><ListID>i</ListID></ItemServiceRet></ItemQueryRs>"));
  company.Load(
      "second.xml",
      Response("<ItemQueryRs><ItemNonInventoryRet><ListID>i</ListID></ItemNonInventoryRet></ItemQueryRs>"));
  EXPECT_EQ(CountsText(company.Info().records), "1 CompanyRet, 1 ItemNonInventoryRet, ");
}

TEST_F(CompanyLoad, PutsParentsBeforeSubaccountsThatWereLoadedEarlier) {
  company.Load("children.xml", Accounts(Account("child", "Expense", "parent") + Account("other", "Expense")));
  EXPECT_EQ(Texts("//AccountRet/ListID"), (Values{"child", "other"}));
  company.Load("parents.xml", Accounts(Account("parent", "Expense")));
  EXPECT_EQ(Texts("//AccountRet/ListID"), (Values{"other", "parent", "child"}));
}

TEST_F(CompanyLoad, TakesNameAndFiscalYearFromACompanyRecord) {
  company.Load(
      "company.xml",
      Response("<CompanyQueryRs><CompanyRet><CompanyName>Oak &amp; Elm</CompanyName><Phone/>"
               "<FirstMonthFiscalYear>October</FirstMonthFiscalYear></CompanyRet></CompanyQueryRs>"));
  EXPECT_EQ(company.Info().name, "Oak & Elm");
  EXPECT_EQ(company.Info().fiscalMonth, 10);
  EXPECT_EQ(
      company.Answer(Request("1.0", "<CompanyQueryRq/>")),
      Response("<CompanyQueryRs statusCode=\"0\" statusSeverity=\"Info\" statusMessage=\"Status OK\">\n"
               "<CompanyRet>\n<CompanyName>Oak &amp; Elm</CompanyName>\n<Phone />\n"
               "<FirstMonthFiscalYear>October</FirstMonthFiscalYear>\n</CompanyRet>\n</CompanyQueryRs>\n"));
}

TEST_F(CompanyLoad, ReportsMonth0ForAnUnknownFiscalMonthName) {
  company.Load(
      "company.xml",
      Response("<CompanyQueryRs><CompanyRet><CompanyName>Jardin</CompanyName>"
               "<FirstMonthFiscalYear>Janvier</FirstMonthFiscalYear></CompanyRet></CompanyQueryRs>"));
  EXPECT_EQ(company.Info().fiscalMonth, 0);
  EXPECT_EQ(TextsOf(company.Answer(Request("1.0", "<CompanyQueryRq/>")), "//FirstMonthFiscalYear"),
            Values{"Janvier"});
}

TEST_F(CompanyLoad, UsesTheDeclaredEncoding) {
  const auto document = [](std::string_view declaration, std::string_view name) {
    return fmt::format(
        "<?xml version=\"1.0\"{}?><QBXML><QBXMLMsgsRs><AccountQueryRs><AccountRet><ListID>a</ListID>"
        "<Name>{}</Name><AccountType>Bank</AccountType></AccountRet></AccountQueryRs></QBXMLMsgsRs></QBXML>",
        declaration, name);
  };
  std::string utf16 = "\xFF\xFE";
  for (const char character : document(" encoding=\"UTF-16\"", "Caf\xE9")) utf16 += {character, '\0'};
  struct Case {
    std::string_view encoding;
    std::string bytes;
  };
  const std::vector<Case> cases = {
      {"UTF-8 undeclared", document("", "Caf\xC3\xA9")},
      {"UTF-8 declared", document(" encoding=\"utf-8\"", "Caf\xC3\xA9")},
      {"UTF-8 with a byte order mark", "\xEF\xBB\xBF" + document("", "Caf\xC3\xA9")},
      {"Windows-1252", document(" encoding=\"windows-1252\"", "Caf\xE9")},
      {"UTF-16", utf16},
      {"ASCII", document("", "Caf&#xE9;")},
  };
  for (const auto& [encoding, bytes] : cases) {
    SCOPED_TRACE(encoding);
    company.Load("other.xml", document("", "other"));
    company.Load("accounts.xml", bytes);
    EXPECT_NE(company.Answer(Request("1.0", "<AccountQueryRq/>")).find("<Name>Caf&#233;</Name>\n"),
              std::string::npos);
  }
}

TEST_F(CompanyLoad, LoadsNothingOfAFaultyDocumentAndNamesTheFault) {
  company.Load("first.xml", Accounts(Account("a", "Income")));
  const std::string before = company.Answer(Request("1.0", "<AccountQueryRq/>"));
  const std::string good = "<AccountQueryRs>\n" + Account("b", "Income") + "</AccountQueryRs>\n";
  struct Case {
    std::string document, fault;
  };
  const std::vector<Case> cases = {
      {"", "bad.xml, line 1: not well-formed: "},
      {"<html>\n</html>", "bad.xml, line 1: not a qbXML response: the root element is html"},
      {"<QBXML>\n<QBXMLMsgsRq/>\n</QBXML>", "bad.xml, line 2: QBXMLMsgsRs expected, found QBXMLMsgsRq"},
      {Response(good) + "<", "bad.xml, line 12: not well-formed: "},
      {Response(good + "<BillQueryRs statusCode=\"3250\" statusMessage=\"Feature off\"/>\n"),
       "bad.xml, line 10: BillQueryRs has the error status 3250: Feature off"},
      {Response(good + "<BillAddRs>\n<BillRet><TxnID>1</TxnID><TxnDate>2002-01-01</TxnDate></BillRet>"
                       "</BillAddRs>\n"),
       "bad.xml, line 11: BillAddRs cannot contain BillRet"},
      {Response(good + "<BillQueryRs>\n" + Account("c", "Bank") + "</BillQueryRs>\n"),
       "bad.xml, line 11: BillQueryRs cannot contain AccountRet"},
      {Response(good + "<AccountQueryRs>\n<AccountRet/></AccountQueryRs>\n"),
       "bad.xml, line 11: AccountRet has no ListID"},
      {Response(good + "<AccountQueryRs>\n<AccountRet><ListID>c</ListID></AccountRet></AccountQueryRs>\n"),
       "bad.xml, line 11: AccountRet has no AccountType"},
      {Response(good + "<AccountQueryRs>\n" + Account("c", "Money") + "</AccountQueryRs>\n"),
       "bad.xml, line 11: AccountRet has the unknown AccountType \"Money\""},
      {Response(
           good +
           "<AccountQueryRs>\n<AccountRet>x<ListID>c</ListID><AccountType>Bank</AccountType></AccountRet>"
           "</AccountQueryRs>\n"),
       "bad.xml, line 11: text \"x\" between elements"},
      {Response(good + "<ItemQueryRs>\n<ItemServiceRet><ListID/></ItemServiceRet></ItemQueryRs>\n"),
       "bad.xml, line 11: ItemServiceRet has no ListID"},
      {Response(good + "<BillQueryRs>\n<BillRet><TxnDate>2002-01-01</TxnDate></BillRet></BillQueryRs>\n"),
       "bad.xml, line 11: BillRet has no TxnID"},
      {Response(good + "<BillQueryRs>\n<BillRet><TxnID>1</TxnID></BillRet></BillQueryRs>\n"),
       "bad.xml, line 11: BillRet has no TxnDate"},
      {Response(
           good +
           "<BillQueryRs>\n<BillRet><TxnID>1</TxnID><TxnDate>01/31/2002</TxnDate></BillRet></BillQueryRs>\n"),
       "bad.xml, line 11: BillRet has the TxnDate \"01/31/2002\", which is not a date written YYYY-MM-DD"},
  };
  for (const auto& [document, fault] : cases) {
    SCOPED_TRACE(document);
    const Error error = ThrownError([&] { company.Load("bad.xml", document); });
    EXPECT_EQ(error.Number(), company_error::cannotParse);
    EXPECT_EQ(error.Description().substr(0, fault.size()), fault);
    EXPECT_EQ(company.Answer(Request("1.0", "<AccountQueryRq/>")), before);
  }
  company.Load("good.xml", Response(good));
  EXPECT_EQ(Texts("//ListID"), (Values{"a", "b"}));
}

TEST_F(CompanyLoad, OfManyRecordsBeforeAFaultChangesNothing) {
  company.Load("first.xml", Accounts(Account("a", "Income") + Account("a1000", "Bank")));
  const std::string before = company.Answer(Request("1.0", "<AccountQueryRq/>"));
  std::string records;
  for (int account = 0; account < 2'000; ++account)
    records += Account(fmt::format("a{}", account), "Expense");
  const std::string whole = Accounts(records);
  for (const std::string& document : {whole.substr(0, whole.size() - 10), Accounts(records + "<AccountRet/>"),
                                      Accounts(records + Account("a2000", "Money")), whole + "<"}) {
    EXPECT_EQ(ThrownError([&] { company.Load("bad.xml", document); }).Number(), company_error::cannotParse);
    EXPECT_EQ(company.Answer(Request("1.0", "<AccountQueryRq/>")), before);
  }
  EXPECT_EQ(CountsText(company.Load("good.xml", whole).added), "1999 AccountRet, ");
}

TEST_F(CompanyLoad, ThatCannotReadOnChangesNothing) {
  const std::string beginning = Accounts(Account("a", "Income") + std::string(20'000, ' '));
  const auto source = [rest = BytesOf(beginning)](std::span<char> part) {
    const std::size_t length = rest(part.first(std::min<std::size_t>(part.size(), 1000)));
    if (length < 1000) throw Error(5, "the disk is gone");
    return length;
  };
  EXPECT_EQ(ThrownError([&] { company.Load("a.xml", source); }).Description(), "the disk is gone");
  EXPECT_EQ(Texts("//ListID"), Values{});
}

TEST_F(CompanyLoad, NamesTheFirstOfSeveralFaults) {
  EXPECT_EQ(ThrownError([&] {
              company.Load("bad.xml",
                           Response("<AccountQueryRs>\n<AccountRet/>\n<AccountRet></AccountQueryRs>"));
            }).Description(),
            "bad.xml, line 5: AccountRet has no ListID");
}

TEST_F(CompanyLoad, KeepsTheNamespacesThatARecordInherits) {
  company.Load("company.xml",
               "<QBXML xmlns='urn:a&amp;b' xmlns:p='urn:p' xmlns:q='urn:q'><QBXMLMsgsRs><CompanyQueryRs>"
               "<CompanyRet z='1' xmlns:r='urn:r'><p:A><p:B q:c='2'/></p:A><D xmlns=''/></CompanyRet>"
               "</CompanyQueryRs></QBXMLMsgsRs></QBXML>");
  EXPECT_NE(
      company.Answer(Request("1.0", "<CompanyQueryRq/>"))
          .find("<CompanyRet xmlns:r=\"urn:r\" xmlns=\"urn:a&amp;b\" xmlns:p=\"urn:p\" xmlns:q=\"urn:q\" "
                "z=\"1\">\n<p:A>\n<p:B q:c=\"2\" />\n</p:A>\n<D xmlns=\"\" />\n</CompanyRet>\n"),
      std::string::npos);
}

// A record is found by what its stored text says.
TEST_F(CompanyLoad, ReadsAKeyThatContainsElementsAsItIsStored) {
  const std::string record = "<ItemServiceRet><ListID> <a>1</a></ListID></ItemServiceRet>";
  company.Load("items.xml", Response("<ItemQueryRs>" + record + "</ItemQueryRs>"));
  const std::string answer = company.Answer(Request("1.1", "<ItemQueryRq/>"));
  EXPECT_EQ(CountsText(company.Load("again.xml", answer).added), "");
}

TEST_F(CompanyLoad, OfAnyLengthTakesTheSameMemory) {
  EXPECT_TRUE(tests::StaysWithinLimits(0, [&] {
    constexpr int records = 6'000;  // of 16 KiB, together more than the limit
    const std::string note(16'384, 'n');
    int written = 0;
    std::string begin = "<QBXML><QBXMLMsgsRs><ItemQueryRs>";
    std::string_view rest = begin;
    const auto source = [&](std::span<char> part) {
      if (rest.empty() && written <= records) {
        begin = written < records
                    ? fmt::format("<ItemServiceRet><ListID>{}</ListID><Desc>{}</Desc></ItemServiceRet>",
                                  written, note)
                    : "</ItemQueryRs></QBXMLMsgsRs></QBXML>";
        ++written;
        rest = begin;
      }
      const std::size_t length = std::min(rest.size(), part.size());
      std::copy_n(rest.begin(), length, part.begin());
      rest.remove_prefix(length);
      return length;
    };
    return company.Load("large.xml", source).added.at(0).count == records;
  }));
}

TEST_F(CompanyLoad, PassesOverRecordsThatCannotBeStored) {
  const LoadSummary summary = company.Load(
      "all.xml",
      Response("<VendorQueryRs><VendorRet/><VendorRet/></VendorQueryRs>"
               "<CustomerQueryRs statusCode=\"3250\" statusMessage=\"Feature off\"/>"
               "<EstimateQueryRs><EstimateRet><TxnID>1</TxnID></EstimateRet></EstimateQueryRs>"
               "<AccountQueryRs>" +
               Account("a", "Income") + "<BudgetRet/>" + Account("b", "Income") +
               "</AccountQueryRs><ItemQueryRs><ItemFixedAssetRet/><ItemServiceRet><ListID>i</ListID>"
               "</ItemServiceRet></ItemQueryRs>"));
  EXPECT_EQ(CountsText(summary.added), "2 AccountRet, 1 ItemServiceRet, ");
  EXPECT_EQ(CountsText(summary.passedOver), "1 BudgetRet, 1 EstimateRet, 1 ItemFixedAssetRet, 2 VendorRet, ");
  EXPECT_EQ(CountsText(company.Info().records), "1 CompanyRet, 2 AccountRet, 1 ItemServiceRet, ");
  EXPECT_EQ(CountsText(company.Load("good.xml", Accounts(Account("a", "Income"))).passedOver), "");
}

TEST_F(CompanyLoad, RefusesThemIfAskedTo) {
  company.Load("first.xml", Accounts(Account("a", "Income")));
  const std::string good = "<AccountQueryRs>\n" + Account("b", "Income") + "</AccountQueryRs>\n";
  struct Case {
    std::string document, fault;
  };
  const std::vector<Case> cases = {
      {good + "<VendorQueryRs>\n</VendorQueryRs>\n",
       "bad.xml, line 10: company files cannot store records of VendorQueryRs"},
      {good + "<GeneralSummaryReportQueryRs/>\n",
       "bad.xml, line 10: company files cannot store records of GeneralSummaryReportQueryRs"},
      {good + "<AccountQueryRs>\n<VendorRet/></AccountQueryRs>\n",
       "bad.xml, line 11: company files cannot store VendorRet records"},
      {good + "<BillAddRs>\n</BillAddRs>\n",
       "bad.xml, line 10: company files cannot store records of BillAddRs"},
  };
  for (const auto& [document, fault] : cases) {
    SCOPED_TRACE(document);
    EXPECT_EQ(
        ThrownError([&] { company.Load("bad.xml", Response(document), UnknownKinds::Refuse); }).Description(),
        fault);
    EXPECT_EQ(Texts("//ListID"), Values{"a"});
  }
  EXPECT_EQ(CountsText(company.Load("good.xml", Response(good), UnknownKinds::Refuse).added),
            "1 AccountRet, ");
}

TEST_F(CompanyLoad, StoresEveryKindOfAProfitAndLoss) {
  const std::vector<std::string> kinds = {"Bill",
                                          "Check",
                                          "CreditCardCharge",
                                          "Invoice",
                                          "SalesReceipt",
                                          "JournalEntry",
                                          "CreditMemo",
                                          "VendorCredit",
                                          "CreditCardCredit",
                                          "Deposit",
                                          "ReceivePayment",
                                          "BillPaymentCheck",
                                          "BillPaymentCreditCard",
                                          "ItemReceipt",
                                          "Charge",
                                          "InventoryAdjustment"};
  std::string answers;
  std::string counts = "1 CompanyRet, ";
  for (const std::string& kind : kinds) {
    answers += fmt::format(
        "<{0}QueryRs><{0}Ret><TxnID>1</TxnID><TxnDate>2002-01-01</TxnDate></{0}Ret></{0}QueryRs>", kind);
    counts += fmt::format("1 {}Ret, ", kind);
  }
  EXPECT_EQ(company.Load("all.xml", Response(answers), UnknownKinds::Refuse).added.size(), kinds.size());
  EXPECT_EQ(CountsText(company.Info().records), counts);
  EXPECT_EQ(company.Load("all.xml", Response(answers)).replaced.size(), kinds.size());
  for (std::size_t kind = 5; kind < kinds.size(); ++kind) {
    EXPECT_NE(company.Answer(Request("1.1", "<" + kinds[kind] + "QueryRq/>")).find("statusCode=\"1030\""),
              std::string::npos)
        << kinds[kind];
  }
}

TEST_F(CompanyLoad, NamesALineBeyond65535) {
  const std::string document = Accounts(std::string(100'000, '\n') + "<AccountRet/>");
  EXPECT_EQ(ThrownError([&] { company.Load("long.xml", document); }).Description(),
            "long.xml, line 100005: AccountRet has no ListID");
}

TEST_F(CompanyLoad, RefusesDeclaredEntities) {
  EXPECT_EQ(ThrownError([&] {
              company.Load("bomb.xml", "<!DOCTYPE QBXML [<!ENTITY a \"b\">]><QBXML>&a;</QBXML>");
            }).Number(),
            company_error::cannotParse);
}

TEST_F(CompanyLoad, IsStoredInTheFile) {
  company.Load("first.xml", Accounts(Account("a", "Income")));
  const CompanyFile again = CompanyFile::Open(folder / "company.qbw", FileAccess::ReadOnly);
  EXPECT_EQ(again.Answer(Request("1.0", "<AccountQueryRq/>")),
            company.Answer(Request("1.0", "<AccountQueryRq/>")));
  EXPECT_EQ(Texts("//ListID"), Values{"a"});
}

TEST_F(CompanyLoad, AnswersTwentyThousandAccountsInOrder) {
  std::string records;
  std::string expected;
  for (int account = 0; account < 20'000; ++account) {
    const std::string parent = account % 100 == 0 ? "" : fmt::format("a{}", account - account % 100);
    const std::string record = Account(fmt::format("a{}", account), "Expense", parent);
    expected += record;
    records += record;
  }
  company.Load("accounts.xml", Accounts(records));
  EXPECT_NE(company.Answer(Request("1.0", "<AccountQueryRq/>")).find(expected), std::string::npos);
}

}  // namespace
}  // namespace krnqb::company
