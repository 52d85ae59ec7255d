#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "cli/console/surroundings.h"
#include "temporary_folder.h"

namespace krnqb::cli::tests {

/// What one run of the program gave.
struct ProgramRun {
  int code = 0;
  std::string out;
  std::string err;
};

/// Runs the program in this process, at 2003-01-15 12:00 and without a terminal unless told otherwise.
ProgramRun RunProgram(const std::vector<std::string>& arguments);
ProgramRun RunProgram(const std::vector<std::string>& arguments, const Surroundings& surroundings);

std::shared_ptr<Clock> JanuaryClock();

using krnqb::tests::ReadText;
using krnqb::tests::WriteText;

/// `text` with the first occurrence of a part of it replaced; the test fails when it has no such part.
std::string Replaced(std::string text, std::string_view part, std::string_view replacement);

/// `text` without the save stamps of its tables, which tell when a plan was saved.
std::string WithoutStamps(std::string text);

/// A folder of a test's own, with copies of the sample plans as ald.kpf, bri.kpf and cor.kpf in it; removed
/// with everything in it.
class Workplace {
 public:
  Workplace();

  const std::filesystem::path& Folder() const noexcept { return folder_.Path(); }
  /// The path of a file in the folder.
  std::string operator/(std::string_view name) const { return (folder_ / name).string(); }

  /// Makes the sample company nursery.qbw and gives its path.
  std::string Nursery(std::string_view processorVersion = "1.1") const;
  /// The same with the transactions of 2002.
  std::string NurseryYear(std::string_view processorVersion = "1.1") const;
  /// Makes SAMPLE.qbw of all documents of a folder of samples/ and gives its path.
  std::string SampleCompany(const std::string& sample, std::string_view processorVersion) const;

  /// `import --company nursery.qbw --plan PLAN`, `more` behind it.
  std::vector<std::string> ImportArguments(std::string_view plan, const std::vector<std::string>& more) const;

 private:
  krnqb::tests::TemporaryFolder folder_;
};

}  // namespace krnqb::cli::tests
