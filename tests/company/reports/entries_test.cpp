#include "company/reports/entries.h"

#include <filesystem>
#include <map>

#include "build_paths.h"
#include "company/reports/testing.h"
#include "sample_company/generator.h"

namespace krnqb::company {
namespace {

using testing::AccountDocument;
using testing::Element;
using testing::ExpenseLine;
using testing::ItemLine;
using testing::ProfitAndLossRequest;
using testing::Reference;
using testing::Response;
using testing::TransactionDocument;
using testing::TransactionRecord;

using Texts = std::vector<std::string>;

// Formats an entry as "2002-01-31 BillRet 1 R-1 Oak | ExpenseLineRet 1-1 | Expense rent 20.00".
std::string TextOf(const LedgerEntry& entry) {
  std::string text = fmt::format("{} {} {}", entry.date, entry.kind, entry.transactionId);
  for (const std::string& part : {entry.referenceNumber, entry.name}) {
    if (!part.empty()) text += " " + part;
  }
  text += " |";
  for (const std::string& part : {entry.lineElement, entry.lineId}) {
    if (!part.empty()) text += " " + part;
  }
  if (entry.inItemGroup) text += " in group";
  text += " |";
  if (!entry.itemId.empty()) text += fmt::format(" {} ->", entry.itemId);
  text += fmt::format(" {} {} {}", entry.accountType, entry.accountId, entry.amount);
  if (entry.cost) text += fmt::format(" = {:g} x {:g}", entry.cost->quantity, entry.cost->unitCost);
  return text;
}

class CompanyEntries : public testing::CompanyTest {
 protected:
  CompanyEntries() {
    company.Load("accounts.xml", AccountDocument({{"bank", "Bank", "Bank"},
                                                  {"due", "AccountsReceivable", "Due"},
                                                  {"stock", "OtherCurrentAsset", "Stock"},
                                                  {"sales", "Income", "Sales"},
                                                  {"cost", "CostOfGoodsSold", "Cost"},
                                                  {"rent", "Expense", "Rent"},
                                                  {"interest", "OtherIncome", "Interest"},
                                                  {"loss", "OtherExpense", "Loss"}}));
    company.Load("items.xml",
                 Response(Element(
                     "ItemQueryRs",
                     Element("ItemInventoryRet",
                             Element("ListID", "pot") + Reference("IncomeAccountRef", "sales") +
                                 Reference("COGSAccountRef", "cost") + Reference("AssetAccountRef", "stock") +
                                 Element("AverageCost", "2.125")))));
  }

  void Load(std::string_view kind, std::string_view id, std::string_view date, std::string_view content) {
    company.Load("document.xml", TransactionDocument(kind, TransactionRecord(kind, id, date, content)));
  }

  Texts Entries(std::string_view first = "2002-01-01", std::string_view last = "2002-12-31") const {
    Texts texts;
    company.ReadLedgerEntries(first, last, [&](const LedgerEntry& entry) { texts.push_back(TextOf(entry)); });
    return texts;
  }

  CompanyFile company = NewCompany("1.0");
};

std::string Named(std::string_view reference, std::string_view name) {
  return Element(reference, Element("ListID", "x") + Element("FullName", name));
}

TEST_F(CompanyEntries, SayWhatTransactionAndLinePostsToWhatAccount) {
  Load("Invoice", "1", "2002-02-28",
       Named("CustomerRef", "Oak") + Reference("ARAccountRef", "due") + Element("RefNumber", "R-1") +
           Element("Subtotal", "30.00") +
           Element("InvoiceLineGroupRet",
                   Reference("ItemGroupRef", "kit") +
                       Element("InvoiceLineRet", Element("TxnLineID", "1-1") + Reference("ItemRef", "pot") +
                                                     Element("Quantity", "3") + Element("Amount", "30.00"))));
  Load("JournalEntry", "2", "2002-01-31",
       Element("JournalDebitLine", Element("TxnLineID", "2-1") + Reference("AccountRef", "loss") +
                                       Element("Amount", "4.00") + Named("EntityRef", "Elm")) +
           Element("JournalCreditLine", Element("TxnLineID", "2-2") + Reference("AccountRef", "interest") +
                                            Element("Amount", "4.00")));
  Load(
      "ReceivePayment", "3", "2002-03-01",
      Named("CustomerRef", "Oak") + Element("AppliedToTxnRet", Element("DiscountAmount", "1.50") +
                                                                   Reference("DiscountAccountRef", "sales")));
  const std::string sold = "2002-02-28 InvoiceRet 1 R-1 Oak | InvoiceLineRet 1-1 in group | pot -> ";
  EXPECT_EQ(Entries(),
            (Texts{"2002-01-31 JournalEntryRet 2 Elm | JournalDebitLine 2-1 | OtherExpense loss 400",
                   "2002-01-31 JournalEntryRet 2 | JournalCreditLine 2-2 | OtherIncome interest 400",
                   sold + "Income sales 3000", sold + "CostOfGoodsSold cost 638 = 3 x 212.5",
                   "2002-03-01 ReceivePaymentRet 3 Oak | | Income sales -150"}));
}

TEST_F(CompanyEntries, LackPendingSalesWhichAreListedInstead) {
  const std::string line = ItemLine("InvoiceLineRet", "pot", "30.00", "3");
  Load("Invoice", "1", "2002-02-28", Element("IsPending", "true") + line);
  Load("Invoice", "2", "2002-02-28", Element("IsPending", "false") + line);
  Load("Invoice", "3", "2002-02-28", Element("IsPending", "false"));
  Load("Invoice", "4", "2002-03-01", Element("IsPending", "true") + line);
  Load("SalesReceipt", "5", "2002-02-01", Element("IsPending", "true"));
  EXPECT_EQ(company.PendingSales("2002-02-01", "2002-02-28"), (Texts{"1", "5"}));
}

TEST_F(CompanyEntries, ReturnAGoodWithItsCost) {
  Load("CreditMemo", "1", "2002-02-28", ItemLine("CreditMemoLineRet", "pot", "30.00", "3"));
  EXPECT_EQ(
      Entries(),
      (Texts{
          "2002-02-28 CreditMemoRet 1 | CreditMemoLineRet | pot -> Income sales -3000",
          "2002-02-28 CreditMemoRet 1 | CreditMemoLineRet | pot -> CostOfGoodsSold cost -638 = -3 x 212.5"}));
}

TEST_F(CompanyEntries, NameTheChargeAsItsLine) {
  Load("Charge", "1", "2002-02-28", Reference("ItemRef", "pot") + Element("Amount", "10.00"));
  EXPECT_EQ(Entries(),
            (Texts{"2002-02-28 ChargeRet 1 | ChargeRet | pot -> Income sales 1000",
                   "2002-02-28 ChargeRet 1 | ChargeRet | pot -> CostOfGoodsSold cost 213 = 1 x 212.5"}));
}

TEST_F(CompanyEntries, ComeByDateAndThenInTheOrderOfLoading) {
  const auto rent = [](std::string_view amount) { return ExpenseLine("rent", amount); };
  Load("Check", "c1", "2002-05-02", rent("1.00"));
  Load("Bill", "b1", "2002-05-02", rent("2.00"));
  Load("Check", "c2", "2002-05-01", rent("3.00"));
  Load("Bill", "b2", "2002-05-02", rent("4.00"));
  Load("Check", "c1", "2002-05-02", rent("5.00"));
  Load("Check", "early", "2001-12-31", rent("9.00"));
  Load("Check", "late", "2003-01-01", rent("9.00"));
  EXPECT_EQ(Entries(), (Texts{"2002-05-01 CheckRet c2 | ExpenseLineRet | Expense rent 300",
                              "2002-05-02 CheckRet c1 | ExpenseLineRet | Expense rent 500",
                              "2002-05-02 BillRet b1 | ExpenseLineRet | Expense rent 200",
                              "2002-05-02 BillRet b2 | ExpenseLineRet | Expense rent 400"}));
  EXPECT_EQ(Entries("2002-05-02", "2002-05-01"), Texts());
}

TEST_F(CompanyEntries, LeaveOutOtherAccountsAndMissingOnes) {
  Load("Bill", "1", "2002-05-02",
       Reference("APAccountRef", "due") + Element("AmountDue", "5.00") + ExpenseLine("bank", "1.00") +
           ExpenseLine("missing", "1.00") + ItemLine("ItemLineRet", "pot", "1.00", "1") +
           ItemLine("ItemLineRet", "missing", "1.00", "1") + ExpenseLine("rent", "0.00"));
  EXPECT_EQ(Entries(), Texts{"2002-05-02 BillRet 1 | ExpenseLineRet | Expense rent 0"});
}

TEST_F(CompanyEntries, RoundACostAsTheReportsDo) {
  for (const std::string_view quantity :
       {"0.002352941176470588", "-0.002352941176470588", "1e300", "-1e300"}) {
    SCOPED_TRACE(quantity);
    Load("Invoice", "1", "2002-02-28", ItemLine("InvoiceLineRet", "pot", "1.00", quantity));
    std::int64_t cost = 0;
    company.ReadLedgerEntries("2002-01-01", "2002-12-31", [&](const LedgerEntry& entry) {
      if (entry.cost) cost = entry.amount;
    });
    const Database database(folder / "company.qbw", FileAccess::ReadOnly);
    EXPECT_EQ(LedgerReader(database, "CostOfGoodsSold").Between("2002-01-01", "2002-12-31"),
              (PostedAmounts{{"cost", cost}}));
  }
}

using Sums = std::map<std::string, std::int64_t>;  // by "TYPE ACCOUNT MONTH"

std::string Key(std::string_view type, std::string_view account, std::string_view month) {
  return fmt::format("{} {} {}", type, account, month);
}

// What the company's entries of a year add up to.
Sums SumsOfEntries(const CompanyFile& company, const std::string& year) {
  Sums sums;
  company.ReadLedgerEntries(year + "-01-01", year + "-12-31", [&](const LedgerEntry& entry) {
    sums[Key(entry.accountType, entry.accountId, entry.date.substr(5, 2))] += entry.amount;
  });
  std::erase_if(sums, [](const auto& sum) { return sum.second == 0; });
  return sums;
}

// The same from its profit and loss.
Sums SumsOfProfitAndLoss(const CompanyFile& company, const std::string& year) {
  Sums sums;
  for (const ProfitAndLossAccount& account :
       company.ProfitAndLoss(year + "-01-01", year + "-12-31").accounts) {
    for (std::size_t month = 0; month < account.own.size(); ++month) {
      if (account.own[month] == 0) continue;
      sums[Key(account.type, account.id, fmt::format("{:02}", month + 1))] = account.own[month];
    }
  }
  return sums;
}

std::int64_t Cents(std::string_view amount) {
  std::string digits(amount);
  std::erase(digits, '.');
  return std::stoll(digits);
}

// The same from its summary reports.
Sums SumsOfReports(const CompanyFile& company, const std::string& year) {
  std::map<std::string, std::string> idsByName;
  for (const ProfitAndLossAccount& account :
       company.ProfitAndLoss(year + "-12-31", year + "-01-01").accounts) {
    idsByName[std::string(account.type) + " " + account.fullName] = account.id;
  }
  Sums sums;
  for (const std::string type : {"Income", "CostOfGoodsSold", "Expense", "OtherIncome", "OtherExpense"}) {
    const XmlElement report =
        XmlElement::Parse(company.Answer(ProfitAndLossRequest(type, year + "-01-01", year + "-12-31")));
    for (const XmlElement& row : report.SelectAll("//DataRow")) {
      const std::string id = idsByName.at(type + " " + row.Child("RowData").Attribute("value").value_or(""));
      const std::vector<XmlElement> cells = row.SelectAll("ColData[@colID > 1]");
      for (std::size_t month = 0; month < 12; ++month) {
        const std::int64_t amount = Cents(cells.at(month).Attribute("value").value_or(""));
        if (amount != 0) sums[Key(type, id, fmt::format("{:02}", month + 1))] = amount;
      }
    }
  }
  return sums;
}

void ExpectEqualSums(const CompanyFile& company, const std::string& year) {
  const Sums entries = SumsOfEntries(company, year);
  EXPECT_GT(entries.size(), 20U);
  EXPECT_EQ(entries, SumsOfProfitAndLoss(company, year));
  if (company.ProcessorVersion() != "2.0") return;
  EXPECT_EQ(entries, SumsOfReports(company, year));
}

TEST_F(CompanyEntries, AddUpToTheReportsOfTheSamples) {
  const std::filesystem::path samples = tests::SamplesFolder();
  const std::vector<std::vector<std::string>> companies = {
      {"nursery"}, {"nursery", "nursery-books"}, {"print-shop"}, {"bookkeeper"}};
  for (const std::vector<std::string>& folders : companies) {
    SCOPED_TRACE(folders.back());
    const std::filesystem::path file = folder / (folders.back() + ".qbw");
    CompanyFile sample = CompanyFile::Create(file, "Sample", 1, "2.0");
    for (const std::string& each : folders) {
      for (const auto& document : std::filesystem::directory_iterator(samples / each)) {
        sample.Load(document.path().filename().string(), tests::ReadText(document.path()),
                    UnknownKinds::Refuse);
      }
    }
    ExpectEqualSums(sample, "2002");
  }
}

TEST_F(CompanyEntries, AddUpToTheReportsOfGeneratedCompanies) {
  for (const std::uint64_t seed : {1U, 2U, 3U}) {
    SCOPED_TRACE(seed);
    const std::filesystem::path file = folder / fmt::format("generated-{}.qbw", seed);
    sample_company::GeneratorSettings settings;
    settings.transactions = 400;
    settings.seed = seed;
    settings.processorVersion = seed == 1 ? "1.1" : "2.0";
    sample_company::GenerateCompany(file, settings);
    const CompanyFile generated = CompanyFile::Open(file, FileAccess::ReadOnly);
    ExpectEqualSums(generated, "2001");
    ExpectEqualSums(generated, "2002");
  }
}

}  // namespace
}  // namespace krnqb::company
