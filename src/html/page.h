#pragma once

#include <string>
#include <vector>

#include "html/fragment.h"

namespace krnqb::html {

/// A part of a page with a heading, to which the list of contents links.
struct Section {
  std::string id;  ///< unique on the page: letters, digits and "-"
  std::string heading;
  Fragment content;
};

struct Page {
  std::string title;              ///< of the window and the first heading
  Fragment introduction;          ///< above the list of contents
  std::vector<Section> sections;  ///< those without content are left out
  std::string footer = {};        ///< a line at the end
};

/// Returns a whole document that needs nothing besides itself: it has one style sheet, no scripts, and a
/// policy that forbids the browser to load or run anything. It is readable in light and dark surroundings and
/// on paper. The same page always gives the same text.
std::string PageText(const Page& page);

}  // namespace krnqb::html
