#include "support/xml_library.h"

#include <libxml/parser.h>

namespace krnqb {

void ReleaseXmlLibrary() noexcept {
  xmlCleanupParser();
}

}  // namespace krnqb
