#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "cli/console/option_values.h"
#include "cli/import/options.h"
#include "sample_company/generator.h"

namespace krnqb::cli {

// What a command line asks for: one struct per command, its options as values.

/// A text that was asked for, such as a help text, printed as it is.
struct PrintedText {
  std::string text;
};

enum class ListedAccounts : std::uint8_t { Income, Expense };

struct AccountsOptions {
  ListedAccounts list = ListedAccounts::Income;
  std::string companyFile;
  std::optional<std::string> planFile;
  bool json = false;
};

struct TablesOptions {
  QBKRNproduct product = QBKRN_ALD;
};

struct RequestOptions {
  std::int32_t number = 0;
  std::string fromDate;
  std::string toDate;
};

struct SupportsOptions {
  std::string version;
  std::string companyFile;
};

struct NewCompanyOptions {
  std::string file;
  std::string name;
  std::int16_t fiscalMonth = 1;
  std::string processorVersion;
};

struct LoadCompanyOptions {
  std::string file;
  std::vector<std::string> documents;
};

struct CompanyInfoOptions {
  std::string file;
  bool json = false;
};

struct GenerateCompanyOptions {
  std::string file;
  sample_company::GeneratorSettings settings;  ///< all but its years and seed, which stand below
  YearSpan years{2001, 2002};
  std::int64_t seed = 1;
};

struct NewPlanOptions {
  std::string file;
  QBKRNproduct product = QBKRN_ALD;
  plan_file::PlanStart start;
};

struct ShowPlanOptions {
  std::string file;
  std::optional<std::string> table;
  bool cells = false;
  bool json = false;
};

struct CompaniesOptions {
  std::optional<std::string> quickBooksFolder;
  bool json = false;
};

enum class DialogName : std::uint8_t { Options, Export, Company, Plan, About };

struct DialogOptions {
  DialogName dialog = DialogName::About;
  std::optional<std::string> companyFile;
  std::optional<std::string> planFile;
};

using Command =
    std::variant<PrintedText, ImportCommand, AccountsOptions, TablesOptions, RequestOptions, SupportsOptions,
                 NewCompanyOptions, LoadCompanyOptions, CompanyInfoOptions, GenerateCompanyOptions,
                 NewPlanOptions, ShowPlanOptions, CompaniesOptions, DialogOptions>;

}  // namespace krnqb::cli
