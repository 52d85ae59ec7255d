#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "cli/console/surroundings.h"
#include "temporary_folder.h"

namespace krnqb::cli::tests {

/// The result of one run of the program.
struct ProgramRun {
  int code = 0;
  std::string out;
  std::string err;
};

/// Runs the program in this process; by default at 2003-01-15 12:00 and without a terminal. Fails the test if
/// the command line has --json and what is printed breaks the command's schema, or if a line of a journal
/// does.
ProgramRun RunProgram(const std::vector<std::string>& arguments);
ProgramRun RunProgram(const std::vector<std::string>& arguments, const Surroundings& surroundings);

/// Returns the name of the schema in docs/schema/ for what a command with --json prints.
std::string SchemaOf(const std::vector<std::string>& arguments);

/// Arguments of a command line.
using Words = std::vector<std::string>;
/// Returns the words, followed by `more`.
Words With(Words words, const Words& more);

std::shared_ptr<Clock> JanuaryClock();

using krnqb::tests::ReadText;
using krnqb::tests::WriteText;

/// Returns `text` with the first occurrence of `part` replaced. Fails the test if `text` does not contain it.
std::string Replaced(std::string text, std::string_view part, std::string_view replacement);

/// Returns `text` without the time stamps of its tables.
std::string WithoutStamps(std::string text);

/// A temporary folder with copies of the sample plans: ald.kpf, bri.kpf and cor.kpf. The destructor removes
/// it.
class Workplace {
 public:
  Workplace();

  const std::filesystem::path& Folder() const noexcept { return folder_.Path(); }
  /// Returns the path of a file in the folder.
  std::string operator/(std::string_view name) const { return (folder_ / name).string(); }

  /// Creates the sample company nursery.qbw and returns its path.
  std::string Nursery(std::string_view processorVersion = "1.1") const;
  /// Does the same, with the transactions of 2002.
  std::string NurseryYear(std::string_view processorVersion = "1.1") const;
  /// Creates SAMPLE.qbw from all documents of the folder samples/SAMPLE and returns its path.
  std::string SampleCompany(const std::string& sample, std::string_view processorVersion) const;

  /// Returns the arguments `import --company nursery.qbw --plan PLAN`, followed by `more`.
  std::vector<std::string> ImportArguments(std::string_view plan, const std::vector<std::string>& more) const;

 private:
  krnqb::tests::TemporaryFolder folder_;
};

}  // namespace krnqb::cli::tests
