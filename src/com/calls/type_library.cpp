#include "com/calls/type_library.h"

#include "com/values/error_mapping.h"
#include "support/windows/own_module.h"

namespace krnqb::com {

std::wstring OwnPath() {
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = GetModuleFileNameW(OwnModule(), path.data(), static_cast<DWORD>(path.size()));
    if (length == 0) throw SystemError(GetLastError());
    // A path that fills the buffer has been truncated.
    if (length < path.size()) return path.substr(0, length);
    path.resize(path.size() * 2);
  }
}

ComPointer<ITypeLib> OwnTypeLibrary() {
  ComPointer<ITypeLib> library;
  Check(LoadTypeLibEx(OwnPath().c_str(), REGKIND_NONE, library.Receive()));
  return library;
}

ComPointer<ITypeInfo> TypeInformationOf(REFGUID identifier) {
  ComPointer<ITypeInfo> information;
  Check(OwnTypeLibrary()->GetTypeInfoOfGuid(identifier, information.Receive()));
  return information;
}

}  // namespace krnqb::com
