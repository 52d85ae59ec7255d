#pragma once

#include <cstdint>
#include <string>

#include "cli/console/streams.h"
#include "cli/console/surroundings.h"
#include "cli/exchange/company_choice.h"
#include "krnqb/enumerations.h"

namespace krnqb::cli {

// The commands that answer a question and change nothing: what was typed, and how it runs.

struct RequestOptions {
  std::int32_t number = 0;
  std::string fromDate;
  std::string toDate;
};

struct SupportsOptions : CompanyChoice {
  std::string version;
};

struct TablesOptions {
  QBKRNproduct product = QBKRN_ALD;
};

/// Prints a request document byte for byte; adds no line end.
ExitCode Run(const RequestOptions& options, const Console& console);

/// Prints whether a company answers a qbXML version. Returns Done for "yes", Failed for "no".
ExitCode Run(const SupportsOptions& options, const Console& console, const Surroundings& surroundings);

/// Lists the id and title of each plan table that an import for a product may change.
ExitCode Run(const TablesOptions& options, const Console& console);

}  // namespace krnqb::cli
