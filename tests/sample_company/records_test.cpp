#include <algorithm>
#include <set>

#include "company/records/document.h"
#include "company/records/kinds.h"
#include "sample_company/generator.h"
#include "sample_company/testing.h"

// The records of a generated company.

namespace krnqb::sample_company {
namespace {

using testing::AmountAt;
using testing::FullCompany;
using testing::GeneratedCompany;
using testing::TextAt;

using Names = std::vector<std::string_view>;

// The order of child elements in QuickBooks' answers.
const std::map<std::string, Names, std::less<>>& ElementOrders() {
  static const Names list = {"ListID",   "TimeCreated", "TimeModified", "EditSequence", "Name",
                             "FullName", "IsActive",    "ParentRef",    "Sublevel"};
  static const Names transaction = {"TxnID", "TimeCreated", "TimeModified", "EditSequence", "TxnNumber"};
  const auto after = [](const Names& head, const Names& rest) {
    Names all = head;
    all.insert(all.end(), rest.begin(), rest.end());
    return all;
  };
  static const Names sold = {"SalesDesc", "SalesPrice", "IncomeAccountRef"};
  static const Names item = after(list, {"SalesTaxCodeRef", "SalesOrPurchase", "SalesAndPurchase"});
  static const Names purchase = {"RefNumber", "TxnDate", "Amount", "Memo", "Address", "IsToBePrinted"};
  static const Names lines = {"ExpenseLineRet", "ItemLineRet", "ItemGroupLineRet"};
  static const Names reference = {"ListID", "FullName"};
  static const std::map<std::string, Names, std::less<>> orders = {
      {"AccountRet",
       after(list, {"AccountType", "AccountNumber", "BankNumber", "Desc", "Balance", "TotalBalance"})},
      {"ItemServiceRet", item},
      {"ItemNonInventoryRet", item},
      {"ItemOtherChargeRet", item},
      {"ItemInventoryRet",
       after(after(list, {"SalesTaxCodeRef"}),
             after(sold, {"PurchaseDesc", "PurchaseCost", "COGSAccountRef", "PrefVendorRef",
                          "AssetAccountRef", "ReorderPoint", "QuantityOnHand", "AverageCost",
                          "QuantityOnOrder", "QuantityOnSalesOrder"}))},
      {"ItemSubtotalRet",
       {"ListID", "TimeCreated", "TimeModified", "EditSequence", "Name", "IsActive", "ItemDesc"}},
      {"ItemDiscountRet",
       after(list, {"ItemDesc", "SalesTaxCodeRef", "DiscountRate", "DiscountRatePercent", "AccountRef"})},
      {"ItemGroupRet",
       {"ListID", "TimeCreated", "TimeModified", "EditSequence", "Name", "IsActive", "ItemDesc",
        "IsPrintItemsInGroup", "ItemGroupLine"}},
      {"SalesOrPurchase", {"Desc", "Price", "PricePercent", "AccountRef"}},
      {"SalesAndPurchase",
       after(sold, {"PurchaseDesc", "PurchaseCost", "ExpenseAccountRef", "PrefVendorRef"})},
      {"ItemGroupLine", {"ItemRef", "Quantity"}},
      {"BillRet", after(transaction, {"VendorRef", "APAccountRef", "TxnDate", "DueDate", "AmountDue",
                                      "RefNumber", "TermsRef", "Memo", "IsPaid", "LinkedTxn",
                                      "ExpenseLineRet", "ItemLineRet", "ItemGroupLineRet", "OpenAmount"})},
      {"CheckRet", after(after(transaction, {"AccountRef", "PayeeEntityRef"}), after(purchase, lines))},
      {"CreditCardChargeRet",
       after(after(transaction, {"AccountRef", "PayeeEntityRef", "TxnDate", "Amount", "RefNumber", "Memo"}),
             lines)},
      {"InvoiceRet", after(transaction, {"CustomerRef",
                                         "ClassRef",
                                         "ARAccountRef",
                                         "TxnDate",
                                         "RefNumber",
                                         "BillAddress",
                                         "ShipAddress",
                                         "IsPending",
                                         "PONumber",
                                         "TermsRef",
                                         "DueDate",
                                         "ShipDate",
                                         "Subtotal",
                                         "ItemSalesTaxRef",
                                         "SalesTaxPercentage",
                                         "SalesTaxTotal",
                                         "AppliedAmount",
                                         "BalanceRemaining",
                                         "Memo",
                                         "IsPaid",
                                         "CustomerMsgRef",
                                         "IsToBePrinted",
                                         "LinkedTxn",
                                         "InvoiceLineRet",
                                         "InvoiceLineGroupRet"})},
      {"SalesReceiptRet", after(transaction, {"CustomerRef",
                                              "ClassRef",
                                              "TxnDate",
                                              "RefNumber",
                                              "BillAddress",
                                              "IsPending",
                                              "CheckNumber",
                                              "PaymentMethodRef",
                                              "DueDate",
                                              "ShipDate",
                                              "Subtotal",
                                              "ItemSalesTaxRef",
                                              "SalesTaxPercentage",
                                              "SalesTaxTotal",
                                              "TotalAmount",
                                              "Memo",
                                              "IsToBePrinted",
                                              "DepositToAccountRef",
                                              "SalesReceiptLineRet",
                                              "SalesReceiptLineGroupRet"})},
      {"ExpenseLineRet",
       {"TxnLineID", "AccountRef", "Amount", "Memo", "CustomerRef", "ClassRef", "BillableStatus"}},
      {"ItemLineRet",
       {"TxnLineID", "ItemRef", "Desc", "Quantity", "Cost", "Amount", "CustomerRef", "ClassRef",
        "BillableStatus"}},
      {"ItemGroupLineRet", {"ItemGroupRef", "Desc", "Quantity", "TotalAmount", "ItemLineRet"}},
      {"InvoiceLineRet",
       {"TxnLineID", "ItemRef", "Desc", "Quantity", "Rate", "RatePercent", "ClassRef", "Amount",
        "ServiceDate", "SalesTaxCodeRef"}},
      {"InvoiceLineGroupRet",
       {"ItemGroupRef", "Desc", "Quantity", "IsPrintItemsInGroup", "TotalAmount", "InvoiceLineRet"}},
      {"SalesReceiptLineRet",
       {"TxnLineID", "ItemRef", "Desc", "Quantity", "Rate", "RatePercent", "ClassRef", "Amount",
        "ServiceDate", "SalesTaxCodeRef"}},
      {"SalesReceiptLineGroupRet",
       {"ItemGroupRef", "Desc", "Quantity", "IsPrintItemsInGroup", "TotalAmount", "SalesReceiptLineRet"}},
      {"ParentRef", reference},
      {"AccountRef", reference},
      {"ItemRef", reference},
      {"ItemGroupRef", reference},
      {"CustomerRef", reference},
      {"VendorRef", reference},
      {"BillAddress", {"Addr1", "Addr2", "City", "State", "PostalCode", "Country"}},
  };
  return orders;
}

// Kinds of lines may alternate in a sale; all other elements are in order.
bool MayAlternate(std::string_view name) {
  return name.starts_with("InvoiceLine") || name.starts_with("SalesReceiptLine") || name == "ItemLineRet" ||
         name == "ItemGroupLineRet";
}

void ExpectOrder(const XmlElement& element) {
  const auto order = ElementOrders().find(element.Name());
  if (order == ElementOrders().end()) {
    EXPECT_TRUE(element.Children().empty() || element.Name().ends_with("Ref"))
        << element.Name() << " has no order";
    return;
  }
  std::size_t place = 0;
  for (const XmlElement& child : element.Children()) {
    const std::string name = child.Name();
    const auto found = std::ranges::find(order->second, std::string_view(name));
    ASSERT_NE(found, order->second.end()) << name << " in " << element.Name();
    const auto position = static_cast<std::size_t>(found - order->second.begin());
    if (!MayAlternate(name)) {
      EXPECT_GE(position, place) << name << " in " << element.Name();
    }
    place = std::max(place, position);
    ExpectOrder(child);
  }
}

class GeneratedRecords : public ::testing::Test {
 protected:
  static const GeneratedCompany& Company() {
    static const GeneratedCompany company(FullCompany());
    return company;
  }
  static std::vector<XmlElement> All() {
    std::vector<XmlElement> all = Company().Accounts();
    for (const XmlElement& item : Company().Items()) all.push_back(item);
    for (const XmlElement& transaction : Company().Transactions()) all.push_back(transaction);
    return all;
  }
  static std::set<std::string> TextsOfAll(const std::string& path) {
    std::set<std::string> texts;
    for (const XmlElement& record : All()) {
      for (const XmlElement& found : record.SelectAll(path)) texts.insert(found.Text());
    }
    return texts;
  }
  static std::size_t CountInAll(const std::string& path) {
    std::size_t count = 0;
    for (const XmlElement& record : All()) count += record.SelectAll(path).size();
    return count;
  }
};

TEST_F(GeneratedRecords, AreOfEveryKind) {
  std::set<std::string> kinds;
  for (const company::RecordCount& count : Company().summary.records) kinds.insert(count.kind);
  EXPECT_EQ(kinds,
            (std::set<std::string>{"CompanyRet", "PreferencesRet", "AccountRet", "ItemServiceRet",
                                   "ItemNonInventoryRet", "ItemOtherChargeRet", "ItemInventoryRet",
                                   "ItemSubtotalRet", "ItemDiscountRet", "ItemGroupRet", "BillRet",
                                   "CheckRet", "CreditCardChargeRet", "InvoiceRet", "SalesReceiptRet"}));
}

TEST_F(GeneratedRecords, HaveAccountsOfEveryTypeOnThreeLevels) {
  EXPECT_EQ(TextsOfAll("self::AccountRet/AccountType"),
            (std::set<std::string>{"Bank", "AccountsReceivable", "OtherCurrentAsset", "FixedAsset",
                                   "OtherAsset", "AccountsPayable", "CreditCard", "OtherCurrentLiability",
                                   "LongTermLiability", "Equity", "Income", "CostOfGoodsSold", "Expense"}));
  EXPECT_EQ(TextsOfAll("self::AccountRet/Sublevel"), (std::set<std::string>{"0", "1", "2"}));
  EXPECT_EQ(TextsOfAll("self::AccountRet[AccountType = 'Income']/Sublevel").size(), 3U);
  EXPECT_EQ(TextsOfAll("self::AccountRet[AccountType = 'Expense']/Sublevel").size(), 3U);
}

TEST_F(GeneratedRecords, HaveUniqueNames) {
  EXPECT_EQ(TextsOfAll("self::AccountRet/FullName").size(), 150U);
  EXPECT_EQ(TextsOfAll("self::AccountRet[Sublevel = 0]/Name").size(),
            CountInAll("self::AccountRet[Sublevel = 0]"));
  EXPECT_EQ(TextsOfAll("self::*[starts-with(name(), 'Item')]/ListID").size(), 60U);
}

TEST_F(GeneratedRecords, HaveTheirElementsInOrder) {
  for (const XmlElement& record : All()) ExpectOrder(record);
}

TEST_F(GeneratedRecords, AreStoredLikeALoadedDocument) {
  for (const std::int32_t request : testing::transactionRequests) {
    std::string records;
    std::string heads;
    for (const XmlElement& record : Company().Records(request)) {
      company::RecordText text;
      EXPECT_FALSE(company::WriteRecordText(record.Xml(), text));
      records += text.xml;
      heads += text.xml.substr(0, text.linesBegin) + text.xml.substr(text.linesEnd);
    }
    EXPECT_NE(Company().Answer(request).find(records), std::string::npos) << request;

    std::string withoutLines = BuildRequest(request, "", "");
    const std::string_view include = "<IncludeLineItems>1</IncludeLineItems>\r\n";
    withoutLines.erase(withoutLines.find(include), include.size());
    EXPECT_NE(Company().file.Answer(withoutLines).find(heads), std::string::npos) << request;
  }
}

TEST_F(GeneratedRecords, AreReportedLikeALoadedDocument) {
  company::CompanyFile loaded =
      company::CompanyFile::Create(Company().folder / "loaded.qbw", "Loaded", 1, "2.0");
  for (const std::int32_t request :
       {request_number::allAccounts, request_number::items, request_number::bills, request_number::checks,
        request_number::creditCardCharges, request_number::invoices, request_number::salesReceipts}) {
    loaded.Load("an answer", Company().Answer(request));
  }
  for (const std::int32_t report :
       {request_number::incomeByMonth, request_number::expenseByMonth, request_number::costByMonth}) {
    const std::string request = BuildRequest(report, "2001-01-01", "2002-12-31");
    EXPECT_NE(loaded.Answer(request).find("<DataRow"), std::string::npos) << report;
    EXPECT_EQ(Company().file.Answer(request), loaded.Answer(request)) << report;
  }
}

TEST_F(GeneratedRecords, HaveTheTotalsOfTheirLines) {
  for (const XmlElement& transaction : Company().Transactions()) {
    std::int64_t lines = 0;
    for (const XmlElement& amount : transaction.SelectAll(".//*[TxnLineID]/Amount")) {
      lines += company::Hundredths(amount.Text()).value_or(0);
    }
    const std::string path = "AmountDue | Amount | Subtotal";
    EXPECT_EQ(AmountAt(transaction, path), lines);
    EXPECT_GT(lines, 0) << transaction.Xml();
    for (const XmlElement& group : transaction.SelectAll("*[ItemGroupRef]")) {
      std::int64_t members = 0;
      for (const XmlElement& amount : group.SelectAll("*/Amount"))
        members += company::Hundredths(amount.Text()).value_or(0);
      EXPECT_EQ(AmountAt(group, "TotalAmount"), members);
    }
    for (const XmlElement& line : transaction.SelectAll(".//*[Quantity and (Rate or Cost)]")) {
      const std::int64_t price = AmountAt(line, "Rate | Cost") * AmountAt(line, "Quantity");
      EXPECT_LE(std::abs(price - 100 * AmountAt(line, "Amount")), 50) << line.Xml();
    }
  }
}

TEST_F(GeneratedRecords, IncludeCreditsGroupsDiscountsAndTextLines) {
  EXPECT_GT(CountInAll("ExpenseLineRet[Amount < 0]"), 10U);
  EXPECT_GT(CountInAll("InvoiceLineRet[Quantity < 0] | SalesReceiptLineRet[Quantity < 0]"), 10U);
  EXPECT_GT(CountInAll("ItemGroupLineRet[count(ItemLineRet) > 1]"), 10U);
  EXPECT_GT(CountInAll("InvoiceLineGroupRet | SalesReceiptLineGroupRet"), 10U);
  EXPECT_GT(CountInAll("*[RatePercent < 0]"), 10U);
  EXPECT_GT(CountInAll("InvoiceLineRet[not(ItemRef) and not(Amount)]"), 10U);
  EXPECT_GT(CountInAll("self::ItemInventoryRet[AverageCost > 0 and PurchaseCost > AverageCost]"), 5U);
}

TEST_F(GeneratedRecords, InvoiceBillableExpensesExactlyOrMarkedUp) {
  std::set<std::string> billable;
  for (const XmlElement& transaction : Company().Transactions()) {
    for (const XmlElement& line : transaction.SelectAll("ExpenseLineRet[BillableStatus = 'HasBeenBilled']")) {
      billable.insert(TextAt(line, "CustomerRef/ListID") + "," + TextAt(line, "Amount"));
    }
  }
  std::size_t exactly = 0;
  std::size_t markedUp = 0;
  for (const XmlElement& invoice : Company().Records(request_number::invoices)) {
    for (const XmlElement& line :
         invoice.SelectAll("InvoiceLineGroupRet[ItemGroupRef/FullName = 'Reimb Group']/InvoiceLineRet")) {
      const bool isExact =
          billable.contains(TextAt(invoice, "CustomerRef/ListID") + "," + TextAt(line, "Amount"));
      ++(isExact ? exactly : markedUp);
    }
  }
  EXPECT_GT(exactly, markedUp);
  EXPECT_GT(markedUp, 5U);
  EXPECT_EQ(exactly + markedUp, CountInAll("ExpenseLineRet[BillableStatus = 'HasBeenBilled']"));
  EXPECT_GT(CountInAll("ItemLineRet[BillableStatus = 'HasBeenBilled']"), 5U);
}

}  // namespace
}  // namespace krnqb::sample_company
