#pragma once

#include <string>

#include "krnqb/xml_element.h"

namespace krnqb {

/// Returns the name that a record or a reference has beside its ListID: its FullName, or else its Name; empty
/// if it has neither or `listId` is an empty handle.
inline std::string NameBeside(const XmlElement& listId) {
  if (!listId) return {};
  const XmlElement around = listId.Parent();
  for (const char* field : {"FullName", "Name"}) {
    if (const XmlElement name = around.Child(field)) return name.Text();
  }
  return {};
}

}  // namespace krnqb
