#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "cli/console/command_end.h"
#include "cli/console/option_values.h"
#include "cli/console/streams.h"
#include "sample_company/generator.h"

namespace krnqb::cli {

// The commands of `krnqb company`: what was typed, and how it runs.

struct NewCompanyOptions {
  std::string file;
  std::string name;
  std::int16_t fiscalMonth = 1;
  std::string processorVersion;
};

struct LoadCompanyOptions {
  std::string file;
  std::vector<std::string> documents;
  bool strict = false;
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

/// Creates a company file without accounts and transactions.
CommandEnd Run(const NewCompanyOptions& options, const Console& console);

/// Loads documents, or the answers in recordings, one after the other. Warns of records of kinds that cannot
/// be stored, which are passed over; with `strict` they are faults. Nothing of a faulty document is loaded,
/// and the documents before it stay loaded: throws Failure, with Failed if none was loaded, and Incomplete
/// otherwise.
CommandEnd Run(const LoadCompanyOptions& options, const Console& console);

/// Generates a company file, and prints how many records and lines it has and its size.
CommandEnd Run(const GenerateCompanyOptions& options, const Console& console);

/// Shows what a company file contains.
ExitCode Run(const CompanyInfoOptions& options, const Console& console);

}  // namespace krnqb::cli
