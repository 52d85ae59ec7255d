#pragma once

#include <memory>

#include "xml/strict_parser.h"
#include "xml/tree.h"

namespace krnqb {

/// Parses a source into a tree and returns its document element, or null with the parser's `Fault` set.
/// Throws std::bad_alloc if memory runs out.
XmlTreeNode* BuildTree(StrictParser& parser, std::string_view source, XmlEncoding encoding, XmlTree& tree);

}  // namespace krnqb
