#include "cli/import/source.h"

#include <fmt/format.h>

#include <istream>
#include <memory>
#include <utility>

#include "cli/console/attempt.h"
#include "cli/console/interrupt_watch.h"
#include "cli/exchange/company_file.h"
#include "cli/exchange/presented_processors.h"
#include "cli/exchange/quickbooks.h"
#include "company/processor.h"
#include "files/fault.h"
#include "files/input_buffer.h"
#include "qbxml/exchange_recording.h"
#include "support/path_text.h"

namespace krnqb::cli {
namespace {

// Without amounts the component asks for neither transactions nor reports.
std::optional<ProcessorVersion> ChosenVersion(const ImportCommand& options) {
  if (!options.amountsFrom || options.balances == BalImport_None) return std::nullopt;
  if (*options.amountsFrom == AmountsPath::Reports) return ProcessorVersion{.major = 2, .minor = 0};
  return ProcessorVersion{.major = 1, .minor = 1};
}

void RequireReports(const ImportCommand& options, const company::CompanyInfo& info) {
  const auto chosen = ChosenVersion(options);
  if (!chosen || chosen->major != 2 || info.processorVersion.starts_with("2.")) return;
  throw WrongUsage(
      fmt::format("--amounts-from is reports, but {} ({}) has none: it answers qbXML up to {}, and "
                  "reports need 2.0",
                  info.name, options.companyFile.value_or(""), info.processorVersion),
      "give --amounts-from transactions, or leave it out");
}

ImportSource CompanySource(const ImportCommand& options, const InterruptWatch& interrupts) {
  const std::string path = options.companyFile.value_or("");
  const company::CompanyFile company = OpenCompany(path, company::FileAccess::ReadOnly, interrupts);
  return Attempt("opening the company failed", "run krnqb company check", [&] {
    const company::CompanyInfo info = company.Info();
    RequireReports(options, info);
    const auto own = static_cast<std::int16_t>(info.processorVersion.starts_with("2.") ? 2 : 1);
    const auto presented = ChosenVersion(options);
    return ImportSource{.processors = company::EmbeddedProcessors(FollowInterrupts(interrupts)),
                        .companyPath = path,
                        .description = fmt::format("{} ({})", info.name, path),
                        .majorVersion = presented ? presented->major : own,
                        .warning = ChecksumWarning(path, company.HasChecksums()),
                        .companyName = info.name,
                        .processorVersion = info.processorVersion,
                        .presented = presented};
  });
}

std::string VersionText(const ProcessorVersion& version) {
  return fmt::format("{}.{}", version.major, version.minor);
}

// Transactions and reports each have a major version. What any other one means is decided in the session.
bool DecidesAmounts(std::int16_t majorVersion) noexcept {
  return majorVersion == 1 || majorVersion == 2;
}

ImportSource QuickBooksSource(const ImportCommand& options, const Surroundings& surroundings) {
  const std::string path = options.quickBooks.value_or("");
  const OpenedQuickBooks quickBooks = OpenQuickBooks(surroundings);
  const auto presented = ChosenVersion(options);
  const std::int16_t major = presented ? presented->major : quickBooks.version.major;
  return {.processors = quickBooks.processors,
          .companyPath = path,
          .description =
              path.empty() ? "the company that is open in QuickBooks" : fmt::format("{} in QuickBooks", path),
          .majorVersion = DecidesAmounts(major) ? major : std::int16_t{0},
          .processorVersion = VersionText(quickBooks.version),
          .presented = presented,
          .facts = std::make_shared<SessionFacts>()};
}

// A recording to be replayed, which is read while the import asks for its answers.
class RecordingFile final : public std::istream {
 public:
  explicit RecordingFile(const std::string& path)
      : std::istream(nullptr),
        file_(PathFrom(path), {.pipes = true, .failure = {}, .interrupted = InterruptRequested}, operations_),
        buffer_(file_) {
    rdbuf(&buffer_);
    exceptions(std::ios::badbit);  // a failure to read is not the recording's end
  }

 private:
  files::SystemFileOperations operations_;
  files::InputFile file_;
  files::InputBuffer buffer_;
};

// A recording is replayed as it was recorded: its own answers fit the version that the import was shown.
ImportSource RecordedSource(const std::string& path, const ImportCommand& options) {
  constexpr std::string_view failed = "opening the recording failed";
  auto recording = Attempt(failed, "check the path and its permissions",
                           [&] { return std::make_unique<RecordingFile>(path); });
  return Attempt(failed, "check the path, or record the exchange again with --record", [&] {
    const auto exchange = ReplayingProcessors(std::move(recording), path);
    const ExchangeHeader& header = exchange->Header();
    const auto chosen = ChosenVersion(options);
    const auto presented = chosen ? chosen : header.presented;
    const std::int16_t major = presented.value_or(header.processor).major;
    const bool decided = DecidesAmounts(major);
    return ImportSource{.processors = exchange,
                        .companyPath = {},
                        .description = fmt::format("the recording {}", path),
                        .majorVersion = decided ? major : std::int16_t{0},
                        .processorVersion = VersionText(header.processor),
                        .presented = presented,
                        .recording = exchange,
                        .facts = decided ? nullptr : std::make_shared<SessionFacts>()};
  });
}

files::OutputFile CreateRecording(const std::string& path, files::FileOperations& operations) {
  return Attempt("recording failed", "check the path and the permissions of its folder",
                 [&] { return files::OutputFile(PathFrom(path), InterruptRequested, operations); });
}

}  // namespace

std::int16_t ShownMajorVersion(const ImportSource& source) noexcept {
  return source.facts != nullptr && source.facts->majorVersion != 0 ? source.facts->majorVersion
                                                                    : source.majorVersion;
}

std::shared_ptr<RequestProcessorFactory> ShownProcessors(const ImportSource& source,
                                                         std::shared_ptr<RequestProcessorFactory> inner) {
  auto presented = PresentedProcessors(std::move(inner), source.presented);
  return source.facts == nullptr ? presented : ProcessorsWithShownVersion(std::move(presented), source.facts);
}

ImportSource OpenImportSource(const ImportCommand& options, const InterruptWatch& interrupts,
                              const Surroundings& surroundings) {
  if (options.replayFile) return RecordedSource(*options.replayFile, options);
  return options.quickBooks ? QuickBooksSource(options, surroundings) : CompanySource(options, interrupts);
}

ExchangeFile::ExchangeFile(const std::string& path)
    : name_(path), lines_(CreateRecording(path, operations_)) {}

std::shared_ptr<RequestProcessorFactory> ExchangeFile::Recording(const ImportSource& source,
                                                                 const RecordedImport& asked) {
  const bool decided = ShownMajorVersion(source) != 0;
  const ExchangeHeader header{.company = {},
                              .processor = {},
                              .presented = source.presented,
                              .import = decided ? std::optional(asked) : std::nullopt};
  return RecordingProcessors(source.processors, std::make_shared<ExchangeRecorder>(lines_.Stream(), header));
}

void ExchangeFile::Finish() {
  if (const std::error_code failure = lines_.Finish()) {
    throw CommandFailure(
        "recording failed",
        fmt::format("{} could not be written completely: {}", name_, files::ReasonText(failure)),
        fmt::format("{}, or import without --record", files::FileAdvice(failure)));
  }
}

}  // namespace krnqb::cli
