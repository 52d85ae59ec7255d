#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "krnqb/observer.h"
#include "krnqb/variant.h"
#include "krnqb/xml_element.h"
#include "xml/parser.h"

namespace krnqb {

/// The document element of an answer's text, or the element that `data` holds, when its name is
/// `expectedName` or that is empty; none otherwise, also when the text is no document. Never throws.
XmlElement ResponseElement(const Variant& data, std::string_view expectedName) noexcept;

/// `ResponseElement` of an answer's text with any name. Tells the observer when the text is no document and
/// when one of the answers in it has a status other than 0 (fine) and 1 (no records).
XmlElement AnswerElement(const Variant& answer, Observer& observer, const Place& place);

/// Tells the observer the status of one answer, given its attributes, unless it is 0, 1 or absent.
void TellStatus(const std::function<std::optional<std::string>(std::string_view)>& attribute,
                Observer& observer, const Place& place);

/// Tells the observer that an answer is no document.
void TellUnreadable(const XmlFault& fault, Observer& observer, const Place& place);

}  // namespace krnqb
