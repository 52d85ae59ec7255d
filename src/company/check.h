#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "company/records/database.h"

namespace krnqb::company {

/// The result of checking a company file.
struct CheckReport {
  std::string path;        ///< absolute
  bool checksums = false;  ///< whether the pages have checksums; those of layout 1 have none
  std::int64_t pages = 0;  ///< including unused ones
  std::int64_t records = 0;
  std::int64_t postings = 0;
  std::vector<std::string> findings;  ///< what is damaged, one sentence each; the first 100
  std::int64_t findingCount = 0;      ///< all of them
};

/// Checks a company file without changing it: every page has its checksum, the database's tables and indexes
/// agree, and the columns, postings and item accounts are those that the records' texts give. Damaged pages
/// end the check, since nothing that is read from them says anything about the company.
///
/// Throws Error as `CompanyFile::Open` does if the file is not a company file, is locked, or holds a load
/// that was interrupted; "interrupted" if `interrupted` says so.
CheckReport CheckCompany(const std::filesystem::path& file, const Interruption& interrupted = {});

struct FixReport {
  CheckReport check;        ///< of the company before it is written anew, after an interrupted load is undone
  bool loadUndone = false;  ///< whether an interrupted load was undone
  std::optional<std::filesystem::path> backup;  ///< the previous version, if the file was written anew
};

/// Undoes a load that was interrupted, checks the company, and if it is whole but has no checksums, replaces
/// it with a file that has them; the previous file is kept as FILE.bak. Throws Error as `CheckCompany` does,
/// and if the file cannot be written, which leaves it unchanged.
FixReport FixCompany(const std::filesystem::path& file, const Interruption& interrupted = {});

}  // namespace krnqb::company
