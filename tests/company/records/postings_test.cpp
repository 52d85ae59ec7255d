#include "company/records/postings.h"

#include "company/records/item_accounts.h"
#include "company/reports/testing.h"

namespace krnqb::company {
namespace {

using testing::Element;
using testing::ExpenseLine;
using testing::ItemLine;
using testing::Reference;

using Texts = std::vector<std::string>;

// Formats postings as "account A 100", "bought I 100", "sold I -100 x 2".
std::string TextOf(const Posting& posting) {
  switch (posting.target) {
    case PostingTarget::Account:
      return fmt::format("account {} {}", posting.key, posting.amount);
    case PostingTarget::BoughtItem:
      return fmt::format("bought {} {}", posting.key, posting.amount);
    case PostingTarget::SoldItem:
      return fmt::format("sold {} {} x {}", posting.key, posting.amount, posting.quantity);
  }
  return "nothing";
}

Texts PostingsOf(const std::string& record) {
  Texts texts;
  for (const Posting& posting : ReadPostings(XmlElement::Parse(record))) texts.push_back(TextOf(posting));
  return texts;
}

TEST(CompanyPostings, DebitAPurchaseAndCreditItsPayment) {
  struct Case {
    std::string_view element, account, total;
  };
  const std::vector<Case> cases = {{"BillRet", "APAccountRef", "AmountDue"},
                                   {"CheckRet", "AccountRef", "Amount"},
                                   {"CreditCardChargeRet", "AccountRef", "Amount"}};
  for (const auto& [element, account, total] : cases) {
    SCOPED_TRACE(element);
    EXPECT_EQ(
        PostingsOf(Element(element, Reference(account, "paid-from") + Element(total, "30.25") +
                                        ExpenseLine("rent", "20.00") + ExpenseLine("fees", "-0.75") +
                                        ItemLine("ItemLineRet", "nails", "11.00", "4"))),
        (Texts{"account rent 2000", "account fees -75", "bought nails 1100", "account paid-from -3025"}));
  }
}

TEST(CompanyPostings, CreditASaleAndDebitItsProceeds) {
  EXPECT_EQ(PostingsOf(Element("InvoiceRet", Reference("ARAccountRef", "due") + Element("Subtotal", "18.00") +
                                                 Element("SalesTaxTotal", "1.13") +
                                                 ItemLine("InvoiceLineRet", "work", "20.00", "2.5") +
                                                 ItemLine("InvoiceLineRet", "discount", "-2.00"))),
            (Texts{"sold work -2000 x 2.5", "sold discount 200 x 1", "account due 1913"}));
  EXPECT_EQ(
      PostingsOf(Element("SalesReceiptRet", Element("Subtotal", "20.00") + Element("TotalAmount", "21.25") +
                                                Reference("DepositToAccountRef", "till") +
                                                ItemLine("SalesReceiptLineRet", "work", "20.00", "0"))),
      (Texts{"sold work -2000 x 0", "account till 2125"}));
}

TEST(CompanyPostings, CountGroupLinesOnceAndIgnoreTheGroup) {
  const std::string bought = Reference("ItemGroupRef", "kit") + Element("TotalAmount", "12.00") +
                             ItemLine("ItemLineRet", "pot", "5.00") + ItemLine("ItemLineRet", "soil", "7.00");
  EXPECT_EQ(PostingsOf(Element(
                "BillRet", ItemLine("ItemLineRet", "fork", "9.00") + Element("ItemGroupLineRet", bought))),
            (Texts{"bought fork 900", "bought pot 500", "bought soil 700"}));
  for (const std::string_view kind : {"Invoice", "SalesReceipt"}) {
    SCOPED_TRACE(kind);
    const std::string line = std::string(kind) + "LineRet";
    const std::string sold = Reference("ItemGroupRef", "kit") + Element("TotalAmount", "12.00") +
                             ItemLine(line, "pot", "5.00", "2") + Element(line, Element("Amount", "7.00"));
    EXPECT_EQ(
        PostingsOf(Element(std::string(kind) + "Ret", Element(std::string(kind) + "LineGroupRet", sold))),
        Texts{"sold pot -500 x 2"});
  }
}

TEST(CompanyPostings, OmitLinesWithoutAmountOrTarget) {
  EXPECT_EQ(PostingsOf(Element("InvoiceRet", Reference("ARAccountRef", "due") +
                                                 Element("InvoiceLineRet", Element("Desc", "As agreed")) +
                                                 Element("InvoiceLineRet", Element("Amount", "5.00")) +
                                                 ItemLine("InvoiceLineRet", "work", "") +
                                                 ItemLine("InvoiceLineRet", "work", "much", "3"))),
            Texts{});
  EXPECT_EQ(PostingsOf(Element("CheckRet", Element("Amount", "5.00") + ExpenseLine("", "5.00"))), Texts{});
}

TEST(CompanyPostings, KeepALineOfZero) {
  EXPECT_EQ(PostingsOf(Element("CheckRet", ExpenseLine("rent", "0.00"))), Texts{"account rent 0"});
}

TEST(CompanyPostings, OmitAPendingSale) {
  const std::string line = ItemLine("InvoiceLineRet", "work", "20.00", "1");
  for (const std::string_view yes : {"true", "1"}) {
    EXPECT_EQ(PostingsOf(Element("InvoiceRet", Element("IsPending", yes) + line)), Texts{}) << yes;
  }
  EXPECT_EQ(PostingsOf(Element("InvoiceRet", Element("IsPending", "false") + line)),
            Texts{"sold work -2000 x 1"});
}

// Formats item accounts as "bought A", "sold A", "sold A at 250".
Texts ItemAccountsOf(std::string_view element, std::string_view content) {
  Texts texts;
  for (const ItemAccount& account : ReadItemAccounts(XmlElement::Parse(Element(element, content)))) {
    texts.push_back(fmt::format("{} {}", account.target == PostingTarget::BoughtItem ? "bought" : "sold",
                                account.account));
    if (account.unitCost) texts.back() += fmt::format(" at {:g}", *account.unitCost);
  }
  return texts;
}

TEST(CompanyItemAccounts, DependOnTheKindOfItem) {
  const std::string stocked = Reference("IncomeAccountRef", "sales") + Reference("COGSAccountRef", "cost") +
                              Reference("AssetAccountRef", "stock");
  struct Case {
    std::string_view element;
    std::string content;
    Texts accounts;
  };
  const std::vector<Case> cases = {
      {"ItemServiceRet",
       Element("SalesOrPurchase", Reference("AccountRef", "fees")),
       {"bought fees", "sold fees"}},
      {"ItemNonInventoryRet",
       Element("SalesAndPurchase",
               Reference("IncomeAccountRef", "sales") + Reference("ExpenseAccountRef", "materials")),
       {"bought materials", "sold sales"}},
      {"ItemNonInventoryRet",
       Element("SalesAndPurchase", Reference("IncomeAccountRef", "sales")),
       {"sold sales"}},
      {"ItemInventoryRet",
       stocked + Element("AverageCost", "2.50"),
       {"bought stock", "sold sales", "sold cost at 250", "sold stock at -250"}},
      {"ItemInventoryAssemblyRet", stocked + Element("AverageCost", "0.00"), {"bought stock", "sold sales"}},
      {"ItemInventoryRet", stocked, {"bought stock", "sold sales"}},
      {"ItemDiscountRet", Reference("AccountRef", "discounts"), {"sold discounts"}},
      {"ItemPaymentRet", Reference("DepositToAccountRef", "till"), {"sold till"}},
      {"ItemSubtotalRet", Element("Name", "Subtotal"), {}},
      {"ItemGroupRet", Element("ItemGroupLine", Reference("ItemRef", "pot")), {}},
      {"ItemSalesTaxRet", Reference("TaxVendorRef", "state"), {}},
  };
  for (const auto& [element, content, accounts] : cases) {
    SCOPED_TRACE(content);
    EXPECT_EQ(ItemAccountsOf(element, content), accounts);
  }
}

}  // namespace
}  // namespace krnqb::company
