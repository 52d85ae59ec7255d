#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "cli/import/source.h"
#include "krnqb/qb_data_exchange.h"

namespace krnqb::cli {

/// Asks a company or QuickBooks for what an import needs.
class CompanySession {
 public:
  /// `interrupts` must outlive the session, whose requests heed it.
  CompanySession(const ImportSource& source, const InterruptWatch& interrupts);

  /// Opens the session if it is not open and returns the response document of a request without dates.
  /// Throws Error if the session cannot be opened, the request is refused, the response cannot be read, or
  /// its status is an error.
  XmlElement Ask(std::int32_t requestNumber);

 private:
  QBDataExchange exchange_;
};

}  // namespace krnqb::cli
