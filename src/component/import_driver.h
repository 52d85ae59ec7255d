#pragma once

#include "import/context.h"
#include "support/error_pair.h"

namespace krnqb {

/// Runs one whole import. False, with the reason in the error pair, when QuickBooks cannot be used; otherwise
/// true, also after an error that ended the import: that error is in the pair then, and `AfterImport` was not
/// raised. The session is closed but for the results that are false.
bool RunImport(ImportContext& context, ErrorPair& errorPair);

}  // namespace krnqb
