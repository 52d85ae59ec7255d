#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "import/amounts/date_ranges.h"
#include "import/context.h"
#include "krnqb/subtotals.h"
#include "krnqb/xml_element.h"

namespace krnqb {

/// Adds a monthly profit-and-loss report to the subtotals of the accounts that its rows name: "ColData" m of
/// a row is added to month m. Skips rows of sub-accounts, whose names contain ":", and of accounts without a
/// subtotal. Adds every other row, even if several name the same account. Returns whether any row of a
/// top-level account, added or skipped, has an amount other than 0. Throws Error 91 if `response` is empty
/// and Error 6 if a sum is out of range.
bool ParseProfitAndLossReport(const XmlElement& response, std::optional<SubtotalCollection>& target,
                              Observer& observer, const Place& place);

/// Requests report 300, 310 or 320 over a range and adds it as above. Also throws the error with which
/// QuickBooks refuses the request.
bool ParseProfitAndLossReport(Session& session, std::int32_t requestNumber, const DateRange& range,
                              std::optional<SubtotalCollection>& target, Observer& observer);

/// Whether `ParseBalanceSheetByType` raises a progress event per account type.
enum class TypeProgress { Raised, Silent };

/// Requests the balance sheet of each of twelve account types and adds the first amount of each top-level row
/// to the type's slot `period` (1 to 14). `request` is request 330 with its placeholder; `asOfDate` is the
/// date in it. Throws Error 91 if an answer is not well-formed, Error 6 if a sum is out of range, and the
/// error with which QuickBooks refuses a request.
void ParseBalanceSheetByType(ImportContext& context, std::int16_t period, const std::string& request,
                             const std::string& asOfDate, SubtotalCollection& target, TypeProgress progress);

/// Returns the account name in a report row's label: the text after the first " · ", trimmed of blanks, or
/// the whole label if it has no such separator.
std::string_view AccountNameOfLabel(std::string_view label);

}  // namespace krnqb
