#include "xml/library.h"

#include <libxml/parser.h>

namespace krnqb {

void ReleaseXmlLibrary() noexcept {
  xmlCleanupParser();
}

}  // namespace krnqb
