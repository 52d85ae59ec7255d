#include "import/amounts/transaction_reading.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fakes/import_texts.h"
#include "fakes/recording_observer.h"

namespace krnqb {
namespace {

using fakes::AccountRef;
using fakes::Amount;
using fakes::CustomerRef;
using fakes::Element;
using fakes::ExpenseLine;
using fakes::InvoiceLine;
using fakes::ItemGroupRef;
using fakes::ItemLine;
using fakes::ItemRef;
using fakes::Quantity;
using fakes::RecordAnswer;
using fakes::Transaction;

constexpr LineSelection billLines{
    .responseName = "BillQueryRs", .places = LinePlaces::DirectChildren, .lineName = {}};
constexpr LineSelection invoiceLines{
    .responseName = "InvoiceQueryRs", .places = LinePlaces::Anywhere, .lineName = "InvoiceLineRet"};
const Place place{.operation = Operation::ReadExpenseTransactions,
                  .request = 10,
                  .fromDate = "2002-01-01",
                  .toDate = "2002-01-31"};

class ReadingTransactions : public testing::Test {
 protected:
  TransactionLines Bills(const std::string& records) {
    return ReadTransactionLines(Variant(RecordAnswer("BillQueryRs", records)), billLines, observer, place);
  }
  TransactionLines Invoices(const std::string& records) {
    return ReadTransactionLines(Variant(RecordAnswer("InvoiceQueryRs", records)), invoiceLines, observer,
                                place);
  }
  TransactionLines Read(const Variant& answer, const LineSelection& selection) {
    return ReadTransactionLines(answer, selection, observer, place);
  }

  fakes::RecordingObserver observer;
};

std::vector<std::string> AmountsOf(const TransactionLines& read) {
  std::vector<std::string> amounts;
  for (const TransactionLine& line : read) amounts.emplace_back(line.amount.value_or("none"));
  return amounts;
}

using Amounts = std::vector<std::string>;

TEST_F(ReadingTransactions, ReturnsEveryFieldOfALine) {
  const auto read =
      Bills(Element("BillRet", Transaction("T-1", "2002-01-15") +
                                   ExpenseLine(AccountRef("E-1") + Amount("100.00") + CustomerRef("K-1")) +
                                   ItemLine(ItemRef("IT-1") + Quantity("3") + Amount("7.50"))));
  ASSERT_EQ(read.Count(), 2U);
  const TransactionLine& expense = read[0];
  EXPECT_EQ(expense.element, "ExpenseLineRet");
  EXPECT_EQ(expense.accountId, "E-1");
  EXPECT_EQ(expense.amount, "100.00");
  EXPECT_TRUE(expense.hasCustomer);
  EXPECT_EQ(expense.customerId, "K-1");
  EXPECT_EQ(expense.itemId, std::nullopt);
  EXPECT_EQ(expense.quantity, std::nullopt);
  EXPECT_EQ(expense.transactionId, "T-1");
  EXPECT_EQ(expense.transactionDate, "2002-01-15");
  EXPECT_FALSE(expense.insideItemGroup);
  const TransactionLine& item = read[1];
  EXPECT_EQ(item.element, "ItemLineRet");
  EXPECT_EQ(item.itemId, "IT-1");
  EXPECT_EQ(item.quantity, "3");
  EXPECT_EQ(item.amount, "7.50");
  EXPECT_EQ(item.accountId, std::nullopt);
  EXPECT_FALSE(item.hasCustomer);
  EXPECT_EQ(item.customerId, std::nullopt);
  EXPECT_EQ(item.transactionId, "T-1");
}

TEST_F(ReadingTransactions, ReturnsTheCustomersAndTheGroupAroundASalesLine) {
  const auto read = Invoices(Element(
      "InvoiceRet", Transaction("T-2", "2002-02-01") + CustomerRef("K-7") + InvoiceLine(ItemGroupRef("G-2")) +
                        Element("InvoiceLineGroupRet", ItemGroupRef("G-1") + InvoiceLine(ItemRef("IT-1")))));
  ASSERT_EQ(read.Count(), 2U);
  EXPECT_EQ(read[0].itemGroupId, "G-2");
  EXPECT_EQ(read[0].parentItemGroupId, std::nullopt);
  EXPECT_EQ(read[0].parentCustomerId, "K-7");
  EXPECT_EQ(read[0].grandparentCustomerId, std::nullopt);
  EXPECT_EQ(read[1].itemGroupId, std::nullopt);
  EXPECT_EQ(read[1].parentItemGroupId, "G-1");
  EXPECT_EQ(read[1].parentCustomerId, std::nullopt);
  EXPECT_EQ(read[1].grandparentCustomerId, "K-7");
  EXPECT_EQ(read[1].transactionId, "T-2");
  EXPECT_EQ(read[1].transactionDate, "2002-02-01");
}

TEST_F(ReadingTransactions, ReadsElementsAfterTheLine) {
  const auto read = Invoices(
      Element("InvoiceRet", Element("InvoiceLineGroupRet", InvoiceLine(Amount("1")) + ItemGroupRef("G-1")) +
                                CustomerRef("K-7") + Transaction("T-3", "2002-03-01")));
  ASSERT_EQ(read.Count(), 1U);
  EXPECT_EQ(read[0].parentItemGroupId, "G-1");
  EXPECT_EQ(read[0].grandparentCustomerId, "K-7");
  EXPECT_EQ(read[0].transactionId, "T-3");
  EXPECT_EQ(read[0].transactionDate, "2002-03-01");
}

TEST_F(ReadingTransactions, DistinguishesMissingFromEmpty) {
  const auto read = Bills(Element(
      "BillRet", ExpenseLine("<Amount/>" + AccountRef("") + Element("CustomerRef", "")) + ExpenseLine("")));
  ASSERT_EQ(read.Count(), 2U);
  EXPECT_EQ(read[0].amount, "");
  EXPECT_EQ(read[0].accountId, "");
  EXPECT_TRUE(read[0].hasCustomer);
  EXPECT_EQ(read[0].customerId, std::nullopt);
  EXPECT_EQ(read[1].amount, std::nullopt);
  EXPECT_EQ(read[1].accountId, std::nullopt);
  EXPECT_FALSE(read[1].hasCustomer);
  EXPECT_EQ(read[1].transactionId, "");
  EXPECT_EQ(read[1].transactionDate, "");
}

TEST_F(ReadingTransactions, ReturnsTheWholeTextUntrimmed) {
  const auto read =
      Bills(Element("BillRet", ExpenseLine("<Amount> 1&#48;<!-- net -->.<![CDATA[5]]><?note x?>0 </Amount>"
                                           "<AccountRef><ListID>A&amp;<b>B</b>&lt;C</ListID></AccountRef>")));
  ASSERT_EQ(read.Count(), 1U);
  EXPECT_EQ(read[0].amount, " 10.50 ");
  EXPECT_EQ(read[0].accountId, "A&B<C");
}

TEST_F(ReadingTransactions, UsesTheFirstOfRepeatedElements) {
  const auto read = Bills(
      Element("BillRet", ExpenseLine(Amount("1") + Amount("2") + AccountRef("E-1") + AccountRef("E-2")) +
                             ExpenseLine(Amount("") + Amount("3"))));
  ASSERT_EQ(read.Count(), 2U);
  EXPECT_EQ(read[0].amount, "1");
  EXPECT_EQ(read[0].accountId, "E-1");
  EXPECT_EQ(read[1].amount, "");
}

TEST_F(ReadingTransactions, DistinguishesTheFirstReferenceFromTheFirstWithAnId) {
  const auto read = Bills(Element(
      "BillRet", Element("CustomerRef", "") + CustomerRef("K-1") +
                     ExpenseLine(Element("AccountRef", "") + AccountRef("E-1") + AccountRef("E-2") +
                                 Element("ItemRef", "") + ItemRef("IT-1") + Element("ItemGroupRef", "") +
                                 ItemGroupRef("G-1") + Element("CustomerRef", "") + CustomerRef("K-2"))));
  ASSERT_EQ(read.Count(), 1U);
  EXPECT_EQ(read[0].accountId, std::nullopt);
  EXPECT_EQ(read[0].anyAccountId, "E-1");
  EXPECT_EQ(read[0].itemId, std::nullopt);
  EXPECT_EQ(read[0].anyItemId, "IT-1");
  EXPECT_EQ(read[0].itemGroupId, std::nullopt);
  EXPECT_EQ(read[0].customerId, "K-2");
  EXPECT_EQ(read[0].parentCustomerId, "K-1");
}

TEST_F(ReadingTransactions, IgnoresElementsInANamespace) {
  const auto read = Bills(Element(
      "BillRet",
      "<ExpenseLineRet xmlns=\"urn:x\"><Amount>9</Amount></ExpenseLineRet>" +
          ExpenseLine("<Amount xmlns=\"urn:x\">9</Amount><AccountRef xmlns=\"urn:x\"/>"
                      "<AccountRef><ListID xmlns=\"urn:x\">9</ListID><ListID>E-1</ListID></AccountRef>"
                      "<x:CustomerRef xmlns:x=\"urn:x\"/>" +
                      Amount("1"))));
  EXPECT_EQ(AmountsOf(read), Amounts{"1"});
  EXPECT_EQ(read[0].accountId, "E-1");
  EXPECT_FALSE(read[0].hasCustomer);
}

TEST_F(ReadingTransactions, IgnoresStatusAttributesInANamespace) {
  Read(Variant(
           "<QBXML><QBXMLMsgsRs><BillQueryRs xmlns:x=\"urn:x\" x:statusCode=\"500\"/></QBXMLMsgsRs></QBXML>"),
       billLines);
  EXPECT_TRUE(observer.notices.empty());
}

TEST_F(ReadingTransactions, IgnoresFieldsInNestedElements) {
  const auto read = Bills(Element(
      "BillRet", ExpenseLine(Element("Detail", Amount("1") + AccountRef("E-1") + CustomerRef("K-1")))));
  ASSERT_EQ(read.Count(), 1U);
  EXPECT_EQ(read[0].amount, std::nullopt);
  EXPECT_EQ(read[0].accountId, std::nullopt);
  EXPECT_FALSE(read[0].hasCustomer);
}

TEST_F(ReadingTransactions, MarksPurchaseLinesInsideAnItemGroup) {
  const auto read =
      Bills(Element("BillRet", Transaction("T-1", "2002-01-15") + ExpenseLine(Amount("1")) +
                                   Element("ItemGroupLineRet", ItemGroupRef("G-1") + ItemLine(Amount("2")) +
                                                                   ItemLine(Amount("3"))) +
                                   ItemLine(Amount("4"))));
  EXPECT_EQ(AmountsOf(read), (Amounts{"1", "2", "3", "4"}));
  for (const TransactionLine& line : read) {
    EXPECT_EQ(line.insideItemGroup, line.amount == "2" || line.amount == "3") << *line.amount;
    EXPECT_EQ(line.transactionId, "T-1");
  }
}

TEST_F(ReadingTransactions, IgnoresPurchaseLinesInsideOtherElements) {
  const auto read =
      Bills(Element("BillRet", Element("Other", ItemLine(Amount("1")) + ExpenseLine(Amount("2"))) +
                                   Element("ItemGroupLineRet", ItemLine(Amount("3")))));
  EXPECT_EQ(AmountsOf(read), Amounts{"3"});
}

TEST_F(ReadingTransactions, ReadsPurchaseLinesOfTheFirstResponseOnly) {
  const auto read =
      Read(Variant("<QBXML><BillRet><ExpenseLineRet><Amount>0</Amount></ExpenseLineRet></BillRet>"
                   "<BillQueryRs><ExpenseLineRet><Amount>1</Amount></ExpenseLineRet>"
                   "<BillRet><ExpenseLineRet><Amount>2</Amount></ExpenseLineRet></BillRet></BillQueryRs>"
                   "<BillQueryRs><BillRet><ExpenseLineRet><Amount>3</Amount></ExpenseLineRet></BillRet>"
                   "</BillQueryRs></QBXML>"),
           billLines);
  EXPECT_EQ(AmountsOf(read), Amounts{"2"});
}

TEST_F(ReadingTransactions, ReadsSalesLinesAnywhereInTheDocument) {
  const auto read =
      Read(Variant("<QBXML><InvoiceLineRet><Amount>1</Amount></InvoiceLineRet>"
                   "<InvoiceQueryRs><InvoiceLineRet><Amount>2</Amount></InvoiceLineRet>"
                   "<InvoiceRet><Deep><InvoiceLineRet><Amount>3</Amount>"
                   "<InvoiceLineRet><Amount>4</Amount></InvoiceLineRet></InvoiceLineRet></Deep></InvoiceRet>"
                   "</InvoiceQueryRs><InvoiceQueryRs>"
                   "<InvoiceRet><InvoiceLineRet><Amount>5</Amount></InvoiceLineRet></InvoiceRet>"
                   "</InvoiceQueryRs><InvoiceLineRet><Amount>6</Amount></InvoiceLineRet></QBXML>"),
           invoiceLines);
  EXPECT_EQ(AmountsOf(read), (Amounts{"1", "2", "3", "4", "5", "6"}));
}

TEST_F(ReadingTransactions, ReadsADocumentElementThatIsALine) {
  const auto read =
      Read(Variant("<InvoiceLineRet><Amount>1</Amount><InvoiceQueryRs/></InvoiceLineRet>"), invoiceLines);
  EXPECT_EQ(AmountsOf(read), Amounts{"1"});
}

TEST_F(ReadingTransactions, ReturnsNoLinesWithoutTheResponse) {
  const std::string invoice = Element("InvoiceRet", InvoiceLine(Amount("1")));
  EXPECT_TRUE(Read(Variant(RecordAnswer("SalesReceiptQueryRs", invoice)), invoiceLines).Count() == 0);
  EXPECT_TRUE(Read(Variant(RecordAnswer("InvoiceQueryRs", "")), invoiceLines).Count() == 0);
  EXPECT_TRUE(Bills("").Count() == 0);
  EXPECT_TRUE(observer.notices.empty());
}

TEST_F(ReadingTransactions, ReportsAMalformedTextAndReturnsNoLines) {
  const std::string bill = Element("BillRet", ExpenseLine(Amount("1")));
  const std::string whole = RecordAnswer("BillQueryRs", bill);
  const std::string texts[] = {
      "",
      "  ",
      "no document",
      whole.substr(0, whole.size() - 4),
      whole + "<again/>",
      "<QBXML><BillQueryRs>" + bill + "]]></BillQueryRs></QBXML>",
      "<QBXML><BillQueryRs>" + bill + "&undeclared;</BillQueryRs></QBXML>",
      "<!DOCTYPE a [<!ENTITY x \"1\">]><QBXML><BillQueryRs>" + bill + "</BillQueryRs></QBXML>"};
  for (const std::string& text : texts) {
    observer.notices.clear();
    EXPECT_TRUE(Read(Variant(text), billLines).Count() == 0) << text;
    ASSERT_EQ(observer.notices.size(), 1U) << text;
    EXPECT_EQ(observer.notices[0].kind, NoticeKind::AnswerUnreadable) << text;
    EXPECT_EQ(observer.notices[0].place.request, 10);
    EXPECT_EQ(observer.notices[0].place.fromDate, "2002-01-01");
  }
}

TEST_F(ReadingTransactions, ReturnsNoLinesWithoutAnAnswer) {
  EXPECT_TRUE(Read(Variant(), billLines).Count() == 0);
}

TEST_F(ReadingTransactions, IgnoresAnEncodingDeclaration) {
  const auto read =
      Read(Variant("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><BillQueryRs><BillRet><ExpenseLineRet>"
                   "<Amount>1 \xE2\x82\xAC</Amount></ExpenseLineRet></BillRet></BillQueryRs>"),
           billLines);
  EXPECT_EQ(AmountsOf(read), Amounts{"1 \xE2\x82\xAC"});
}

TEST_F(ReadingTransactions, ReportsAnErrorStatus) {
  Read(Variant(fakes::StatusAnswer("BillQueryRs", "3260")), billLines);
  ASSERT_EQ(observer.notices.size(), 1U);
  EXPECT_EQ(observer.notices[0].kind, NoticeKind::AnswerStatus);
  EXPECT_EQ(observer.notices[0].number, 3260);
  EXPECT_EQ(observer.notices[0].severity, "Error");
  EXPECT_EQ(observer.notices[0].description, "Refused");
  EXPECT_EQ(observer.notices[0].place.operation, Operation::ReadExpenseTransactions);
  EXPECT_EQ(observer.notices[0].place.toDate, "2002-01-31");
  observer.notices.clear();
  Read(Variant(fakes::StatusAnswer("BillQueryRs", "1")), billLines);
  EXPECT_TRUE(observer.notices.empty());
}

TEST_F(ReadingTransactions, ReadsTheLinesWhateverTheStatus) {
  for (const std::string status : {"500", "1E999", "99999999999", "none", ""}) {
    observer.notices.clear();
    TransactionLines read;
    EXPECT_NO_THROW(read = Read(Variant("<QBXML><QBXMLMsgsRs><BillQueryRs statusCode=\"" + status +
                                        "\"><BillRet><ExpenseLineRet><Amount>1</Amount></ExpenseLineRet>"
                                        "</BillRet></BillQueryRs></QBXMLMsgsRs></QBXML>"),
                                billLines))
        << status;
    EXPECT_EQ(AmountsOf(read), Amounts{"1"}) << status;
    EXPECT_EQ(observer.notices.size(), 1U) << status;
  }
}

TEST_F(ReadingTransactions, KeepsTheTextsOfMovedLines) {
  std::string records;
  for (int i = 0; i < 5000; ++i) {
    records +=
        Element("BillRet", ExpenseLine(Amount(std::to_string(i)) + AccountRef("E-" + std::to_string(i))));
  }
  auto read = Bills(records);
  const TransactionLines moved = std::move(read);
  ASSERT_EQ(moved.Count(), 5000U);
  for (std::size_t i = 0; i < moved.Count(); ++i) {
    ASSERT_EQ(moved[i].amount, std::to_string(i));
    ASSERT_EQ(moved[i].accountId, "E-" + std::to_string(i));
  }
}

TEST_F(ReadingTransactions, IgnoresStatusesInsideAnAnswer) {
  Bills("<BillRet statusCode=\"500\">" + ExpenseLine(Amount("1")) + "</BillRet>");
  EXPECT_TRUE(observer.notices.empty());
}

}  // namespace
}  // namespace krnqb
