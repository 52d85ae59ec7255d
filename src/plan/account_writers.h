#pragma once

#include "krnqb/outside_world.h"
#include "krnqb/xml_element.h"
#include "plan/host_plan.h"
#include "plan/tables_document.h"

namespace krnqb {

// Each writer merges the top-level accounts of a list into a planned table, adds blank rows to the table of
// actual values to keep it aligned, and adds both tables to `changed`, except a table without blocks.
// `accounts` has the account records as its children. Throws the errors of `HostPlan` and of
// `MergeAccountRows`; the tables that were complete stay in `changed`.

/// Merges sales accounts, the response to request 1.
void WriteSalesAccounts(TablesDocument& changed, const XmlElement& accounts, const HostPlan& plan,
                        Clock& clock);

/// Merges cost-of-goods accounts, the response to request 2.
void WriteCostAccounts(TablesDocument& changed, const XmlElement& accounts, const HostPlan& plan,
                       Clock& clock);

/// Merges expense accounts for QBKRN_ALD and QBKRN_COR. New accounts whose name occurs within "Depreciation"
/// get no row: the plan keeps depreciation in a separate row.
void WriteIncomeRangeAccounts(TablesDocument& changed, const XmlElement& accounts, const HostPlan& plan,
                              Clock& clock);

/// Merges expense accounts for QBKRN_BRI.
void WriteContributionMarginAccounts(TablesDocument& changed, const XmlElement& accounts,
                                     const HostPlan& plan, Clock& clock);

}  // namespace krnqb
