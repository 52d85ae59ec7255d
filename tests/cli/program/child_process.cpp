#include "cli/program/child_process.h"

#include <cstdlib>
#include <filesystem>

#include "build_paths.h"
#include "cli/workplace.h"

namespace krnqb::cli::tests {

ChildProcess::ChildProcess(const std::vector<std::string>& arguments, Output output)
    : krnqb::tests::RunningProgram(krnqb::tests::Program(), arguments, output) {}

ShellRun RunShell(const std::string& folder, const std::string& command) {
  const std::string programFolder = std::filesystem::path(krnqb::tests::Program()).parent_path().string();
  const Workplace outputs;
  WriteText(outputs / "command.sh",
            "cd '" + folder + "' || exit 99\nPATH='" + programFolder + "':$PATH\n" + command + "\n");
  const std::string line =
      "sh '" + (outputs / "command.sh") + "' >'" + (outputs / "out") + "' 2>'" + (outputs / "err") + "'";
  const int status = std::system(line.c_str());
  return {krnqb::tests::ExitStatus(status), ReadText(outputs / "out"), ReadText(outputs / "err")};
}

}  // namespace krnqb::cli::tests
