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

/// Returns the list of company files.
std::string CompaniesJson(const std::vector<Company>& companies);

}  // namespace krnqb::cli
