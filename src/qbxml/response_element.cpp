#include "qbxml/response_element.h"

#include <fmt/format.h>

#include <charconv>

#include "xml/parser.h"

namespace krnqb {
namespace {

// From this status on, data may be missing whatever the severity.
constexpr std::int32_t firstWarningStatus = 500;

XmlElement Named(XmlElement element, std::string_view expectedName) {
  return expectedName.empty() || element.Name() == expectedName ? std::move(element) : XmlElement();
}

// A code that is not a number is reported as 0.
std::int32_t StatusNumber(const std::string& code) {
  std::int32_t number = 0;
  std::from_chars(code.data(), code.data() + code.size(), number);
  return number;
}

}  // namespace

XmlElement ResponseElement(const Variant& data, std::string_view expectedName) noexcept {
  // Reports nothing: to the caller, an unreadable answer is an answer without data.
  try {
    const XmlElement* element = data.AsElement();
    XmlElement found = element != nullptr ? element->Own() : XmlElement::Parse(data.ToText());
    return found ? Named(std::move(found), expectedName) : XmlElement();
  } catch (...) {
    return {};
  }
}

XmlElement AnswerElement(const Variant& answer, Observer& observer, const Place& place,
                         ErrorStatus errorStatus) {
  XmlElement root = ResponseElement(answer, {});
  if (!root) {
    const std::string* text = answer.AsText();
    if (text != nullptr) ReportUnreadable(ParseXmlText(*text).fault.value_or(XmlFault()), observer, place);
    return root;
  }
  for (XmlElement set = root.FirstChild(); set; set = set.NextSibling()) {
    for (XmlElement child = set.FirstChild(); child; child = child.NextSibling()) {
      ReportStatus([&](std::string_view name) { return child.Attribute(name); }, observer, place,
                   errorStatus);
    }
  }
  return root;
}

void ReportStatus(const std::function<std::optional<std::string>(std::string_view)>& attribute,
                  Observer& observer, const Place& place, ErrorStatus errorStatus) {
  const std::optional<std::string> code = attribute("statusCode");
  if (!code || *code == "0" || *code == "1") return;
  Notice notice{.kind = NoticeKind::AnswerStatus,
                .place = place,
                .number = StatusNumber(*code),
                .severity = attribute("statusSeverity").value_or(""),
                .description = attribute("statusMessage").value_or("")};
  const bool information = notice.severity == "Info" && notice.number < firstWarningStatus;
  if (!information && errorStatus == ErrorStatus::DataMissing) notice.meaning = NoticeMeaning::Incomplete;
  observer.Notify(notice);
}

void ReportUnreadable(const XmlFault& fault, Observer& observer, const Place& place) {
  observer.Notify(Notice{.kind = NoticeKind::AnswerUnreadable,
                         .meaning = NoticeMeaning::Incomplete,
                         .place = place,
                         .description = fmt::format("line {}: {}", fault.line, fault.message)});
}

}  // namespace krnqb
