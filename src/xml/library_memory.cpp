#include "xml/library_memory.h"

#include <libxml/xmlerror.h>

#include <new>

namespace krnqb {

LibraryMemory::LibraryMemory() noexcept {
  xmlResetLastError();
}

// The library's last error is the thread's, not the object's.
// NOLINTNEXTLINE(readability-convert-member-functions-to-static)
bool LibraryMemory::RanOut() const noexcept {
  const xmlError* const last = xmlGetLastError();
  return last != nullptr && last->code == XML_ERR_NO_MEMORY;
}

void LibraryMemory::Check() const {
  if (RanOut()) throw std::bad_alloc();
}

}  // namespace krnqb
