#pragma once

#include <cstdint>

#include "import/import_context.h"

namespace krnqb {

/// The expense pass over twelve months that begin with a month (1 to 12) of a year.
void ImportExpenseBalances(ImportContext& context, std::int16_t startMonth, std::int16_t startYear);

/// The income pass over twelve months that begin with a month (1 to 12) of a year.
void ImportIncomeBalances(ImportContext& context, std::int16_t startMonth, std::int16_t startYear);

}  // namespace krnqb
