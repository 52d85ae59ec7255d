#include "qbxml/response_element.h"

#include <charconv>

#include "xml/parser.h"

namespace krnqb {
namespace {

XmlElement Named(XmlElement element, std::string_view expectedName) {
  return expectedName.empty() || element.Name() == expectedName ? std::move(element) : XmlElement();
}

// A code that is no number is told as 0.
std::int32_t StatusNumber(const std::string& code) {
  std::int32_t number = 0;
  std::from_chars(code.data(), code.data() + code.size(), number);
  return number;
}

}  // namespace

XmlElement ResponseElement(const Variant& data, std::string_view expectedName) noexcept {
  // Under a catch-all that tells nobody: what is no document is an answer like any other to whoever asks.
  try {
    const XmlElement* element = data.AsElement();
    XmlElement found = element != nullptr ? element->Own() : XmlElement::Parse(data.ToText());
    return found ? Named(std::move(found), expectedName) : XmlElement();
  } catch (...) {
    return {};
  }
}

XmlElement AnswerElement(const Variant& answer, Observer& observer, const Place& place) {
  XmlElement root = ResponseElement(answer, {});
  if (!root) {
    const std::string* text = answer.AsText();
    if (text != nullptr) TellUnreadable(ParseXmlText(*text).fault.value_or(XmlFault()), observer, place);
    return root;
  }
  for (XmlElement set = root.FirstChild(); set; set = set.NextSibling()) {
    for (XmlElement child = set.FirstChild(); child; child = child.NextSibling()) {
      TellStatus([&](std::string_view name) { return child.Attribute(name); }, observer, place);
    }
  }
  return root;
}

void TellStatus(const std::function<std::optional<std::string>(std::string_view)>& attribute,
                Observer& observer, const Place& place) {
  const std::optional<std::string> code = attribute("statusCode");
  if (!code || *code == "0" || *code == "1") return;
  observer.Notify(Notice{.kind = NoticeKind::AnswerStatus,
                         .place = place,
                         .number = StatusNumber(*code),
                         .severity = attribute("statusSeverity").value_or(""),
                         .description = attribute("statusMessage").value_or("")});
}

void TellUnreadable(const XmlFault& fault, Observer& observer, const Place& place) {
  observer.Notify(Notice{.kind = NoticeKind::AnswerUnreadable,
                         .place = place,
                         .number = 0,
                         .severity = {},
                         .description = fault.message});
}

}  // namespace krnqb
