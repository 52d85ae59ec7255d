#pragma once

#include <string_view>

#include "profit_and_loss/report.h"

namespace krnqb::profit_and_loss {

/// Captures a summary or detail report from a CSV text in UTF-8. Throws Error 13 "DOCUMENT: ..." if the text
/// is not CSV with "," or ";", has no line of column titles, or a line with two labels.
CapturedReport CaptureCsvReport(std::string_view document, std::string_view text);

}  // namespace krnqb::profit_and_loss
