#include "company/records/company_record.h"

#include <fmt/format.h>

#include "company/records/date.h"
#include "company/records/errors.h"
#include "krnqb/error.h"
#include "support/number_text.h"

namespace krnqb::company {
namespace {

[[noreturn]] void Refuse(const std::string& reason) {
  throw Error(company_error::cannotParse, reason);
}

std::string RequiredText(const RecordElement& record, std::string_view name) {
  std::string text = record.Child(name).Text();
  if (text.empty()) Refuse(fmt::format("{} has no {}", record.Name(), name));
  return text;
}

// An import would take a text that is not a number for 0.
void RequireNumber(const RecordElement& account, std::string_view name) {
  const RecordElement child = account.Child(name);
  if (!child || ConvertToDouble(child.Text())) return;
  const RecordElement accountName = account.Child("Name");
  Refuse(fmt::format("{} {} has the {} \"{}\", which is not a number", account.Name(),
                     Shown(accountName ? accountName.Text() : RequiredText(account, "ListID")), name,
                     Shown(child.Text())));
}

void ReadListEntry(const RecordElement& element, CompanyRecord& record) {
  record.key = RequiredText(element, "ListID");
  record.parentKey = element.Child("ParentRef").Child("ListID").Text();
  if (record.kind->family == "Item") record.itemAccounts = ReadItemAccounts(element);
  if (record.kind->family != "Account") return;
  for (const std::string_view balance : {"Balance", "TotalBalance"}) RequireNumber(element, balance);
  record.accountType = RequiredText(element, "AccountType");
  if (!AccountTypeOrder(record.accountType)) {
    Refuse(fmt::format("AccountRet has the unknown AccountType \"{}\"", Shown(record.accountType)));
  }
}

void ReadTransaction(const RecordElement& element, CompanyRecord& record) {
  record.key = RequiredText(element, "TxnID");
  record.date = RequiredText(element, "TxnDate");
  if (!IsCalendarDate(record.date)) {
    Refuse(fmt::format("{} has the TxnDate \"{}\", which is not a date written YYYY-MM-DD", element.Name(),
                       Shown(record.date)));
  }
}

}  // namespace

CompanyRecord ReadRecord(const RecordElement& element) {
  CompanyRecord record;
  record.kind = FindRecordKind(element.Name());
  if (record.kind == nullptr) Refuse(fmt::format("company files cannot store {} records", element.Name()));
  if (record.kind->shape == RecordShape::ListEntry) ReadListEntry(element, record);
  if (record.kind->shape == RecordShape::Transaction) {
    ReadTransaction(element, record);
    record.postings = ReadPostings(element);
  }
  return record;
}

std::string Shown(std::string_view text) {
  constexpr std::size_t longest = 40;
  if (text.size() <= longest) return std::string(text);
  std::size_t end = longest;
  while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) --end;
  return std::string(text.substr(0, end)) + "...";
}

}  // namespace krnqb::company
