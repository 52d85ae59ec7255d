#pragma once

#include "cli/console/streams.h"
#include "cli/console/surroundings.h"
#include "cli/import/options.h"
#include "ui/dialogs.h"

namespace krnqb::cli {

/// Imports from a company or a recording into a plan and prints what came of it, failures included. Nothing
/// of the plan's file is touched until everything has been read.
ExitCode Run(const ImportCommand& options, const Console& console, const Surroundings& surroundings);

/// Lets a person choose in the options dialog what to import, and import: company and plan are the options'
/// own. What failed is shown in a message too. Nothing is printed or written when the dialog is cancelled.
ExitCode RunWithDialog(const ImportCommand& options, const std::shared_ptr<ui::Dialogs>& dialogs,
                       const Console& console, const Surroundings& surroundings);

}  // namespace krnqb::cli
