#pragma once

#include "cli/console/command_end.h"
#include "cli/console/streams.h"
#include "cli/console/surroundings.h"
#include "cli/exchange/import_witness.h"
#include "cli/import/options.h"
#include "cli/import/outcome.h"
#include "ui/dialogs.h"

namespace krnqb::cli {

/// Imports from a company or a recording into a plan and prints the result, including failures. Leaves the
/// plan's file untouched until everything has been read.
CommandEnd Run(const ImportCommand& options, const Console& console, const Surroundings& surroundings);

/// Imports as `Run` does, but does not print the result. `witness` may be null.
ImportOutcome Import(const ImportCommand& options, const Console& console, const Surroundings& surroundings,
                     ImportWitness* witness);

/// Returns how an import ends the program.
CommandEnd EndOf(const ImportOutcome& outcome);

/// Shows the options dialog, in which the user chooses what to import and starts the import. Only company and
/// plan come from `options`. Also shows a failed import in a message. Prints and writes nothing if the dialog
/// is cancelled.
CommandEnd RunWithDialog(const ImportCommand& options, const std::shared_ptr<ui::Dialogs>& dialogs,
                         const Console& console, const Surroundings& surroundings);

}  // namespace krnqb::cli
