#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <string_view>

#include "company/records/database.h"

namespace krnqb::company {

/// Creates the tables of a company file in an empty database.
void CreateSchema(const Database& database, std::string_view processorVersion);

/// Throws Error `company_error::cannotOpen` if a database is not a company file, has a layout that this
/// program does not know, or contains anything but the tables and indexes that `CreateSchema` creates, such
/// as a view or a trigger. `file` is named in the description.
void CheckSchema(const Database& database, const std::filesystem::path& file);

/// Returns the names of the tables that hold the records and what is computed from them: all tables except
/// that with the processor's version.
std::span<const std::string_view> RecordTables() noexcept;

/// Returns the qbXML version of the company's processor: "1.0", "1.1" or "2.0". Throws Error
/// `company_error::cannotOpen` if the file contains another.
std::string ReadProcessorVersion(const Database& database);

}  // namespace krnqb::company
