#pragma once

#include <cstdint>
#include <fstream>
#include <memory>
#include <string>

#include "cli/import/options.h"
#include "krnqb/request_processor.h"

namespace krnqb::cli {

/// Where an import gets its answers from: a company file, or the recording of an earlier exchange.
struct ImportSource {
  std::shared_ptr<RequestProcessorFactory> processors;
  std::string companyPath;        ///< what the session opens; empty for a recording
  std::string description;        ///< for a person: "Nursery (nursery.qbw)" or "the recording exchange.jsonl"
  std::int16_t majorVersion = 0;  ///< of the processor: 1 imports from transactions, 2 from reports
};

/// Opens the source that the options name, to find out what is wrong with it before anything else is done;
/// sends it nothing. A recording goes before a company. Throws Failure.
ImportSource OpenImportSource(const ImportCommand& options);

/// The file into which an exchange is recorded.
class ExchangeFile {
 public:
  /// Makes the file or empties the one that is there. Throws Failure when it cannot be written.
  explicit ExchangeFile(const std::string& path);

  /// `inner`, with everything that passes through it written to the file, which outlives them.
  std::shared_ptr<RequestProcessorFactory> Recording(std::shared_ptr<RequestProcessorFactory> inner);

  /// Throws Failure unless everything has been written.
  void Finish();

 private:
  std::string name_;
  std::ofstream lines_;
};

}  // namespace krnqb::cli
