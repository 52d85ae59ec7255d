#include "qbxml/response_element.h"

#include "support/number_text.h"
#include "support/xml_parser.h"

namespace krnqb {
namespace {

XmlElement Named(XmlElement element, std::string_view expectedName) {
  return expectedName.empty() || element.Name() == expectedName ? std::move(element) : XmlElement();
}

void TellStatus(const XmlElement& answer, Observer& observer, const Place& place) {
  const std::optional<std::string> code = answer.Attribute("statusCode");
  if (!code || *code == "0" || *code == "1") return;
  observer.Notify(Notice{.kind = NoticeKind::AnswerStatus,
                         .place = place,
                         .number = static_cast<std::int32_t>(LeadingNumber(*code)),
                         .severity = answer.Attribute("statusSeverity").value_or(""),
                         .description = answer.Attribute("statusMessage").value_or("")});
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
    if (const std::string* text = answer.AsText()) {
      const auto fault = ParseXmlText(*text).fault;
      observer.Notify(Notice{.kind = NoticeKind::AnswerUnreadable,
                             .place = place,
                             .number = 0,
                             .severity = {},
                             .description = fault ? fault->message : std::string()});
    }
    return root;
  }
  for (XmlElement set = root.FirstChild(); set; set = set.NextSibling()) {
    for (XmlElement child = set.FirstChild(); child; child = child.NextSibling())
      TellStatus(child, observer, place);
  }
  return root;
}

}  // namespace krnqb
