#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "cli/console/interrupt_watch.h"
#include "cli/console/surroundings.h"
#include "cli/exchange/shown_version.h"
#include "cli/import/options.h"
#include "files/operations.h"
#include "files/output_file.h"
#include "krnqb/request_processor.h"
#include "qbxml/exchange_replaying.h"

namespace krnqb::cli {

/// The source of an import's answers: a company file, QuickBooks, or the recording of an earlier exchange.
struct ImportSource {
  std::shared_ptr<RequestProcessorFactory> processors;
  std::string companyPath;  ///< what the session opens; empty for a recording and for the open company
  std::string description;  ///< for people: "Nursery (nursery.qbw)" or "the recording exchange.jsonl"
  std::int16_t majorVersion =
      0;  ///< that the component is shown: 1 imports from transactions, 2 from reports; 0 if not known yet
  std::optional<std::string> warning = {};  ///< about the source itself
  std::string companyName = {};             ///< empty for a recording and for QuickBooks
  std::string processorVersion = {};        ///< such as "1.1"
  /// What the component is shown in place of the version that `processors` state.
  std::optional<ProcessorVersion> presented = {};
  std::shared_ptr<const ReplayedExchange> recording = {};  ///< null for a company
  /// What an import learns in the session; null if all of it is known before.
  std::shared_ptr<SessionFacts> facts = {};
};

/// Returns the major version that the component is or was shown; 0 if it is not known yet.
std::int16_t ShownMajorVersion(const ImportSource& source) noexcept;

/// Returns processors that forward every call to those of `inner` and state the version that the component is
/// to be shown.
std::shared_ptr<RequestProcessorFactory> ShownProcessors(const ImportSource& source,
                                                         std::shared_ptr<RequestProcessorFactory> inner);

/// Opens the source that the options name, without sending a request. A recording takes precedence over a
/// company, whose processors heed `interrupts`, which must outlive them; it may be a named pipe. Of
/// QuickBooks only the request processor is started. Throws Failure if the source cannot be opened, or if
/// reading the recording fails or is interrupted, and Failure (WrongUsage) if amounts are asked for from
/// reports, which the company does not have.
ImportSource OpenImportSource(const ImportCommand& options, const InterruptWatch& interrupts,
                              const Surroundings& surroundings);

/// The file to which an exchange is recorded.
class ExchangeFile {
 public:
  /// Creates or truncates the file; waits for the reader of a named pipe. Throws Failure if it cannot be
  /// written.
  explicit ExchangeFile(const std::string& path);

  /// Returns processors that forward every call to those of `source` and record it in the file, with what the
  /// component is shown and, if it is known already where amounts come from, `asked` for. This object must
  /// outlive them.
  std::shared_ptr<RequestProcessorFactory> Recording(const ImportSource& source, const RecordedImport& asked);

  /// Closes the file. Throws Failure if the recording could not be written completely.
  void Finish();

 private:
  std::string name_;
  files::SystemFileOperations operations_;
  files::OutputFile lines_;
};

}  // namespace krnqb::cli
