#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "cli/console/option_values.h"
#include "cli/console/streams.h"
#include "sample_company/generator.h"

namespace krnqb::cli {

// The commands of `krnqb company` as they were typed, and how each runs.

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

struct GenerateCompanyOptions {
  std::string file;
  sample_company::GeneratorSettings settings;  ///< except years and seed, which are below
  YearSpan years{2001, 2002};
  std::int64_t seed = 1;
};

struct CompanyInfoOptions {
  std::string file;
  bool json = false;
};

ExitCode Run(const NewCompanyOptions& options, const Console& console);

/// Loads documents one after the other, each whole or not at all. When one fails, those before it stay
/// loaded, which the message tells: Failed when none was loaded, else Incomplete.
ExitCode Run(const LoadCompanyOptions& options, const Console& console);

/// Makes up a company; counts its records and lines and tells the file's size.
ExitCode Run(const GenerateCompanyOptions& options, const Console& console);

ExitCode Run(const CompanyInfoOptions& options, const Console& console);

}  // namespace krnqb::cli
