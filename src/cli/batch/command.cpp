#include "cli/batch/command.h"

#include <fmt/format.h>

#include "cli/batch/output_files.h"
#include "cli/batch/outputs.h"
#include "cli/batch/result_folder.h"
#include "cli/company/interruptible.h"

namespace krnqb::cli {
namespace {

std::vector<OverviewFile> FilesOf(const SummaryOptions& options) {
  std::vector<OverviewFile> files;
  if (options.htmlFile) files.push_back({"--html", *options.htmlFile});
  if (options.csvFile) files.push_back({"--csv", *options.csvFile});
  return files;
}

std::string WrittenText(const BatchOverview& overview, const std::vector<OverviewFile>& files) {
  std::string names;
  for (const OverviewFile& file : files) names += (names.empty() ? "" : " and ") + file.file;
  return fmt::format("{} import{} in {}: {} done, {} not done. Wrote {}.\n", overview.imports.size(),
                     overview.imports.size() == 1 ? "" : "s", overview.folder, overview.done,
                     overview.NotDone(), names);
}

}  // namespace

CommandEnd Run(const SummaryOptions& options, const Console& console) {
  return RunInterruptibly("summarizing", "nothing was written", [&](const InterruptWatch& interrupts) {
    std::vector<OverviewFile> files = FilesOf(options);
    const auto results = ResultFiles(options.folder);
    CheckOutputFiles(files, results);
    const BatchOverview overview =
        OverviewOf(options.folder, ReadResults(results, [&] { interrupts.StopWhenRequested(); }));
    for (OverviewFile& file : files)
      file.text = file.option == "--html" ? OverviewPage(overview) : OverviewCsv(overview);
    interrupts.StopWhenRequested();
    WriteOutputFiles(files);
    if (options.json) {
      console.out << OverviewJson(overview) << '\n';
    } else {
      console.out << (files.empty() ? OverviewText(overview) : WrittenText(overview, files));
    }
    return CommandEnd(overview.NotDone() == 0 ? ExitCode::Done : ExitCode::Incomplete, !files.empty());
  });
}

}  // namespace krnqb::cli
