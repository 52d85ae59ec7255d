#pragma once

#include <unknwn.h>

#include <string>
#include <vector>

namespace krnqb::testing {

/// A class of a test COM server.
struct ServedClass {
  CLSID identifier;
  std::wstring programName;  ///< the ProgID; empty for a class without one
  /// Creates an object and returns it in `object` with one reference, or null and the reason.
  HRESULT (*create)(REFIID interfaceIdentifier, void** object);
};

/// Defined by each test server. regsvr32 registers the first one; a suite registers the others that it needs.
std::vector<ServedClass> TheServedClasses();

/// Returns the module that contains this code.
HMODULE OwnModule();

/// Held by each object of the server: the server stays loaded while any exist.
class ServerUse {
 public:
  ServerUse() noexcept;
  ~ServerUse();
  ServerUse(const ServerUse&) = delete;
  ServerUse& operator=(const ServerUse&) = delete;
};

}  // namespace krnqb::testing
