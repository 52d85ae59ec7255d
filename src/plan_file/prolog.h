#pragma once

#include <cstddef>
#include <string_view>

namespace krnqb::plan_file {

/// Where the document element is in the text of a well-formed document.
struct ElementPlace {
  std::size_t begin = 0;  ///< of its start tag
  std::size_t end = 0;    ///< behind its end tag
};

/// Finds the document element of a well-formed document in an encoding that contains ASCII: after a prolog of
/// any form, with or without a document type and its internal subset.
ElementPlace FindDocumentElement(std::string_view text) noexcept;

}  // namespace krnqb::plan_file
