#pragma once

#include "cli/console/failure.h"
#include "krnqb/qb_data_exchange.h"

namespace krnqb::cli {

/// Returns the component's error pair with its kind; number 0 if there is no error.
Error LastError(const QBDataExchange& exchange);

/// Throws Failure with the component's error pair and a remedy if the pair holds an error.
void RequireNoError(const QBDataExchange& exchange);

/// Throws Failure unless an import has succeeded: `Go` returned true, `AfterImport` was raised and the error
/// pair is empty.
void RequireSuccess(const QBDataExchange& exchange, bool goResult, bool afterImportRaised);

}  // namespace krnqb::cli
