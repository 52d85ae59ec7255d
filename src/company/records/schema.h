#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "company/records/database.h"

namespace krnqb::company {

/// Makes an empty database a company file without records.
void CreateSchema(const Database& database, std::string_view processorVersion);

/// Error `company_error::cannotOpen` when a database is no company file, or one of a newer layout than this
/// program's; `file` is its name in the text.
void CheckSchema(const Database& database, const std::filesystem::path& file);

/// The version of qbXML that the company's processor speaks: "1.0", "1.1" or "2.0". Error
/// `company_error::cannotOpen` when the file holds another.
std::string ReadProcessorVersion(const Database& database);

}  // namespace krnqb::company
