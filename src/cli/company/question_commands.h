#pragma once

#include <cstdint>
#include <string>

#include "cli/console/streams.h"
#include "krnqb/enumerations.h"

namespace krnqb::cli {

// The commands that ask a question and change nothing, as they were typed, and how each runs.

struct RequestOptions {
  std::int32_t number = 0;
  std::string fromDate;
  std::string toDate;
};

struct SupportsOptions {
  std::string version;
  std::string companyFile;
};

struct TablesOptions {
  QBKRNproduct product = QBKRN_ALD;
};

/// Prints a request document byte for byte, without a line end of its own.
ExitCode Run(const RequestOptions& options, const Console& console);

/// Prints whether a company answers a qbXML version: "yes" with Done, "no" with Failed.
ExitCode Run(const SupportsOptions& options, const Console& console);

/// Lists the plan tables that an import for a product may change, id and title.
ExitCode Run(const TablesOptions& options, const Console& console);

}  // namespace krnqb::cli
