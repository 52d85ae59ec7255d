#include "com/calls/dom_element.h"

#include <algorithm>
#include <array>

#include "com/calls/named_calls.h"
#include "com/values/error_mapping.h"
#include "com/values/text.h"

namespace krnqb::com {
namespace {

constexpr std::array documentClasses{L"MSXML2.DOMDocument.6.0", L"MSXML2.DOMDocument.3.0"};

ComPointer<IDispatch> NewDocument(const wchar_t* className) {
  CLSID classId{};
  ComPointer<IDispatch> document;
  void* created = nullptr;
  if (FAILED(CLSIDFromProgID(className, &classId))) return document;
  if (FAILED(CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, &created)))
    return document;
  return ComPointer<IDispatch>::Adopt(static_cast<IDispatch*>(created));
}

// Loads nothing external, validates nothing and preserves white space: the text is taken verbatim.
void SetUp(const NamedCalls& document) {
  const VARIANT no = VariantValue::OfBoolean(false).Get();
  const VARIANT yes = VariantValue::OfBoolean(true).Get();
  document.Set(L"async", no);
  document.Set(L"validateOnParse", no);
  document.Set(L"resolveExternals", no);
  document.Set(L"preserveWhiteSpace", yes);
  const VariantValue name = VariantValue::OfText("SelectionLanguage");
  const VariantValue language = VariantValue::OfText("XPath");
  const std::array<VARIANT, 2> property{name.Get(), language.Get()};
  document.Call(L"setProperty", property);
}

ComPointer<IDispatch> DocumentElement(const NamedCalls& document, const std::string& text) {
  const VariantValue xml = VariantValue::OfText(text);
  document.Call(L"loadXML", {&xml.Get(), 1});
  return document.Get(L"documentElement").Object();
}

bool IsElement(const ComPointer<IDispatch>& node) {
  constexpr std::int16_t elementNode = 1;
  VariantValue type = NamedCalls(node).Get(L"nodeType");
  Check(VariantChangeType(&type.Get(), &type.Get(), 0, VT_I2));
  return type.Get().iVal == elementNode;
}

// Returns null for the document element and for an element without a parent or directly in a fragment.
ComPointer<IDispatch> ParentElement(const ComPointer<IDispatch>& element) {
  ComPointer<IDispatch> parent = NamedCalls(element).Get(L"parentNode").Object();
  return parent && IsElement(parent) ? parent : ComPointer<IDispatch>();
}

std::size_t ElementsBefore(const ComPointer<IDispatch>& element) {
  std::size_t count = 0;
  ComPointer<IDispatch> node = NamedCalls(element).Get(L"previousSibling").Object();
  for (; node; node = NamedCalls(node).Get(L"previousSibling").Object()) {
    if (IsElement(node)) ++count;
  }
  return count;
}

std::string XmlOf(const ComPointer<IDispatch>& element) {
  VariantValue xml = NamedCalls(element).Get(L"xml");
  Check(VariantChangeType(&xml.Get(), &xml.Get(), 0, VT_BSTR));
  return Utf8(TextOf(xml.Get().bstrVal));
}

}  // namespace

std::shared_ptr<DomElement> DomElement::Of(ComPointer<IDispatch> object) {
  if (!object) return nullptr;
  try {
    if (!IsElement(object)) return nullptr;
  } catch (const Error&) {
    return nullptr;
  }
  return std::make_shared<DomElement>(std::move(object));
}

ComPointer<IDispatch> DomElement::OutsideElement(const XmlElement& element) {
  if (const auto outside = std::dynamic_pointer_cast<DomElement>(element.Outside())) return outside->Object();
  const std::string text = element.Xml();
  for (const wchar_t* className : documentClasses) {
    ComPointer<IDispatch> document = NewDocument(className);
    if (!document) continue;
    try {
      const NamedCalls calls(std::move(document));
      SetUp(calls);
      if (ComPointer<IDispatch> made = DocumentElement(calls, text)) return made;
    } catch (const Error&) {
      // This class is unusable; try the next one.
    }
  }
  return {};
}

std::string DomElement::Xml() const {
  return XmlOf(object_);
}

// The topmost element has all of the document's elements: what surrounds it, such as a document type, has
// none.
std::string DomElement::DocumentXml() const {
  ComPointer<IDispatch> top = object_;
  while (ComPointer<IDispatch> parent = ParentElement(top)) top = std::move(parent);
  return XmlOf(top);
}

std::vector<std::size_t> DomElement::PathInDocument() const {
  std::vector<std::size_t> path;
  ComPointer<IDispatch> element = object_;
  while (ComPointer<IDispatch> parent = ParentElement(element)) {
    path.push_back(ElementsBefore(element));
    element = std::move(parent);
  }
  std::ranges::reverse(path);
  return path;
}

}  // namespace krnqb::com
