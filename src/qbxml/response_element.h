#pragma once

#include <string_view>

#include "krnqb/observer.h"
#include "krnqb/variant.h"
#include "krnqb/xml_element.h"

namespace krnqb {

/// The document element of an answer's text, or the element that `data` holds, when its name is
/// `expectedName` or that is empty; none otherwise, also when the text is no document. Never throws.
XmlElement ResponseElement(const Variant& data, std::string_view expectedName) noexcept;

/// `ResponseElement` of an answer's text with any name. Tells the observer when the text is no document and
/// when one of the answers in it has a status other than 0 (fine) and 1 (no records).
XmlElement AnswerElement(const Variant& answer, Observer& observer, const Place& place);

}  // namespace krnqb
