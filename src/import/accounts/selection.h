#pragma once

#include "import/context.h"
#include "plan/tables_document.h"

namespace krnqb {

/// The expense accounts among which a QBKRN_BRI plan's owner chooses:
///
///     <expenseAccounts>
///     <account id="..." selected="True"><name><![CDATA[...]]></name></account></expenseAccounts>
///
/// one record per top-level account of the company, selected when a cell of the plan's contribution-margin
/// table has its name (the case of A to Z aside). The answer becomes the expense account list. None for other
/// products, and, told to the observer, when the plan or the company cannot be read or a name cannot stand in
/// the document or its search path.
XmlElement BuildSelectedExpenses(ImportContext& context);

/// Adds to `changed` the tables that an expense account list (an AccountQueryRs element) changes, by
/// product. For QBKRN_BRI the accounts whose selection is false and all sub-accounts are left out first;
/// error 91 without a selection, 13 when a "selected" attribute is no Boolean. Nothing for an unknown
/// product.
void SelectAccountRows(ImportContext& context, TablesDocument& changed, const XmlElement& accounts);

}  // namespace krnqb
