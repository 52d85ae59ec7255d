#pragma once

#include <string>
#include <utility>

#include "krnqb/error.h"
#include "krnqb/xml_element.h"

namespace krnqb::fakes {

/// An element of a host's own document, which the host may change at any time.
class OutsideElement : public OutsideXmlElement {
 public:
  explicit OutsideElement(std::string xml) : text(std::move(xml)) {}

  std::string Xml() const override { return text; }

  std::string text;
};

/// An element whose document is gone.
class BrokenOutsideElement : public OutsideXmlElement {
 public:
  std::string Xml() const override { throw Error(error_number::unspecified); }
};

}  // namespace krnqb::fakes
