#include <map>
#include <optional>

#include "company/records/document.h"
#include "company/records/errors.h"
#include "fuzz/companies.h"
#include "fuzz/input.h"

// Documents loaded into a company: the input is the document. Every input begins with an empty company, since
// its transaction is never committed.

namespace krnqb::fuzz {
namespace {

using company::Database;
using company::RecordStore;

// The lists, transactions and settings of a company, and reports on them.
constexpr std::string_view records = R"(<AccountQueryRq></AccountQueryRq><ItemQueryRq></ItemQueryRq>
<BillQueryRq><IncludeLineItems>1</IncludeLineItems></BillQueryRq>
<CheckQueryRq><IncludeLineItems>1</IncludeLineItems></CheckQueryRq>
<CreditCardChargeQueryRq><IncludeLineItems>1</IncludeLineItems></CreditCardChargeQueryRq>
<InvoiceQueryRq><IncludeLineItems>1</IncludeLineItems></InvoiceQueryRq>
<SalesReceiptQueryRq><IncludeLineItems>1</IncludeLineItems></SalesReceiptQueryRq>
<CompanyQueryRq/><PreferencesQueryRq/>)";
constexpr std::size_t recordRequests = 9;
constexpr std::string_view reports = R"(<BillQueryRq/><InvoiceQueryRq/>
<GeneralSummaryReportQueryRq><GeneralSummaryReportType>ProfitAndLossStandard</GeneralSummaryReportType><ReportPeriod><FromReportDate>2002-01-01</FromReportDate><ToReportDate>2002-12-31</ToReportDate></ReportPeriod><ReportAccountFilter><AccountTypeFilter>OrdinaryExpense</AccountTypeFilter></ReportAccountFilter><SummarizeColumnsBy>Month</SummarizeColumnsBy></GeneralSummaryReportQueryRq>
<GeneralSummaryReportQueryRq><GeneralSummaryReportType>ProfitAndLossStandard</GeneralSummaryReportType><ReportPeriod><FromReportDate>2002-01-01</FromReportDate><ToReportDate>2002-12-31</ToReportDate></ReportPeriod><ReportAccountFilter><AccountTypeFilter>OrdinaryIncome</AccountTypeFilter></ReportAccountFilter><SummarizeColumnsBy>Month</SummarizeColumnsBy></GeneralSummaryReportQueryRq>
<GeneralSummaryReportQueryRq><GeneralSummaryReportType>BalanceSheetStandard</GeneralSummaryReportType><ReportPeriod><ToReportDate>2002-12-31</ToReportDate></ReportPeriod><ReportAccountFilter><AccountTypeFilter>Bank</AccountTypeFilter></ReportAccountFilter></GeneralSummaryReportQueryRq>)";
constexpr std::size_t reportRequests = 5;

std::string Answer(const Database& database, std::string_view messages) {
  return company::AnswerRequests(database, "2.0", company::ParseRequests(RequestDocument(messages), "2.0"));
}

// Loads a document and returns how many records were in it and how many of them are new.
struct Loaded {
  std::size_t records = 0;
  std::size_t added = 0;
};
Loaded Load(const Database& database, const std::string& document) {
  Loaded loaded;
  RecordStore store(database);
  company::ReadDocument(
      "books.xml", BytesOf(document),
      [&](company::CompanyRecord&& record) {
        ++loaded.records;
        if (store.Put(record) == company::PutResult::Added) ++loaded.added;
      },
      [](std::string_view /*element*/) {});
  store.OrderLists();
  return loaded;
}

std::int64_t CountOf(const Database& database) {
  return database.Integer("SELECT count(*) FROM record");
}

// Some kinds of transactions are only added up: no request is answered with them.
std::int64_t CountOfAnswered(const Database& database) {
  return database.Integer(
      "SELECT count(*) FROM record WHERE family NOT IN ('JournalEntry', 'CreditMemo', 'VendorCredit',"
      " 'CreditCardCredit', 'Deposit', 'ReceivePayment', 'BillPaymentCheck', 'BillPaymentCreditCard',"
      " 'ItemReceipt', 'Charge', 'InventoryAdjustment')");
}

// The postings passed one by one add up to the sums of the reports. Costs may be beyond 64 bits: the database
// then refuses to add them up.
void RequireEqualSums(const Database& database) {
  std::map<std::string, std::uint64_t, std::less<>> entries;
  company::ReadLedgerEntries(database, "", "9999-12-31", [&](const company::LedgerEntry& entry) {
    const bool isIncome = entry.accountType == "Income" || entry.accountType == "OtherIncome";
    const auto amount = static_cast<std::uint64_t>(entry.amount);
    entries[entry.accountId] += isIncome ? 0 - amount : amount;
  });
  std::map<std::string, std::uint64_t, std::less<>> sums;
  for (const std::string_view type :
       {"Income", "CostOfGoodsSold", "Expense", "OtherIncome", "OtherExpense"}) {
    std::optional<company::PostedAmounts> posted;
    if (ErrorOf([&] { posted = company::LedgerReader(database, type).Between("", "9999-12-31"); })) return;
    for (const auto& [account, amount] : *posted) sums.emplace(account, static_cast<std::uint64_t>(amount));
  }
  Require(entries == sums, "entries add up to the reports");
}

void Run(Input input) {
  static const EmptyCompany company;
  static const Database database(company.File(), company::FileAccess::ReadWrite);
  company::Transaction transaction(database);
  const std::int64_t before = CountOf(database);

  Loaded loaded;
  const auto refusal = ErrorOf([&] { loaded = Load(database, input.Rest()); });
  if (refusal) {
    Require(refusal->Number() == company::company_error::cannotParse, "only a faulty document is refused",
            refusal->Description());
    Require(refusal->Description().starts_with("books.xml, line "), "a fault is reported with its line",
            refusal->Description());
    return;
  }
  Require(CountOf(database) == before + static_cast<std::int64_t>(loaded.added), "every record is stored");
  const std::string answer = Answer(database, records);
  RequireAnswer(answer, recordRequests);
  RequireAnswer(Answer(database, reports), reportRequests);
  RequireEqualSums(database);

  // What a company answers is a document that replaces every record by itself.
  const Loaded again = Load(database, answer);
  Require(again.added == 0, "an answer holds no new records", answer);
  Require(static_cast<std::int64_t>(again.records) == CountOfAnswered(database),
          "an answer holds every record", answer);
  const std::string answerAgain = Answer(database, records);
  Require(answerAgain == answer, "a record loaded again is the same record", answer + answerAgain);
}

}  // namespace
}  // namespace krnqb::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  krnqb::fuzz::Run({data, size});
  return 0;
}
