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

/// Returns the document element of an answer's text, or the element in `data`. Returns an empty element if
/// its name is not `expectedName` (empty: any name), or if the text is not a well-formed document.
XmlElement ResponseElement(const Variant& data, std::string_view expectedName) noexcept;

/// The meaning of an error status for the sender of the request.
enum class ErrorStatus : std::uint8_t {
  DataMissing,  ///< requested records are missing
  Expected      ///< the request always has an error status, so nothing is missing
};

/// Returns the document element of an answer's text, see `ResponseElement`. Reports a text that is not
/// well-formed, and each response in it with a status other than 0 (success) and 1 (no records).
XmlElement AnswerElement(const Variant& answer, Observer& observer, const Place& place,
                         ErrorStatus errorStatus = ErrorStatus::DataMissing);

/// Reports the status of one response, unless it is 0, 1 or absent; `attribute` returns an attribute by name.
/// A status of severity "Info" below 500 is information only; with any other, data may be missing.
void ReportStatus(const std::function<std::optional<std::string>(std::string_view)>& attribute,
                  Observer& observer, const Place& place, ErrorStatus errorStatus = ErrorStatus::DataMissing);

/// Reports that an answer is not a well-formed document, with the line and the reason.
void ReportUnreadable(const XmlFault& fault, Observer& observer, const Place& place);

}  // namespace krnqb
