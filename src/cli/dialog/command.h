#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "cli/console/command_end.h"
#include "cli/console/streams.h"
#include "cli/console/surroundings.h"
#include "cli/exchange/company_choice.h"

namespace krnqb::cli {

enum class DialogName : std::uint8_t { Options, Export, Company, Plan, About };

/// `krnqb dialog` as it was typed.
struct DialogOptions : CompanyChoice {
  DialogName dialog = DialogName::About;
  std::optional<std::string> planFile;
};

/// Shows a dialog and returns once it is closed. The options dialog imports into the plan, as `krnqb import`
/// does; the file dialogs print the chosen path.
CommandEnd Run(const DialogOptions& options, const Console& console, const Surroundings& surroundings);

}  // namespace krnqb::cli
