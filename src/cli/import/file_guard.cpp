#include "cli/import/file_guard.h"

#include <fmt/format.h>
#include <unistd.h>

#include "cli/console/failure.h"
#include "files/fault.h"
#include "files/identity.h"

namespace krnqb::cli {
namespace {

// A file of the import, and how the message calls it.
struct UsedFile {
  std::string label;
  std::optional<files::FileIdentity> identity;
};
using UsedFiles = std::vector<UsedFile>;

UsedFile OptionFile(std::string_view option, const std::string& path) {
  return {fmt::format("{} {}", option, path), files::IdentityOf(std::filesystem::path(path))};
}

UsedFile FileBeside(std::string_view what, const std::filesystem::path& file, std::string_view suffix) {
  return {std::string(what), files::IdentityOf(files::WithSuffix(file, suffix))};
}

UsedFiles PlanFiles(const std::string& plan) {
  // These are beside the plan itself, not beside a link to it.
  const std::filesystem::path file = files::LinkTarget(plan);
  return {OptionFile("--plan", plan), FileBeside(fmt::format("the backup of --plan {}", plan), file, ".bak"),
          FileBeside(fmt::format("the lock of --plan {}", plan), file, ".lock"),
          FileBeside(fmt::format("a temporary file of --plan {}", plan), file, ".tmp"),
          FileBeside(fmt::format("a temporary file of --plan {}", plan), file, ".bak.tmp")};
}

UsedFiles InputFiles(const ImportCommand& options) {
  UsedFiles files;
  if (options.replayFile) files.push_back(OptionFile("--replay", *options.replayFile));
  if (!options.companyFile) return files;
  const std::string& company = *options.companyFile;
  files.push_back(OptionFile("--company", company));
  for (const std::string_view suffix : {"-journal", "-wal", "-shm"}) {
    files.push_back(
        FileBeside(fmt::format("the database journal of --company {}", company), company, suffix));
  }
  return files;
}

UsedFiles StandardStreams(const ImportCommand& options) {
  UsedFiles files;
  const bool prints = options.json || !options.quiet;
  if (prints) files.push_back({"standard output", files::IdentityOf(STDOUT_FILENO)});
  files.push_back({"standard error", files::IdentityOf(STDERR_FILENO)});
  return files;
}

void Separate(const UsedFile& file, const UsedFiles& others) {
  for (const UsedFile& other : others) {
    if (!file.identity || file.identity != other.identity) continue;
    throw WrongUsage(fmt::format("{} and {} are the same file", file.label, other.label),
                     "give another file");
  }
}

}  // namespace

void CheckImportFiles(const ImportCommand& options) {
  const UsedFiles streams = StandardStreams(options);
  const UsedFiles plan = PlanFiles(options.planFile);
  const UsedFiles inputs = InputFiles(options);
  UsedFiles outputs;
  if (options.journalFile) outputs.push_back(OptionFile("--journal", *options.journalFile));
  if (options.recordFile) outputs.push_back(OptionFile("--record", *options.recordFile));
  if (outputs.size() == 2) Separate(outputs.front(), {outputs.back()});
  for (const UsedFile& output : outputs) Separate(output, streams);
  // Standard output and standard error are often one file.
  outputs.insert(outputs.end(), streams.begin(), streams.end());
  for (const UsedFile& output : outputs) {
    Separate(output, plan);
    Separate(output, inputs);
  }
  for (const UsedFile& planFile : plan) Separate(planFile, inputs);
}

}  // namespace krnqb::cli
