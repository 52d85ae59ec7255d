#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "import/amounts/date_ranges.h"
#include "import/context.h"
#include "krnqb/subtotals.h"
#include "krnqb/xml_element.h"

namespace krnqb {

/// Adds a profit-and-loss report by month to the subtotals of the accounts that its rows name: "ColData"
/// number m of each row goes to month m. A row of a sub-account (a name with ":") and one that names no
/// subtotal is skipped; every other row is added, also when several name one account. Error 91 when the
/// answer is none.
void ParseProfitAndLossReport(const XmlElement& answer, std::optional<SubtotalCollection>& target,
                              Observer& observer, const Place& place);

/// Asks for the report of a number (300, 310 or 320) over a range and adds it. Throws what QuickBooks refuses
/// it with too.
void ParseProfitAndLossReport(Session& session, std::int32_t requestNumber, const DateRange& range,
                              std::optional<SubtotalCollection>& target, Observer& observer);

/// Whether the balance sheet by type raises a progress event per account type.
enum class TypeProgress { Raised, Silent };

/// Asks for the balance sheet of each of twelve account types and adds the first amount of each top-level row
/// to the type's slot `period` (1 to 14). `request` is request 330 with its placeholder, `asOfDate` the date
/// in it. Raises a progress event per type when `progress` says so. Error 91 when an answer is no report,
/// else what QuickBooks refuses a request with.
void ParseBalanceSheetByType(ImportContext& context, std::int16_t period, const std::string& request,
                             const std::string& asOfDate, SubtotalCollection& target, TypeProgress progress);

/// The account name of a report row's label: what follows an account number and " · ", trimmed, or the whole
/// label.
std::string_view AccountNameOfLabel(std::string_view label);

}  // namespace krnqb
