#pragma once

#include "import/context.h"
#include "support/error_pair.h"

namespace krnqb {

/// Runs a whole import and closes the session. Returns false, with the reason in the error pair and the
/// session not closed, if QuickBooks cannot be used. Otherwise returns true, even if an error ended the
/// import: that error is in the pair, and `AfterImport` was not raised.
bool RunImport(ImportContext& context, ErrorPair& errorPair);

}  // namespace krnqb
