#pragma once

#include <unknwn.h>

#include <string>

namespace krnqb::testing {

/// The one class of an in-process COM server of the tests.
struct ServedClass {
  CLSID identifier;
  std::wstring programName;  ///< the ProgID; empty for a class without one
  /// Makes an object. Gives it in `object` with one reference, or null and why not.
  HRESULT (*create)(REFIID interfaceIdentifier, void** object);
};

/// Each server of the tests defines this.
ServedClass TheServedClass();

/// The module that this code stands in.
HMODULE OwnModule();

/// Held by each object of the server: while there are any, the server stays loaded.
class ServerUse {
 public:
  ServerUse() noexcept;
  ~ServerUse();
  ServerUse(const ServerUse&) = delete;
  ServerUse& operator=(const ServerUse&) = delete;
};

}  // namespace krnqb::testing
