#pragma once

#include <string>
#include <vector>

#include "cli/company/account_tree.h"
#include "company/check.h"
#include "company/file.h"

namespace krnqb::cli {

// Results as JSON: one object each, indented, without a line end. "result" comes first in all of them.

/// Returns a company's accounts as a tree.
std::string AccountsJson(const std::vector<AccountNode>& accounts);

/// Returns a company file's properties and its number of records of each kind.
std::string CompanyInfoJson(const company::CompanyInfo& info);

/// Returns what a check of a company file has found and fixed; "result" is "failed" if it is damaged.
std::string CompanyCheckJson(const company::FixReport& report);

/// A company file in the folder of the QuickBooks program.
struct Company {
  std::string name;
  std::string path;
};

/// A company file that the list cannot represent.
struct UnlistedCompany {
  std::string path;
  std::string reason;
};

/// Returns the list of company files, and the files that it lacks if there are any.
std::string CompaniesJson(const std::vector<Company>& companies,
                          const std::vector<UnlistedCompany>& unlisted);

}  // namespace krnqb::cli
