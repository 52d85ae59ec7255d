#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "krnqb/error.h"
#include "krnqb/xml_element.h"

namespace krnqb::fakes {

/// An element of a host's own document, which the host may change at any time. It is its own document unless
/// `documentText` is set.
class OutsideElement : public OutsideXmlElement {
 public:
  explicit OutsideElement(std::string xml) : text(std::move(xml)) {}

  std::string Xml() const override { return text; }
  std::string DocumentXml() const override { return documentText.value_or(text); }
  std::vector<std::size_t> PathInDocument() const override { return path; }

  std::string text;
  std::optional<std::string> documentText;
  std::vector<std::size_t> path;
};

/// An element whose document no longer exists.
class BrokenOutsideElement : public OutsideXmlElement {
 public:
  std::string Xml() const override { throw Error(error_number::unspecified); }
};

}  // namespace krnqb::fakes
