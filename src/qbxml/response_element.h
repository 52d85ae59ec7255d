#pragma once

#include <cstdint>
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

/// What an answer with an error status means to whoever asked.
enum class ErrorStatus : std::uint8_t {
  DataMissing,  ///< records that were asked for are missing
  Expected      ///< the question never has another answer, so nothing is missing
};

/// Returns `ResponseElement` of an answer's text with any name. Reports a text that is not a document, and
/// each answer in it with a status other than 0 (fine) and 1 (no records).
XmlElement AnswerElement(const Variant& answer, Observer& observer, const Place& place,
                         ErrorStatus errorStatus = ErrorStatus::DataMissing);

/// Reports the status of one answer, given its attributes, unless it is 0, 1 or absent. A status of severity
/// "Info" below 500 is information only; with any other, data may be missing.
void ReportStatus(const std::function<std::optional<std::string>(std::string_view)>& attribute,
                  Observer& observer, const Place& place, ErrorStatus errorStatus = ErrorStatus::DataMissing);

/// Reports that an answer is not a document.
void ReportUnreadable(const XmlFault& fault, Observer& observer, const Place& place);

}  // namespace krnqb
