#pragma once

#include <filesystem>

#include "company/records/database.h"

namespace krnqb::company {

/// Copies a company into the empty file `copy`, in the layout that this program writes. The copy answers
/// every request as the company does. Uses no journal, because an unfinished copy is of no use.
void CopyCompany(const Database& company, const std::filesystem::path& copy, const Interruption& interrupted);

}  // namespace krnqb::company
