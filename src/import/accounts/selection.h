#pragma once

#include "import/context.h"
#include "plan/tables_document.h"

namespace krnqb {

/// Builds the list of expense accounts from which the owner of a QBKRN_BRI plan chooses:
///
///     <expenseAccounts>
///     <account id="..." selected="True"><name><![CDATA[...]]></name></account></expenseAccounts>
///
/// It has one record per top-level account of the company. An account is selected if a cell of the plan's
/// contribution-margin table contains its name, ignoring the case of A to Z. Stores the QuickBooks response
/// as the expense account list. Returns an empty handle for other products and if the plan has no such table;
/// also if the plan or the company cannot be read or a name contains a double quote or "]]>", which is
/// reported to the observer.
XmlElement BuildSelectedExpenses(ImportContext& context);

/// Adds to `changed` the tables that an expense account list (an AccountQueryRs element) changes, by
/// product; does nothing for an unknown product. For QBKRN_BRI, leaves out the accounts whose selection is
/// false and all sub-accounts, and throws Error 91 without a selection and Error 13 if a "selected" attribute
/// is missing or not a Boolean.
void SelectAccountRows(ImportContext& context, TablesDocument& changed, const XmlElement& accounts);

}  // namespace krnqb
