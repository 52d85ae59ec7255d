#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/company/account_tree.h"
#include "cli/console/failure.h"
#include "cli/import/outcome.h"
#include "company/file.h"
#include "plan_file/file.h"

namespace krnqb::cli {

// Results as JSON: one object each, indented, without a line end. "result" comes first in all of them.

std::string ImportOutcomeJson(const ImportOutcome& outcome);

/// A command that failed: result, error_number and error_description.
std::string FailureJson(const Failure& failure);

/// A company's accounts as a tree.
std::string AccountsJson(const std::vector<AccountNode>& accounts);

std::string CompanyInfoJson(const company::CompanyInfo& info);

/// A company file beside the QuickBooks program.
struct Company {
  std::string name;
  std::string path;
};
std::string CompaniesJson(const std::vector<Company>& companies);

/// A plan's tables, or the one of an id that it has.
std::string PlanJson(const plan_file::PlanFile& plan, const std::optional<std::string>& tableId);

}  // namespace krnqb::cli
