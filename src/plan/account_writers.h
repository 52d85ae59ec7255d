#pragma once

#include <string>

#include "krnqb/outside_world.h"
#include "krnqb/xml_element.h"
#include "plan/host_plan.h"

namespace krnqb {

// Each writer merges the top-level accounts of a list into a planned table, keeps the table of actual values
// in step, and appends the records of both to `result`; a table without blocks gets no record. A failure
// leaves in `result` the records that were complete. `accounts` holds the account records as its children.

/// Sales accounts, for an answer of request 1.
void WriteSalesAccounts(std::string& result, const XmlElement& accounts, const HostPlan& plan, Clock& clock);

/// Cost-of-goods accounts, for an answer of request 2.
void WriteCostAccounts(std::string& result, const XmlElement& accounts, const HostPlan& plan, Clock& clock);

/// Expense accounts of QBKRN_ALD and QBKRN_COR. New accounts whose name occurs within "Depreciation" get no
/// row: the plan keeps depreciation in a row of its own.
void WriteIncomeRangeAccounts(std::string& result, const XmlElement& accounts, const HostPlan& plan,
                              Clock& clock);

/// Expense accounts of QBKRN_BRI.
void WriteContributionMarginAccounts(std::string& result, const XmlElement& accounts, const HostPlan& plan,
                                     Clock& clock);

}  // namespace krnqb
