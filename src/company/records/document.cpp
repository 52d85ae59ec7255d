#include "company/records/document.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>

#include "company/records/date.h"
#include "company/records/errors.h"
#include "krnqb/error.h"
#include "support/number_text.h"
#include "xml/parser.h"

namespace krnqb::company {
namespace {

constexpr int firstErrorStatus = 1000;  // below it an answer is complete

[[noreturn]] void Refuse(const std::string& reason) {
  throw Error(company_error::cannotParse, reason);
}

std::string RequiredText(const XmlElement& record, std::string_view name) {
  const XmlElement child = record.Child(name);
  std::string text = child ? child.Text() : std::string();
  if (text.empty()) Refuse(fmt::format("{} has no {}", record.Name(), name));
  return text;
}

// Returns a text as a message shows it. A document may hold gigabytes.
std::string Shown(std::string_view text) {
  constexpr std::size_t longest = 40;
  if (text.size() <= longest) return std::string(text);
  std::size_t end = longest;
  while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) --end;
  return std::string(text.substr(0, end)) + "...";
}

// An import would take a text that is not a number for 0.
void RequireNumber(const XmlElement& account, std::string_view name) {
  const XmlElement child = account.Child(name);
  if (!child || ConvertToDouble(child.Text())) return;
  const XmlElement accountName = account.Child("Name");
  Refuse(fmt::format("{} {} has the {} \"{}\", which is not a number", account.Name(),
                     Shown(accountName ? accountName.Text() : RequiredText(account, "ListID")), name,
                     Shown(child.Text())));
}

void ReadListEntry(const XmlElement& element, CompanyRecord& record) {
  record.key = RequiredText(element, "ListID");
  if (const XmlElement parent = element.Child("ParentRef").Child("ListID")) record.parentKey = parent.Text();
  if (record.kind->family == "Item") record.itemAccounts = ReadItemAccounts(element);
  if (record.kind->family != "Account") return;
  for (const std::string_view balance : {"Balance", "TotalBalance"}) RequireNumber(element, balance);
  record.accountType = RequiredText(element, "AccountType");
  if (!AccountTypeOrder(record.accountType)) {
    Refuse(fmt::format("AccountRet has the unknown AccountType \"{}\"", Shown(record.accountType)));
  }
}

void ReadTransaction(const XmlElement& element, CompanyRecord& record) {
  record.key = RequiredText(element, "TxnID");
  record.date = RequiredText(element, "TxnDate");
  if (!IsCalendarDate(record.date)) {
    Refuse(fmt::format("{} has the TxnDate \"{}\", which is not a date written YYYY-MM-DD", element.Name(),
                       Shown(record.date)));
  }
}

// Item records are answers to the request for all items or for one kind of item.
bool IsAnswerOf(std::string_view answer, const RecordKind& kind) {
  if (!answer.ends_with("QueryRs")) return false;
  answer.remove_suffix(std::string_view("QueryRs").size());
  return answer == kind.family || answer == kind.element.substr(0, kind.element.size() - 3);
}

bool IsKnownAnswer(std::string_view answer) {
  return std::ranges::any_of(RecordKinds(), [&](const RecordKind& kind) { return IsAnswerOf(answer, kind); });
}

// An answer with an error status has no records even if the company has some, so it must not count as empty.
void CheckStatus(const XmlElement& answer) {
  const std::string status = answer.Attribute("statusCode").value_or("0");
  int number = 0;
  std::from_chars(status.data(), status.data() + status.size(), number);
  if (number < firstErrorStatus) return;
  Refuse(fmt::format("{} has the error status {}: {}", answer.Name(), status,
                     answer.Attribute("statusMessage").value_or("")));
}

class DocumentReader {
 public:
  DocumentReader(std::string_view name, const RecordReceiver& receive, const PassedOverReceiver& passOver)
      : name_(name), receive_(receive), passOver_(passOver) {}

  void Read(std::string_view bytes) {
    const XmlParseResult parsed = ParseXmlBytes(bytes);
    if (parsed.fault) Refuse(Located(parsed.fault->line, "not well-formed: " + parsed.fault->message));
    At(parsed.element, [&] {
      if (parsed.element.Name() != "QBXML")
        Refuse("not a qbXML response: the root element is " + parsed.element.Name());
    });
    for (const XmlElement& messages : parsed.element.Children()) {
      At(messages, [&] {
        if (messages.Name() != "QBXMLMsgsRs") Refuse("QBXMLMsgsRs expected, found " + messages.Name());
      });
      for (XmlElement answer = messages.FirstChild(); answer; answer = answer.NextSibling())
        ReadAnswer(answer);
    }
  }

 private:
  void ReadAnswer(const XmlElement& answer) {
    const std::string answerName = answer.Name();
    if (answerName == "HostQueryRs") return;
    const bool isKnown = IsKnownAnswer(answerName);
    At(answer, [&] {
      if (!isKnown && !passOver_) {
        Refuse(fmt::format("company files cannot store records of {}", Shown(answerName)));
      }
      if (isKnown) CheckStatus(answer);
    });
    for (XmlElement element = answer.FirstChild(); element; element = element.NextSibling()) {
      if (passOver_ && FindRecordKind(element.Name()) == nullptr) {
        passOver_(element.Name());
        continue;
      }
      CompanyRecord record;
      At(element, [&] {
        record = ReadRecord(element);
        if (!IsAnswerOf(answerName, *record.kind)) {
          Refuse(fmt::format("{} cannot contain {}", Shown(answerName), element.Name()));
        }
      });
      receive_(std::move(record));
    }
  }

  std::string Located(long line, const std::string& reason) const {
    return fmt::format("{}, line {}: {}", name_, line, reason);
  }

  template <typename Reading>
  void At(const XmlElement& element, Reading&& reading) const {
    try {
      std::forward<Reading>(reading)();
    } catch (const Error& error) {
      throw Error(error.Number(), Located(element.Line(), error.Description()));
    }
  }

  std::string name_;
  const RecordReceiver& receive_;
  const PassedOverReceiver& passOver_;
};

}  // namespace

CompanyRecord ReadRecord(const XmlElement& element) {
  CompanyRecord record;
  record.kind = FindRecordKind(element.Name());
  if (record.kind == nullptr) Refuse(fmt::format("company files cannot store {} records", element.Name()));
  if (record.kind->shape == RecordShape::ListEntry) ReadListEntry(element, record);
  if (record.kind->shape == RecordShape::Transaction) ReadTransaction(element, record);
  record.text = WriteRecordText(element);
  if (record.kind->shape == RecordShape::Transaction) record.postings = ReadPostings(record.text.xml);
  return record;
}

void ReadDocument(std::string_view documentName, std::string_view bytes, const RecordReceiver& receive,
                  const PassedOverReceiver& passOver) {
  DocumentReader(documentName, receive, passOver).Read(bytes);
}

}  // namespace krnqb::company
