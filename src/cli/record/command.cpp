#include "cli/record/command.h"

#include <fmt/format.h>

#include <filesystem>

#include "cli/console/attempt.h"
#include "cli/console/interrupt_watch.h"
#include "cli/console/progress_bar.h"
#include "cli/exchange/scratch_folder.h"
#include "cli/import/asked_data.h"
#include "cli/import/source.h"
#include "cli/record/partial_file.h"
#include "cli/record/scratch_imports.h"
#include "cli/record/shared_session.h"
#include "cli/record/span.h"
#include "files/fault.h"
#include "files/identity.h"
#include "plan_file/headings.h"
#include "support/path_text.h"

namespace krnqb::cli {
namespace {

constexpr std::string_view failed = "recording failed";

// The recording must not replace anything, nor be written into the company.
void CheckFiles(const RecordOptions& options) {
  const std::filesystem::path file = PathFrom(options.outFile);
  std::error_code unknown;
  if (std::filesystem::symlink_status(file, unknown).type() != std::filesystem::file_type::not_found) {
    throw CommandFailure(failed, fmt::format("{} exists", options.outFile),
                         "remove it, or give another --out");
  }
  const auto part = files::IdentityOf(files::WithSuffix(file, ".part"));
  const auto separate = [&](std::string_view option, const std::optional<std::string>& company) {
    if (!company || company->empty() || !part || part != files::IdentityOf(PathFrom(*company))) return;
    throw WrongUsage(
        fmt::format("{} {} would be the unfinished recording of --out {}", option, *company, options.outFile),
        "give another --out");
  };
  separate("--company", options.companyFile);
  separate("--quickbooks", options.quickBooks);
}

std::string PathsText(const std::vector<AmountsPath>& paths) {
  std::string text;
  for (const AmountsPath path : paths) text += (text.empty() ? "" : " and") + std::string(PathText(path));
  return text;
}

class Recording {
 public:
  Recording(const RecordOptions& options, const Console& console, const InterruptWatch& interrupts,
            const Surroundings& surroundings)
      : options_(options),
        console_(console),
        interrupts_(interrupts),
        surroundings_(surroundings),
        span_(SettleSpan(options)) {
    if (console.errIsTerminal && !options.quiet) bar_.emplace(console.err, console.errWidth);
  }

  void Run() {
    CheckFiles(options_);
    ImportCommand command;
    static_cast<CompanyChoice&>(command) = static_cast<const CompanyChoice&>(options_);
    const ImportSource source = OpenImportSource(command, interrupts_, surroundings_);
    if (source.warning) Warn(console_, *source.warning);
    PartialFile recording(PathFrom(options_.outFile));
    const auto refused = options_.quickBooks ? SharedSession::RefusedRequests::Recorded
                                             : SharedSession::RefusedRequests::EndTheRecording;
    const auto session = std::make_shared<SharedSession>(source.processors, refused, recording, interrupts_);
    const ScratchFolder folder;
    ScratchImports imports(session, source, span_, folder.Path(), interrupts_, surroundings_,
                           [&](double done, const std::string& phase) {
                             if (bar_) bar_->Show(static_cast<int>(done * 100), phase);
                           });
    imports.OpenSession();
    recording.Begin({.company = session->Company(), .processor = session->Version(), .span = span_});
    Announce(source, recording);
    imports.Run();
    interrupts_.StopWhenRequested();
    recording.Place();
    if (bar_) bar_->Wipe();
    Report(recording, imports);
  }

 private:
  void Announce(const ImportSource& source, const PartialFile& recording) {
    if (recording.EntryWasCut()) {
      Warn(console_, fmt::format("{}.part ended in the middle of an answer, which is asked for again",
                                 options_.outFile));
    }
    if (options_.quiet) return;
    console_.out << fmt::format("Recording {} for plans from {}, from {}, in {}.\n",
                                MonthsText(span_.from, span_.to), plan_file::MonthOfYear(span_.planStart),
                                source.description, options_.outFile);
    if (recording.Continued() > 0) {
      console_.out << fmt::format("Going on with {}.part, which has {} answers.\n", options_.outFile,
                                  recording.Continued());
    }
    console_.out.flush();
  }

  void Report(const PartialFile& recording, const ScratchImports& imports) {
    for (const std::string& warning : imports.Warnings()) Warn(console_, warning);
    if (options_.quiet) return;
    const std::size_t refusals = recording.Refusals();
    console_.out << fmt::format("Recorded {} answers{}; amounts can be imported{}.\n", recording.Answers(),
                                refusals == 0 ? "" : fmt::format(", {} of them refusals", refusals),
                                PathsText(imports.Paths()));
  }

  const RecordOptions& options_;
  const Console& console_;
  const InterruptWatch& interrupts_;
  const Surroundings& surroundings_;
  const RecordedSpan span_;
  std::optional<ProgressBar> bar_;
};

}  // namespace

CommandEnd Run(const RecordOptions& options, const Console& console, const Surroundings& surroundings) {
  RequireOneCompany(options);
  const InterruptWatch interrupts;
  try {
    Attempt(failed, "free some space in the folder for temporary files",
            [&] { Recording(options, console, interrupts, surroundings).Run(); });
  } catch (...) {
    if (!interrupts.Requested()) throw;
    std::error_code unknown;
    const bool kept = std::filesystem::exists(files::WithSuffix(PathFrom(options.outFile), ".part"), unknown);
    throw interrupts.Interruption(
        "recording interrupted",
        kept ? fmt::format("{}.part keeps the answers so far; run the same command again to go on",
                           options.outFile)
             : "nothing was recorded");
  }
  return {ExitCode::Done, true};
}

}  // namespace krnqb::cli
