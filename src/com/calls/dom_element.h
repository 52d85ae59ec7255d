#pragma once

#include <ole2.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "com/values/com_pointer.h"
#include "krnqb/xml_element.h"

namespace krnqb::com {

/// An element of the host system's own document model, which a host may go on changing in place.
class DomElement final : public OutsideXmlElement {
 public:
  /// The object as an element; null for any other object, and for none.
  static std::shared_ptr<DomElement> Of(ComPointer<IDispatch> object);

  /// An element as hosts get it: an outside one itself, one of our own copied into a new document. Null when
  /// the system has no document model.
  static ComPointer<IDispatch> OutsideElement(const XmlElement& element);

  explicit DomElement(ComPointer<IDispatch> element) noexcept : object(std::move(element)) {}

  std::string Xml() const override;
  std::string DocumentXml() const override;
  std::vector<std::size_t> PathInDocument() const override;
  ComPointer<IDispatch> Object() const noexcept { return object; }

 private:
  ComPointer<IDispatch> object;
};

}  // namespace krnqb::com
