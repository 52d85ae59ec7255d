#include "sample_company/draft.h"

#include <fmt/format.h>

namespace krnqb::sample_company {

void Draft::Begin(std::string_view recordElement, const Occasion& occasion) {
  kind = company::FindRecordKind(recordElement);
  isInvoice = recordElement == "InvoiceRet";
  dayText = occasion.dayText;
  enteredAt = UnixTime(occasion.day, occasion.secondOfDay);
  id = fmt::format("{:X}-{}", ++lastNumber, enteredAt);
  postings = company::PostingList(*kind);
  total = 0;
  lineCount = 0;
  lines.Clear();
  head.Clear();
  head.Open(recordElement);
  head.Text("TxnID", id);
  head.Times(occasion.dayText, occasion.secondOfDay, enteredAt);
  head.Number("TxnNumber", ++transactionCount);
}

void Draft::OpenLine(std::string_view element) {
  lines.Open(element);
  lines.Id("TxnLineID", ++lastNumber, enteredAt);
  ++lineCount;
}

void Draft::PostTotal(std::size_t account) {
  const bool isSale = kind->element == "InvoiceRet" || kind->element == "SalesReceiptRet";
  company.accounts.Post(account, isSale ? total : -total);
  postings.AddTotal(company.accounts[account].listId, total);
}

company::CompanyRecord Draft::Finish(std::string_view afterLines) {
  company::CompanyRecord record;
  record.kind = kind;
  record.key = id;
  record.date = dayText;
  std::string& xml = record.text.xml;
  xml.reserve(head.Size() + lines.Size() + afterLines.size() + kind->element.size() + 4);
  xml = head.Xml();
  record.text.linesBegin = xml.size();
  xml += lines.Xml();
  record.text.linesEnd = xml.size();
  xml.append(afterLines).append("</").append(kind->element).append(">\n");
  record.postings = postings.Take();
  return record;
}

}  // namespace krnqb::sample_company
