#pragma once

#include <ole2.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "com/values/com_pointer.h"
#include "krnqb/xml_element.h"

namespace krnqb::com {

/// An element of the system's XML document object model, which a host may keep changing in place.
class DomElement final : public OutsideXmlElement {
 public:
  /// Wraps the object as an element; returns null if it is null or not an element.
  static std::shared_ptr<DomElement> Of(ComPointer<IDispatch> object);

  /// Returns an element as hosts receive it: an outside element itself, or a copy of one of our own in a new
  /// document. Returns null if the system has no XML document object model.
  static ComPointer<IDispatch> OutsideElement(const XmlElement& element);

  explicit DomElement(ComPointer<IDispatch> object) noexcept : object_(std::move(object)) {}

  std::string Xml() const override;
  std::string DocumentXml() const override;
  std::vector<std::size_t> PathInDocument() const override;
  ComPointer<IDispatch> Object() const noexcept { return object_; }

 private:
  ComPointer<IDispatch> object_;
};

}  // namespace krnqb::com
