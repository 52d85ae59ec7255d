#include "bridge/event_sink.h"

#include <dispex.h>

namespace krnqb::testing {
namespace {

bool IsEventInterface(int flags) {
  return (flags & IMPLTYPEFLAG_FDEFAULT) != 0 && (flags & IMPLTYPEFLAG_FSOURCE) != 0;
}

// Returns the default event interface of the object's class, or null if it has none.
ITypeInfo* EventInterface(IUnknown* source) {
  IProvideClassInfo* provider = nullptr;
  if (FAILED(source->QueryInterface(IID_IProvideClassInfo, reinterpret_cast<void**>(&provider)))) {
    return nullptr;
  }
  ITypeInfo* classInformation = nullptr;
  const HRESULT provided = provider->GetClassInfo(&classInformation);
  provider->Release();
  if (FAILED(provided)) return nullptr;

  TYPEATTR* attributes = nullptr;
  ITypeInfo* found = nullptr;
  if (SUCCEEDED(classInformation->GetTypeAttr(&attributes))) {
    for (UINT index = 0; found == nullptr && index < attributes->cImplTypes; ++index) {
      int flags = 0;
      HREFTYPE reference = 0;
      if (SUCCEEDED(classInformation->GetImplTypeFlags(index, &flags)) && IsEventInterface(flags) &&
          SUCCEEDED(classInformation->GetRefTypeOfImplType(index, &reference))) {
        classInformation->GetRefTypeInfo(reference, &found);
      }
    }
    classInformation->ReleaseTypeAttr(attributes);
  }
  classInformation->Release();
  return found;
}

IConnectionPoint* PointOf(IUnknown* source, REFIID identifier) {
  IConnectionPointContainer* container = nullptr;
  IConnectionPoint* point = nullptr;
  if (SUCCEEDED(
          source->QueryInterface(IID_IConnectionPointContainer, reinterpret_cast<void**>(&container)))) {
    container->FindConnectionPoint(identifier, &point);
    container->Release();
  }
  return point;
}

}  // namespace

EventSink::EventSink(IDispatch* handler, ITypeInfo* information)
    : handler_(handler), information_(information) {
  handler_->AddRef();
  TYPEATTR* attributes = nullptr;
  if (SUCCEEDED(information_->GetTypeAttr(&attributes))) {
    eventIdentifier_ = attributes->guid;
    information_->ReleaseTypeAttr(attributes);
  }
}

EventSink::~EventSink() {
  handler_->Release();
  information_->Release();
}

EventSink* EventSink::Advised(IUnknown* source, IDispatch* handler) {
  ITypeInfo* eventInterface = EventInterface(source);
  if (eventInterface == nullptr) return nullptr;
  auto* sink = new EventSink(handler, eventInterface);
  sink->point_ = PointOf(source, sink->eventIdentifier_);
  if (sink->point_ != nullptr && SUCCEEDED(sink->point_->Advise(sink, &sink->cookie_))) return sink;
  sink->Unadvise();
  sink->Release();
  return nullptr;
}

void EventSink::Unadvise() {
  if (point_ == nullptr) return;
  if (cookie_ != 0) point_->Unadvise(cookie_);
  point_->Release();
  point_ = nullptr;
}

HRESULT EventSink::QueryInterface(REFIID identifier, void** object) {
  *object = nullptr;
  if (!IsEqualIID(identifier, IID_IUnknown) && !IsEqualIID(identifier, IID_IDispatch) &&
      !IsEqualIID(identifier, eventIdentifier_)) {
    return E_NOINTERFACE;
  }
  AddRef();
  *object = static_cast<IDispatch*>(this);
  return S_OK;
}

ULONG EventSink::AddRef() {
  return static_cast<ULONG>(++references_);
}

ULONG EventSink::Release() {
  const long left = --references_;
  if (left == 0) delete this;
  return static_cast<ULONG>(left);
}

HRESULT EventSink::GetTypeInfoCount(UINT* count) {
  *count = 0;
  return S_OK;
}

HRESULT EventSink::GetTypeInfo(UINT /*index*/, LCID /*locale*/, ITypeInfo** type) {
  *type = nullptr;
  return E_NOTIMPL;
}

HRESULT EventSink::GetIDsOfNames(REFIID /*reserved*/, LPOLESTR* /*names*/, UINT /*count*/, LCID /*locale*/,
                                 DISPID* /*identifiers*/) {
  return E_NOTIMPL;
}

HRESULT EventSink::Invoke(DISPID identifier, REFIID /*reserved*/, LCID locale, WORD /*flags*/,
                          DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception, UINT* argument) {
  BSTR name = nullptr;
  UINT count = 0;
  if (FAILED(information_->GetNames(identifier, &name, 1, &count)) || count == 0) {
    return DISP_E_MEMBERNOTFOUND;
  }
  // Ask script objects through IDispatchEx first: VBScript's know their names only there.
  DISPID method = DISPID_UNKNOWN;
  IDispatchEx* extended = nullptr;
  HRESULT found = handler_->QueryInterface(__uuidof(IDispatchEx), reinterpret_cast<void**>(&extended));
  if (SUCCEEDED(found)) {
    found = extended->GetDispID(name, fdexNameCaseInsensitive, &method);
    extended->Release();
  } else {
    found = handler_->GetIDsOfNames(IID_NULL, &name, 1, locale, &method);
  }
  SysFreeString(name);
  if (FAILED(found)) return S_OK;  // the handler ignores this event
  return handler_->Invoke(method, IID_NULL, locale, DISPATCH_METHOD, parameters, result, exception, argument);
}

}  // namespace krnqb::testing
