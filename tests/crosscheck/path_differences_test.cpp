#include <fmt/format.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "company/file.h"
#include "company/testing.h"
#include "crosscheck/two_paths.h"

// The differences between an import from transactions and one from reports. Each company is minimal; amounts
// that are not named agree.

namespace krnqb::crosscheck {
namespace {

using company::CompanyFile;
using company::testing::Response;
using tests::TemporaryFolder;

std::string Element(std::string_view name, std::string_view content) {
  return fmt::format("<{0}>{1}</{0}>", name, content);
}

std::string Reference(std::string_view name, std::string_view id) {
  return Element(name, Element("ListID", id));
}

std::string Account(std::string_view id, std::string_view type, std::string_view name,
                    std::string_view parent = {}, std::string_view balance = "0.00") {
  return Element("AccountRet", Element("ListID", id) + Element("Name", name) +
                                   (parent.empty() ? std::string() : Reference("ParentRef", parent)) +
                                   Element("Sublevel", parent.empty() ? "0" : "1") +
                                   Element("AccountType", type) + Element("Balance", balance));
}

std::string ExpenseLine(std::string_view account, std::string_view amount, std::string_view customer = {}) {
  return Element("ExpenseLineRet",
                 Reference("AccountRef", account) + Element("Amount", amount) +
                     (customer.empty() ? std::string() : Reference("CustomerRef", customer)));
}

std::string ItemLine(std::string_view element, std::string_view item, std::string_view amount,
                     std::string_view quantity) {
  return Element(element,
                 Reference("ItemRef", item) + Element("Quantity", quantity) + Element("Amount", amount));
}

std::string Bill(std::string_view id, std::string_view date, std::string_view lines) {
  return Element("BillRet", Element("TxnID", id) + Element("TxnDate", date) + std::string(lines));
}

std::string Invoice(std::string_view id, std::string_view date, std::string_view lines) {
  return Element("InvoiceRet", Element("TxnID", id) + Reference("CustomerRef", "CU-1") +
                                   Element("TxnDate", date) + std::string(lines));
}

/// Accounts of each kind, and service, non-inventory, inventory, discount and group items.
class PathDifferences : public testing::Test {
 protected:
  PathDifferences() {
    accounts = Account("IN-1", "Income", "Services") + Account("IN-2", "Income", "Discounts") +
               Account("CO-1", "CostOfGoodsSold", "Plants") + Account("EX-1", "Expense", "Supplies") +
               Account("EX-2", "Expense", "Facilities") + Account("EX-3", "Expense", "Rent", "EX-2") +
               Account("AS-1", "OtherCurrentAsset", "Inventory Asset");
    items = Element("ItemServiceRet",
                    Element("ListID", "IT-1") + Element("SalesOrPurchase", Reference("AccountRef", "IN-1"))) +
            Element("ItemNonInventoryRet",
                    Element("ListID", "IT-2") +
                        Element("SalesAndPurchase", Reference("IncomeAccountRef", "IN-1") +
                                                        Reference("ExpenseAccountRef", "EX-1"))) +
            Element("ItemInventoryRet", Element("ListID", "IT-3") + Reference("IncomeAccountRef", "IN-1") +
                                            Reference("COGSAccountRef", "CO-1") +
                                            Reference("AssetAccountRef", "AS-1") +
                                            Element("AverageCost", "2.55")) +
            Element("ItemDiscountRet", Element("ListID", "IT-4") + Reference("AccountRef", "IN-2")) +
            Element("ItemGroupRet", Element("ListID", "GR-1"));
  }

  /// Returns the amounts from transactions less those from reports.
  std::map<std::string, double> Compare() const {
    const TemporaryFolder folder;
    Make(folder / "transactions.qbw", "1.1");
    Make(folder / "reports.qbw", "2.0");
    return Differences(ImportedAmounts(folder / "transactions.qbw", folder.Path()),
                       ImportedAmounts(folder / "reports.qbw", folder.Path()));
  }

  std::string accounts;
  std::string items;
  std::string bills;
  std::string invoices;

 private:
  void Make(const std::filesystem::path& file, std::string_view processorVersion) const {
    CompanyFile company = CompanyFile::Create(file, "Small Company", 1, processorVersion);
    company.Load("the company",
                 Response(Element("AccountQueryRs", accounts) + Element("ItemQueryRs", items) +
                          Element("BillQueryRs", bills) + Element("InvoiceQueryRs", invoices)));
  }
};

using Amounts = std::map<std::string, double>;

TEST_F(PathDifferences, DoNotOccurForPlainPurchasesAndSales) {
  bills = Bill("B-1", "2002-02-10", ExpenseLine("EX-1", "75.00") + ExpenseLine("EX-3", "12.34"));
  invoices = Invoice("I-1", "2002-04-20", ItemLine("InvoiceLineRet", "IT-1", "100.10", "3"));
  EXPECT_EQ(Compare(), Amounts{});
}

// An expense that is invoiced at exactly its amount is deducted in the month of the invoice if imported from
// transactions, but not in reports. With a markup it is not recognised.
TEST_F(PathDifferences, OccurForExpensesInvoicedExactly) {
  bills =
      Bill("B-1", "2002-02-10", ExpenseLine("EX-1", "75.00", "CU-1") + ExpenseLine("EX-1", "40.00", "CU-1"));
  const auto billed = [](std::string_view amount) {
    return Element("InvoiceLineGroupRet",
                   Reference("ItemGroupRef", "GR-1") + Element("InvoiceLineRet", Element("Amount", amount)));
  };
  invoices = Invoice("I-1", "2002-04-20", billed("75.00") + billed("44.00"));
  EXPECT_EQ(Compare(), (Amounts{{"expenses/Supplies 4", -75.0}}));
}

// Reports round the cost of a sale to the cent and include it even for goods sold at 0.00; transactions use
// unrounded quantities and skip a line of 0.00.
TEST_F(PathDifferences, OccurForFractionalCostsAndForGoodsGivenAway) {
  invoices = Invoice("I-1", "2002-05-20", ItemLine("InvoiceLineRet", "IT-3", "9.00", "3")) +
             Invoice("I-2", "2002-06-20", ItemLine("InvoiceLineRet", "IT-3", "1.00", "0.25")) +
             Invoice("I-3", "2002-07-20", ItemLine("InvoiceLineRet", "IT-3", "0.00", "2"));
  const Amounts differences = Compare();
  ASSERT_EQ(differences.size(), 2U);
  EXPECT_NEAR(differences.at("costs/Plants 6"), 0.6375 - 0.64, 1e-12);
  EXPECT_EQ(differences.at("costs/Plants 7"), -5.10);
}

// Lines inside an item group are included in sales but not in purchases.
TEST_F(PathDifferences, OccurForItemGroupsOnPurchases) {
  bills = Bill("B-1", "2002-03-10",
               ItemLine("ItemLineRet", "IT-2", "10.00", "1") +
                   Element("ItemGroupLineRet", Reference("ItemGroupRef", "GR-1") +
                                                   ItemLine("ItemLineRet", "IT-2", "40.00", "4")));
  invoices = Invoice("I-1", "2002-03-11",
                     Element("InvoiceLineGroupRet", Reference("ItemGroupRef", "GR-1") +
                                                        ItemLine("InvoiceLineRet", "IT-2", "60.00", "4")));
  EXPECT_EQ(Compare(), (Amounts{{"expenses/Supplies 3", -40.0}}));
}

// A report has a parent's own postings in a separate row and in the parent's sum; both are added.
TEST_F(PathDifferences, OccurForParentsWithPostings) {
  bills = Bill("B-1", "2002-08-10", ExpenseLine("EX-2", "30.00") + ExpenseLine("EX-3", "100.00"));
  EXPECT_EQ(Compare(), (Amounts{{"expenses/Facilities 8", -30.0}}));
}

// Without transactions the account stays at 0, so its balance is spread over the months with activity.
TEST_F(PathDifferences, OccurForUnpostedExpenseBalances) {
  accounts += Account("EX-4", "Expense", "Insurance", "", "1200.00");
  bills = Bill("B-1", "2002-03-10", ExpenseLine("EX-1", "5.00")) +
          Bill("B-2", "2001-03-10", ExpenseLine("EX-4", "1200.00"));
  EXPECT_EQ(Compare(), (Amounts{{"expenses/Insurance 1", 400.0},
                                {"expenses/Insurance 2", 400.0},
                                {"expenses/Insurance 3", 400.0}}));
}

// A discount item stores its account in another element than sold items, so its line has no account.
TEST_F(PathDifferences, OccurForDiscountItems) {
  invoices =
      Invoice("I-1", "2002-09-20",
              ItemLine("InvoiceLineRet", "IT-1", "100.00", "1") +
                  Element("InvoiceLineRet", Reference("ItemRef", "IT-4") + Element("Amount", "-10.00")));
  EXPECT_EQ(Compare(), (Amounts{{"sales/Discounts 9", 10.0}}));
}

// Purchases posted directly to a cost of goods account are only in reports.
TEST_F(PathDifferences, OccurForPurchasesPostedToCostOfGoods) {
  bills = Bill("B-1", "2002-10-10", ExpenseLine("CO-1", "20.00"));
  EXPECT_EQ(Compare(), (Amounts{{"costs/Plants 10", -20.0}}));
}

}  // namespace
}  // namespace krnqb::crosscheck
