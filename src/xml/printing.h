#pragma once

#include <string>

#include "xml/node.h"

namespace krnqb {

/// Returns the XML text of an element, which declares what the element itself declares.
std::string PrintedXml(const XmlTreeNode* element);

}  // namespace krnqb
