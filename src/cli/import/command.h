#pragma once

#include "cli/console/command_end.h"
#include "cli/console/streams.h"
#include "cli/console/surroundings.h"
#include "cli/import/options.h"
#include "ui/dialogs.h"

namespace krnqb::cli {

/// Imports from a company or a recording into a plan and prints the result, including failures. Leaves the
/// plan's file untouched until everything has been read.
CommandEnd Run(const ImportCommand& options, const Console& console, const Surroundings& surroundings);

/// Shows the options dialog, in which the user chooses what to import and starts the import. Only company and
/// plan come from `options`. Also shows a failed import in a message. Prints and writes nothing if the dialog
/// is cancelled.
CommandEnd RunWithDialog(const ImportCommand& options, const std::shared_ptr<ui::Dialogs>& dialogs,
                         const Console& console, const Surroundings& surroundings);

}  // namespace krnqb::cli
