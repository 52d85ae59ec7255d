#include "xml/library.h"

#include <windows.h>

// Exported by the XML library as it is built for DLLs; its headers show this only to itself.
extern "C" int xmlDllMain(void* library, unsigned long reason, void* reserved);

namespace krnqb {

void ReleaseXmlThread() noexcept {
  xmlDllMain(nullptr, DLL_THREAD_DETACH, nullptr);
}

}  // namespace krnqb
