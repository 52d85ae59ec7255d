#include "sample_company/draft.h"

#include <fmt/format.h>

namespace krnqb::sample_company {

void Draft::Begin(std::string_view recordElement, const Occasion& occasion) {
  kind_ = company::FindRecordKind(recordElement);
  isInvoice_ = recordElement == "InvoiceRet";
  dayText_ = occasion.dayText;
  enteredAt_ = UnixTime(occasion.day, occasion.secondOfDay);
  id_ = fmt::format("{:X}-{}", ++lastNumber_, enteredAt_);
  postings_ = company::PostingList(*kind_);
  total_ = 0;
  lineCount_ = 0;
  lines_.Clear();
  head_.Clear();
  head_.Open(recordElement);
  head_.Text("TxnID", id_);
  head_.Times(occasion.dayText, occasion.secondOfDay, enteredAt_);
  head_.Number("TxnNumber", ++transactionCount_);
}

void Draft::OpenLine(std::string_view element) {
  lines_.Open(element);
  lines_.Id("TxnLineID", ++lastNumber_, enteredAt_);
  ++lineCount_;
}

void Draft::PostTotal(std::size_t account) {
  const bool isSale = kind_->element == "InvoiceRet" || kind_->element == "SalesReceiptRet";
  company_.accounts.Post(account, isSale ? total_ : -total_);
  postings_.AddTotal(company_.accounts[account].listId, total_);
}

company::CompanyRecord Draft::Finish(std::string_view afterLines) {
  company::CompanyRecord record;
  record.kind = kind_;
  record.key = id_;
  record.date = dayText_;
  std::string& xml = record.text.xml;
  xml.reserve(head_.Size() + lines_.Size() + afterLines.size() + kind_->element.size() + 4);
  xml = head_.Xml();
  record.text.linesBegin = xml.size();
  xml += lines_.Xml();
  record.text.linesEnd = xml.size();
  xml.append(afterLines).append("</").append(kind_->element).append(">\n");
  record.postings = postings_.Take();
  return record;
}

}  // namespace krnqb::sample_company
