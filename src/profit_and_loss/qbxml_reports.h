#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "profit_and_loss/report.h"

namespace krnqb::profit_and_loss {

/// Captures the summary and detail reports from QuickBooks' answers in UTF-8; there may be several. Throws
/// Error 13 "DOCUMENT: ..." if the text is not well-formed, is not a qbXML response, contains no report, or
/// if a report's answer has an error status.
std::vector<CapturedReport> CaptureQbxmlReports(std::string_view document, const std::string& text);

}  // namespace krnqb::profit_and_loss
