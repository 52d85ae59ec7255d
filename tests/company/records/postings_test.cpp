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
  ElementTree tree;
  for (const Posting& posting : ReadPostings(tree.Read(record))) texts.push_back(TextOf(posting));
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

TEST(CompanyPostings, ReverseAPurchaseForACredit) {
  struct Case {
    std::string_view element, account, total;
  };
  const std::vector<Case> cases = {{"VendorCreditRet", "APAccountRef", "CreditAmount"},
                                   {"CreditCardCreditRet", "AccountRef", "Amount"}};
  for (const auto& [element, account, total] : cases) {
    SCOPED_TRACE(element);
    EXPECT_EQ(PostingsOf(Element(element, Reference(account, "owed") + Element(total, "30.25") +
                                              ExpenseLine("rent", "20.00") + ExpenseLine("fees", "-0.75") +
                                              ItemLine("ItemLineRet", "nails", "11.00", "4"))),
              (Texts{"account rent -2000", "account fees 75", "bought nails -1100", "account owed 3025"}));
  }
}

TEST(CompanyPostings, TakeAnItemReceiptForABill) {
  EXPECT_EQ(PostingsOf(Element("ItemReceiptRet", Reference("APAccountRef", "owed") +
                                                     Element("TotalAmount", "16.00") +
                                                     ExpenseLine("freight", "5.00") +
                                                     ItemLine("ItemLineRet", "nails", "11.00", "4"))),
            (Texts{"account freight 500", "bought nails 1100", "account owed -1600"}));
}

TEST(CompanyPostings, ReverseASaleAndItsCostForACreditMemo) {
  const std::string inGroup = Reference("ItemGroupRef", "kit") + Element("TotalAmount", "5.00") +
                              ItemLine("CreditMemoLineRet", "pot", "5.00", "2");
  EXPECT_EQ(
      PostingsOf(Element("CreditMemoRet", Reference("ARAccountRef", "due") + Element("Subtotal", "23.00") +
                                              Element("SalesTaxTotal", "1.13") +
                                              Element("TotalAmount", "24.13") +
                                              ItemLine("CreditMemoLineRet", "work", "20.00", "2.5") +
                                              ItemLine("CreditMemoLineRet", "discount", "-2.00") +
                                              Element("CreditMemoLineGroupRet", inGroup))),
      (Texts{"sold work 2000 x -2.5", "sold discount -200 x -1", "sold pot 500 x -2", "account due -2413"}));
  EXPECT_EQ(PostingsOf(Element("CreditMemoRet", Element("IsPending", "true") +
                                                    ItemLine("CreditMemoLineRet", "work", "20.00"))),
            Texts{});
}

TEST(CompanyPostings, TakeAChargeForAnInvoiceWithOneLine) {
  const std::string fields = Reference("ItemRef", "work") + Element("Amount", "20.00");
  EXPECT_EQ(PostingsOf(
                Element("ChargeRet", fields + Element("Quantity", "2.5") + Reference("ARAccountRef", "due"))),
            (Texts{"sold work -2000 x 2.5", "account due 2000"}));
  EXPECT_EQ(PostingsOf(Element("ChargeRet", fields)), Texts{"sold work -2000 x 1"});
  EXPECT_EQ(PostingsOf(Element("ChargeRet", Reference("ItemRef", "work") + Reference("ARAccountRef", "due"))),
            Texts{});
}

TEST(CompanyPostings, PostAJournalEntryAsGiven) {
  const auto line = [](std::string_view side, std::string_view account, std::string_view amount) {
    return Element("Journal" + std::string(side) + "Line",
                   Reference("AccountRef", account) + Element("Amount", amount));
  };
  EXPECT_EQ(PostingsOf(Element("JournalEntryRet",
                               line("Debit", "wages", "100.00") + line("Debit", "tax", "0.00") +
                                   line("Debit", "fees", "-5.00") + line("Credit", "bank", "95.00") +
                                   line("Credit", "", "1.00") + line("Credit", "rent", ""))),
            (Texts{"account wages 10000", "account tax 0", "account fees -500", "account bank -9500"}));
}

TEST(CompanyPostings, CreditTheLinesOfADepositAndDebitItsCashBack) {
  const auto line = [](std::string_view element, std::string_view account, std::string_view amount) {
    return Element(element, Reference("AccountRef", account) + Element("Amount", amount));
  };
  EXPECT_EQ(
      PostingsOf(Element("DepositRet",
                         Reference("DepositToAccountRef", "bank") + Element("DepositTotal", "77.50") +
                             line("CashBackInfoRet", "draws", "20.00") +
                             line("DepositLineRet", "interest", "100.00") +
                             line("DepositLineRet", "fees", "-2.50") + line("DepositLineRet", "", "9.00"))),
      (Texts{"account draws 2000", "account interest -10000", "account fees 250", "account bank 7750"}));
}

TEST(CompanyPostings, PostTheDiscountsOfAPayment) {
  const auto applied = [](std::string_view discount, std::string_view account) {
    return Element("AppliedToTxnRet", Element("TxnID", "1") + Element("Amount", "50.00") +
                                          Element("DiscountAmount", discount) +
                                          Reference("DiscountAccountRef", account));
  };
  EXPECT_EQ(
      PostingsOf(Element("ReceivePaymentRet",
                         Reference("ARAccountRef", "due") + Element("TotalAmount", "98.50") +
                             Reference("DepositToAccountRef", "till") + applied("1.00", "discounts") +
                             applied("", "") + applied("0.50", "allowances"))),
      (Texts{"account discounts 100", "account allowances 50", "account till 9850", "account due -10000"}));
  struct Case {
    std::string_view element, account;
  };
  for (const auto& [element, account] : {Case{"BillPaymentCheckRet", "BankAccountRef"},
                                         Case{"BillPaymentCreditCardRet", "CreditCardAccountRef"}}) {
    SCOPED_TRACE(element);
    EXPECT_EQ(PostingsOf(Element(element, Reference("APAccountRef", "owed") + Reference(account, "money") +
                                              Element("Amount", "49.00") + applied("1.00", "discounts"))),
              (Texts{"account discounts -100", "account money -4900", "account owed 5000"}));
    EXPECT_EQ(PostingsOf(Element(element, Element("Amount", "49.00") + applied("0.00", "discounts"))),
              Texts{"account discounts 0"});
    EXPECT_EQ(PostingsOf(Element(element, Reference("APAccountRef", "owed"))), Texts{});
  }
}

TEST(CompanyPostings, PostAnInventoryAdjustmentAgainstItsAccount) {
  const auto line = [](std::string_view item, std::string_view value) {
    return Element(
        "InventoryAdjustmentLineRet",
        Reference("ItemRef", item) + Element("QuantityDifference", "-4") + Element("ValueDifference", value));
  };
  EXPECT_EQ(PostingsOf(Element("InventoryAdjustmentRet", Reference("AccountRef", "shrinkage") +
                                                             line("pot", "-12.00") + line("soil", "0.50") +
                                                             line("fork", ""))),
            (Texts{"bought pot -1200", "account shrinkage 1200", "bought soil 50", "account shrinkage -50"}));
}

TEST(CompanyPostings, HaveTheLinesTheyComeFrom) {
  const std::string bill =
      Element("BillRet", Reference("APAccountRef", "owed") + Element("AmountDue", "9.00") +
                             ExpenseLine("", "1.00") + ExpenseLine("rent", "2.00") +
                             Element("ItemGroupLineRet", ItemLine("ItemLineRet", "pot", "7.00")));
  ElementTree tree;
  std::vector<std::string> lines;
  for (const PostedLine& posted : ReadPostedLines(tree.Read(bill))) {
    lines.push_back(posted.line ? fmt::format("{} {}", posted.line.Name(), posted.line.Child("Amount").Text())
                                : "total");
  }
  EXPECT_EQ(lines, (Texts{"ExpenseLineRet 2.00", "ItemLineRet 7.00", "total"}));
}

// Formats item accounts as "bought A", "sold A", "sold A at 250".
Texts ItemAccountsOf(std::string_view element, std::string_view content) {
  const std::string item = Element(element, content);
  ElementTree tree;
  Texts texts;
  for (const ItemAccount& account : ReadItemAccounts(tree.Read(item))) {
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
