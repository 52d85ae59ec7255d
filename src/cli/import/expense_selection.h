#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "cli/console/streams.h"
#include "cli/import/options.h"
#include "krnqb/qb_data_exchange.h"

namespace krnqb::cli {

/// Adds the expense accounts that the options name, or all, to those that stand in the plan already, as the
/// person who uses the planning program does before an import. Warns when none is selected then.
///
/// Throws Failure when the accounts cannot be read, and for a name that is no top-level expense account, with
/// the nearest names.
void SelectExpenses(QBDataExchange& exchange, const ImportCommand& options, const Console& console);

/// Reads the selection as the plan has it, which a person cannot add to in the dialog. Warns when no account
/// is selected; throws Failure when the company cannot be read.
void ReadSelectedExpenses(QBDataExchange& exchange, const Console& console);

/// The names of the accounts of a selection document, in its order: all of them, or those that are selected.
enum class SelectionPart : std::uint8_t { All, Selected };
std::vector<std::string> SelectionNames(const XmlElement& selection, SelectionPart part);

}  // namespace krnqb::cli
