#pragma once

#include <memory>
#include <string>
#include <vector>

#include "cli/console/surroundings.h"
#include "cli/import/settings.h"
#include "cli/import/source.h"
#include "reconcile/booked_entries.h"

namespace krnqb::cli {

/// Imports a company's amounts into a plan in memory, which is not saved. The bookings are passed to
/// `booked`. Returns QuickBooks' answers, in order, if `keepAnswers` is set. Throws Failure if the import
/// fails or something that it needs cannot be read.
std::vector<std::string> RepeatImport(const ImportSettings& settings, const ImportSource& source,
                                      const std::shared_ptr<plan_file::PlanFile>& plan, bool keepAnswers,
                                      const InterruptWatch& interrupts, const Surroundings& surroundings,
                                      reconcile::BookedEntries& booked);

}  // namespace krnqb::cli
