#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "cli/import/options.h"
#include "cli/import/warning.h"
#include "krnqb/qb_data_exchange.h"

namespace krnqb::cli {

/// Selects the expense accounts that the options name, or all of them, besides those already in the plan.
/// Returns a warning if none is selected afterwards.
///
/// Throws Failure if the accounts cannot be read, or if a name is not a top-level expense account; the
/// message offers the nearest names.
std::optional<ImportWarning> SelectExpenses(QBDataExchange& exchange, const ImportCommand& options);

/// Reads the plan's selection, which the dialog cannot extend. Returns a warning if no account is selected.
/// Throws Failure if the company cannot be read.
std::optional<ImportWarning> ReadSelectedExpenses(QBDataExchange& exchange);

/// The accounts of a selection document to return.
enum class SelectionPart : std::uint8_t { All, Selected };

/// Returns the account names of a selection document, in document order.
std::vector<std::string> SelectionNames(const XmlElement& selection, SelectionPart part);

}  // namespace krnqb::cli
