#pragma once

#include <string>

#include "krnqb/xml_element.h"

namespace krnqb {

/// Evaluates XPath expressions that contain texts from outside. Such a text may turn an expression into one
/// that takes forever, so all of them together may visit 10 million nodes.
class BoundedPaths {
 public:
  /// Returns the same as `XmlElement::Select`. Also throws Error -2147467259 if the limit is exceeded.
  XmlElement Select(const XmlElement& element, const std::string& path);

 private:
  unsigned long visitsLeft_ = 10'000'000;
};

}  // namespace krnqb
