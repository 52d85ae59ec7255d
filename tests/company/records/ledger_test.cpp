#include "company/records/ledger.h"

#include "company/records/errors.h"
#include "company/reports/testing.h"

namespace krnqb::company {
namespace {

using testing::AccountDocument;
using testing::Element;
using testing::ExpenseLine;
using testing::ItemLine;
using testing::Reference;
using testing::Response;
using testing::TransactionDocument;
using testing::TransactionRecord;

const std::string invoice =
    TransactionRecord("Invoice", "1-1", "2002-01-31",
                      Reference("ARAccountRef", "due") + Element("Subtotal", "30.00") +
                          ItemLine("InvoiceLineRet", "pot", "30.00", "3"));

std::string ItemDocument(std::string_view kind, std::string_view content) {
  return Response(Element("ItemQueryRs", Element(kind, Element("ListID", "pot") + std::string(content))));
}

std::string Stocked(std::string_view averageCost) {
  return ItemDocument("ItemInventoryRet",
                      Reference("IncomeAccountRef", "sales") + Reference("COGSAccountRef", "cost") +
                          Reference("AssetAccountRef", "stock") + Element("AverageCost", averageCost));
}

class CompanyLedger : public testing::CompanyTest {
 protected:
  CompanyLedger() {
    company.Load("accounts.xml", AccountDocument({{"bank", "Bank", "Bank"},
                                                  {"due", "AccountsReceivable", "Due"},
                                                  {"stock", "OtherCurrentAsset", "Stock"},
                                                  {"sales", "Income", "Sales"},
                                                  {"fees", "Income", "Fees"},
                                                  {"cost", "CostOfGoodsSold", "Cost"},
                                                  {"rent", "Expense", "Rent"},
                                                  {"fuel", "Expense", "Fuel"}}));
  }

  Database Reader() const { return Database(folder / "company.qbw", FileAccess::ReadOnly); }

  PostedAmounts Posted(std::string_view type) const {
    const Database database = Reader();
    return LedgerReader(database, type).Between("2002-01-01", "2002-12-31");
  }

  CompanyFile company = NewCompany("2.0");
};

TEST_F(CompanyLedger, SumsAPeriodInclusively) {
  std::string checks;
  int id = 0;
  for (const std::string_view day : {"2001-12-31", "2002-01-01", "2002-01-31", "2002-02-01"}) {
    checks += TransactionRecord(
        "Check", std::to_string(++id), day,
        Reference("AccountRef", "bank") + Element("Amount", "1.00") + ExpenseLine("rent", "1.00"));
  }
  company.Load("checks.xml", TransactionDocument("Check", checks));
  const Database database = Reader();
  LedgerReader expenses(database, "Expense");
  EXPECT_EQ(expenses.Between("2002-01-01", "2002-01-31"), (PostedAmounts{{"rent", 200}}));
  EXPECT_EQ(expenses.Between("2002-02-02", "2002-12-31"), PostedAmounts{});
  EXPECT_EQ(expenses.After("2002-01-01"), (PostedAmounts{{"rent", 200}}));
  EXPECT_EQ(LedgerReader(database, "Bank").After("2001-12-30"), (PostedAmounts{{"bank", -400}}));
  EXPECT_EQ(LedgerReader(database, "Income").After("2001-12-30"), PostedAmounts{});
}

TEST_F(CompanyLedger, HasTheFirstAndLastDay) {
  EXPECT_FALSE(ReadLedgerDays(Reader()).has_value());
  company.Load("checks.xml",
               TransactionDocument("Check", TransactionRecord("Check", "1", "2002-05-17", "") +
                                                TransactionRecord("Check", "2", "2001-02-28", "")));
  const std::optional<LedgerDays> days = ReadLedgerDays(Reader());
  ASSERT_TRUE(days.has_value());
  EXPECT_EQ(days->first, "2001-02-28");
  EXPECT_EQ(days->last, "2002-05-17");
}

TEST_F(CompanyLedger, PostsToTheCurrentAccountsOfAnItem) {
  company.Load("invoices.xml", TransactionDocument("Invoice", invoice));
  EXPECT_EQ(Posted("Income"), PostedAmounts{});
  EXPECT_EQ(Posted("AccountsReceivable"), (PostedAmounts{{"due", 3000}}));

  company.Load("items.xml", Stocked("2.50"));
  EXPECT_EQ(Posted("Income"), (PostedAmounts{{"sales", -3000}}));
  EXPECT_EQ(Posted("CostOfGoodsSold"), (PostedAmounts{{"cost", 750}}));
  EXPECT_EQ(Posted("OtherCurrentAsset"), (PostedAmounts{{"stock", -750}}));

  company.Load("items.xml", Stocked("4.00"));
  EXPECT_EQ(Posted("CostOfGoodsSold"), (PostedAmounts{{"cost", 1200}}));

  company.Load("items.xml",
               ItemDocument("ItemServiceRet", Element("SalesOrPurchase", Reference("AccountRef", "fees"))));
  EXPECT_EQ(Posted("Income"), (PostedAmounts{{"fees", -3000}}));
  EXPECT_EQ(Posted("CostOfGoodsSold"), PostedAmounts{});
}

TEST_F(CompanyLedger, RoundsTheCostOfEachLine) {
  company.Load("items.xml", Stocked("0.337"));
  const std::string line = ItemLine("InvoiceLineRet", "pot", "1.00", "1");
  company.Load("invoices.xml",
               TransactionDocument("Invoice", TransactionRecord("Invoice", "1", "2002-01-31", line + line) +
                                                  TransactionRecord("Invoice", "2", "2002-01-31", line)));
  EXPECT_EQ(Posted("CostOfGoodsSold"), (PostedAmounts{{"cost", 102}}));
  EXPECT_EQ(Posted("OtherCurrentAsset"), (PostedAmounts{{"stock", -102}}));
}

TEST_F(CompanyLedger, CountsFractionsAndReturnedPieces) {
  company.Load("items.xml", Stocked("2.50"));
  company.Load("invoices.xml",
               TransactionDocument("Invoice",
                                   TransactionRecord("Invoice", "1", "2002-01-31",
                                                     ItemLine("InvoiceLineRet", "pot", "9.00", "1.5") +
                                                         ItemLine("InvoiceLineRet", "pot", "-20.00", "-2"))));
  EXPECT_EQ(Posted("CostOfGoodsSold"), (PostedAmounts{{"cost", 375 - 500}}));
  EXPECT_EQ(Posted("Income"), (PostedAmounts{{"sales", 1100}}));
}

TEST_F(CompanyLedger, RemovesThePostingsOfAReplacedRecord) {
  const auto load = [&](std::string_view date, std::string_view lines) {
    company.Load("bills.xml", TransactionDocument("Bill", TransactionRecord("Bill", "1-1", date, lines)));
  };
  load("2002-03-01", ExpenseLine("rent", "10.00") + ExpenseLine("fuel", "5.00"));
  EXPECT_EQ(Posted("Expense"), (PostedAmounts{{"fuel", 500}, {"rent", 1000}}));
  load("2002-04-01", ExpenseLine("rent", "12.00"));
  EXPECT_EQ(Posted("Expense"), (PostedAmounts{{"rent", 1200}}));
  load("2003-04-01", ExpenseLine("rent", "12.00"));
  EXPECT_EQ(Posted("Expense"), PostedAmounts{});
}

TEST_F(CompanyLedger, IsUnchangedByAFailedLoad) {
  company.Load("bills.xml", TransactionDocument("Bill", TransactionRecord("Bill", "1-1", "2002-03-01",
                                                                          ExpenseLine("rent", "10.00"))));
  const std::string replacement =
      TransactionRecord("Bill", "1-1", "2002-03-01", ExpenseLine("rent", "99.00")) + "<BillRet/>";
  EXPECT_EQ(
      tests::ThrownError([&] { company.Load("bad.xml", TransactionDocument("Bill", replacement)); }).Number(),
      company_error::cannotParse);
  EXPECT_EQ(Posted("Expense"), (PostedAmounts{{"rent", 1000}}));
}

TEST_F(CompanyLedger, StoresRecordsOneByOne) {
  const RecordKind* const kind = FindRecordKind("CheckRet");
  ASSERT_NE(kind, nullptr);
  const auto check = [&](std::string key, std::int64_t amount) {
    PostingList postings(*kind);
    postings.AddAccountLine("rent", amount);
    postings.AddTotal("bank", amount);
    CompanyRecord record;
    record.kind = kind;
    record.key = std::move(key);
    record.date = "2002-06-15";
    record.text.xml = "<CheckRet>\n</CheckRet>\n";
    record.postings = postings.Take();
    return record;
  };
  const LoadSummary summary = company.Store("checks", [&](const RecordReceiver& receive) {
    receive(check("1", 100));
    receive(check("2", 20));
    receive(check("1", 3));
  });
  ASSERT_EQ(summary.added.size(), 1U);
  EXPECT_EQ(summary.added[0].count, 2);
  EXPECT_EQ(summary.replaced.at(0).count, 1);
  EXPECT_EQ(Posted("Expense"), (PostedAmounts{{"rent", 23}}));
  EXPECT_EQ(Posted("Bank"), (PostedAmounts{{"bank", -23}}));

  EXPECT_EQ(tests::ThrownError([&] {
              company.Store("checks", [&](const RecordReceiver& receive) {
                receive(check("9", 100));
                throw Error(error_number::overflow, "Overflow");
              });
            }).Number(),
            error_number::overflow);
  EXPECT_EQ(Posted("Expense"), (PostedAmounts{{"rent", 23}}));
}

}  // namespace
}  // namespace krnqb::company
