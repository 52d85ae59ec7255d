#pragma once

#include <string>
#include <string_view>

#include "company/answer.h"
#include "company/file.h"
#include "company/records/schema.h"
#include "fuzz/xml_promises.h"
#include "qbxml/envelope.h"
#include "temporary_folder.h"

namespace krnqb::fuzz {

/// A company without records, in a file that is removed at the end.
class EmptyCompany {
 public:
  EmptyCompany() { company::CompanyFile::Create(File(), "Nursery", 4, "2.0"); }
  std::filesystem::path File() const { return folder_ / "company.qbw"; }

 private:
  tests::TemporaryFolder folder_;
};

/// A few records of every kind: accounts of three levels, items, transactions with their lines, preferences.
inline constexpr std::string_view smallCompany = R"(<?xml version="1.0" ?>
<QBXML><QBXMLMsgsRs>
<AccountQueryRs>
<AccountRet><ListID>E-1</ListID><Name>Rent</Name><FullName>Rent</FullName><IsActive>true</IsActive><Sublevel>0</Sublevel><AccountType>Expense</AccountType><Balance>0.00</Balance></AccountRet>
<AccountRet><ListID>E-2</ListID><Name>Store</Name><FullName>Rent:Store</FullName><ParentRef><ListID>E-1</ListID><FullName>Rent</FullName></ParentRef><Sublevel>1</Sublevel><AccountType>Expense</AccountType><Balance>0.00</Balance></AccountRet>
<AccountRet><ListID>E-3</ListID><Name>Caf&#233; &amp; Bar</Name><FullName>Rent:Store:Caf&#233; &amp; Bar</FullName><ParentRef><ListID>E-2</ListID></ParentRef><Sublevel>2</Sublevel><AccountType>Expense</AccountType></AccountRet>
<AccountRet><ListID>I-1</ListID><Name>Plants</Name><FullName>Plants</FullName><Sublevel>0</Sublevel><AccountType>Income</AccountType></AccountRet>
<AccountRet><ListID>C-1</ListID><Name>Seeds</Name><FullName>Seeds</FullName><Sublevel>0</Sublevel><AccountType>CostOfGoodsSold</AccountType></AccountRet>
<AccountRet><ListID>B-1</ListID><Name>Bank</Name><FullName>Bank</FullName><Sublevel>0</Sublevel><AccountType>Bank</AccountType><Balance>150.25</Balance></AccountRet>
<AccountRet><ListID>A-1</ListID><Name>Stock</Name><FullName>Stock</FullName><Sublevel>0</Sublevel><AccountType>OtherCurrentAsset</AccountType><Balance>10.00</Balance></AccountRet>
<AccountRet><ListID>R-1</ListID><Name>Customers</Name><FullName>Customers</FullName><Sublevel>0</Sublevel><AccountType>AccountsReceivable</AccountType></AccountRet>
<AccountRet><ListID>P-1</ListID><Name>Vendors</Name><FullName>Vendors</FullName><Sublevel>0</Sublevel><AccountType>AccountsPayable</AccountType></AccountRet>
</AccountQueryRs>
<ItemQueryRs>
<ItemServiceRet><ListID>S-1</ListID><Name>Work</Name><FullName>Work</FullName><Sublevel>0</Sublevel><SalesOrPurchase><Price>10.00</Price><AccountRef><ListID>I-1</ListID></AccountRef></SalesOrPurchase></ItemServiceRet>
<ItemInventoryRet><ListID>S-2</ListID><Name>Tulip</Name><FullName>Tulip</FullName><Sublevel>0</Sublevel><IncomeAccountRef><ListID>I-1</ListID></IncomeAccountRef><COGSAccountRef><ListID>C-1</ListID></COGSAccountRef><AssetAccountRef><ListID>A-1</ListID></AssetAccountRef><AverageCost>1.25</AverageCost></ItemInventoryRet>
</ItemQueryRs>
<BillQueryRs>
<BillRet><TxnID>T-1</TxnID><TxnDate>2002-03-05</TxnDate><APAccountRef><ListID>P-1</ListID></APAccountRef><AmountDue>75.00</AmountDue><ExpenseLineRet><TxnLineID>L-1</TxnLineID><AccountRef><ListID>E-3</ListID></AccountRef><Amount>75.00</Amount></ExpenseLineRet></BillRet>
</BillQueryRs>
<CheckQueryRs>
<CheckRet><TxnID>T-2</TxnID><TxnDate>2002-04-30</TxnDate><AccountRef><ListID>B-1</ListID></AccountRef><Amount>-12.50</Amount><ExpenseLineRet><AccountRef><ListID>E-1</ListID></AccountRef><Amount>-12.50</Amount></ExpenseLineRet></CheckRet>
</CheckQueryRs>
<InvoiceQueryRs>
<InvoiceRet><TxnID>T-3</TxnID><TxnDate>2002-12-31</TxnDate><ARAccountRef><ListID>R-1</ListID></ARAccountRef><InvoiceLineRet><ItemRef><ListID>S-2</ListID></ItemRef><Quantity>4</Quantity><Amount>40.00</Amount></InvoiceLineRet></InvoiceRet>
</InvoiceQueryRs>
<SalesReceiptQueryRs>
<SalesReceiptRet><TxnID>T-4</TxnID><TxnDate>2002-01-02</TxnDate><DepositToAccountRef><ListID>B-1</ListID></DepositToAccountRef><SalesReceiptLineRet><ItemRef><ListID>S-1</ListID></ItemRef><Amount>10.00</Amount></SalesReceiptLineRet></SalesReceiptRet>
</SalesReceiptQueryRs>
<PreferencesQueryRs><PreferencesRet><AccountingPreferences><IsUsingAccountNumbers>false</IsUsingAccountNumbers></AccountingPreferences></PreferencesRet></PreferencesQueryRs>
</QBXMLMsgsRs></QBXML>
)";

/// Returns a request document with these messages, in qbXML 2.0.
inline std::string RequestDocument(std::string_view messages) {
  return EnvelopeHead("2.0") + "\r\n" + std::string(messages) + "\r\n" + EnvelopeTail();
}

/// Ends the process unless a company's answer is an ASCII document with one answer per request.
inline void RequireAnswer(const std::string& answer, std::size_t requests) {
  Require(IsAscii(answer), "an answer is ASCII", answer);
  const XmlElement document = RequireDocument(answer, "an answer is a document");
  const std::vector<XmlElement> messages = document.Children();
  Require(messages.size() == 1 && messages.front().Children().size() == requests,
          "every request has an answer", answer);
}

}  // namespace krnqb::fuzz
