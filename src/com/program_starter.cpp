#include "com/program_starter.h"

#include <windows.h>

#include <filesystem>

#include "com/values/text.h"

namespace krnqb::com {
namespace {

class MachinePrograms final : public ui::ProgramStarter {
 public:
  void Start(const std::string& path) override {
    const std::wstring program = Wide(path);
    if (!std::filesystem::path(program).is_absolute()) throw Error(error_number::pathNotFound);
    // CreateProcess parses the program from the command line too; quoting keeps a path with blanks in one
    // piece.
    std::wstring commandLine = L'"' + program + L'"';
    STARTUPINFOW window{};
    window.cb = sizeof(window);
    window.dwFlags = STARTF_USESHOWWINDOW;
    window.wShowWindow = SW_SHOWNORMAL;
    PROCESS_INFORMATION started{};
    if (CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                       &window, &started) == FALSE) {
      throw Error(error_number::pathNotFound);
    }
    CloseHandle(started.hThread);
    CloseHandle(started.hProcess);
  }
};

}  // namespace

std::shared_ptr<ui::ProgramStarter> SystemPrograms() {
  return std::make_shared<MachinePrograms>();
}

}  // namespace krnqb::com
