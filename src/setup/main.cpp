// What the installers do to the registry beside their own entry:
//
//   krnqb_setup register|unregister|add-to-path|remove-from-path all-users|current-user FOLDER
//
// registers KRN6_QB2002.dll in FOLDER, or puts FOLDER on the search path, for all users of the machine or for
// the current one; or undoes that. Ends with 0 if it has changed something, with 3 if there was nothing
// to change, and with 1, after a line that says why, if it failed.
#include <windows.h>

#include <exception>
#include <string>
#include <vector>

#include "com/registration/component_keys.h"
#include "com/registration/registry_writer.h"
#include "krnqb/error.h"
#include "setup/environment.h"
#include "support/windows_text.h"

namespace {

using krnqb::RegistryHive;

constexpr int changed = 0;
constexpr int failed = 1;
constexpr int nothingToChange = 3;

krnqb::com::Registration RegistrationIn(const std::wstring& folder) {
  return krnqb::com::RegistrationOf(folder + L"\\KRN6_QB2002.dll");
}

int Run(const std::vector<std::wstring>& words) {
  const bool isForAll = words.size() == 3 && words[1] == L"all-users";
  if (words.size() != 3 || (!isForAll && words[1] != L"current-user")) {
    throw krnqb::Error(
        ERROR_BAD_ARGUMENTS,
        "usage: krnqb_setup register|unregister|add-to-path|remove-from-path all-users|current-user FOLDER");
  }
  const RegistryHive hive = isForAll ? RegistryHive::LocalMachine : RegistryHive::CurrentUser;
  const std::wstring& command = words[0];
  const std::wstring& folder = words[2];
  if (command == L"add-to-path") {
    return krnqb::setup::AddToSearchPath(hive, folder) ? changed : nothingToChange;
  }
  if (command == L"remove-from-path") {
    return krnqb::setup::RemoveFromSearchPath(hive, folder) ? changed : nothingToChange;
  }
  const auto registry = krnqb::com::SystemRegistryWriter();
  if (command == L"register") {
    Register(*registry, RegistrationIn(folder), hive);
  } else if (command == L"unregister") {
    Unregister(*registry, RegistrationIn(folder), hive);
  } else {
    throw krnqb::Error(ERROR_BAD_ARGUMENTS, "krnqb_setup: no such command: " + krnqb::Utf8(command));
  }
  return changed;
}

// The installers read the line in the system's own code page.
void Say(const std::string& text) {
  const std::wstring wide = krnqb::Wide(text);
  std::string line(wide.size() * 4, '\0');
  const int size = WideCharToMultiByte(CP_ACP, 0, wide.data(), static_cast<int>(wide.size()), line.data(),
                                       static_cast<int>(line.size()), nullptr, nullptr);
  DWORD written = 0;
  WriteFile(GetStdHandle(STD_OUTPUT_HANDLE), line.data(), static_cast<DWORD>(size), &written, nullptr);
}

}  // namespace

int wmain(int argumentCount, wchar_t** arguments) {
  try {
    return Run(std::vector<std::wstring>(arguments + 1, arguments + argumentCount));
  } catch (const krnqb::Error& error) {
    Say(error.Description());
  } catch (const std::exception& error) {
    Say(error.what());
  }
  return failed;
}
