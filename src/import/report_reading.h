#pragma once

#include <optional>

#include "krnqb/subtotals.h"
#include "krnqb/xml_element.h"

namespace krnqb {

/// Adds the rows of a profit-and-loss report by month to the subtotals of the accounts that they name.
void ParseProfitAndLossReport(const XmlElement& response, std::optional<SubtotalCollection>& target);

}  // namespace krnqb
