#include "bridge/event_bridge.h"

#include <olectl.h>

#include <string_view>

#include "bridge/event_sink.h"

namespace krnqb::testing {
namespace {

constexpr DISPID connectIdentifier = 1;
constexpr DISPID disconnectIdentifier = 2;

// Arguments are in reverse order. Script hosts pass variables as variants by reference.
IDispatch* ObjectArgument(const DISPPARAMS& parameters, UINT position) {
  const VARIANT* argument = &parameters.rgvarg[parameters.cArgs - 1 - position];
  while (argument->vt == (VT_BYREF | VT_VARIANT)) argument = argument->pvarVal;
  return argument->vt == VT_DISPATCH ? argument->pdispVal : nullptr;
}

HRESULT CreateEventBridge(REFIID identifier, void** object) {
  auto* bridge = new EventBridge;
  const HRESULT result = bridge->QueryInterface(identifier, object);
  bridge->Release();
  return result;
}

}  // namespace

EventBridge::~EventBridge() {
  Disconnect();
}

HRESULT EventBridge::QueryInterface(REFIID identifier, void** object) {
  *object = nullptr;
  if (!IsEqualIID(identifier, IID_IUnknown) && !IsEqualIID(identifier, IID_IDispatch)) return E_NOINTERFACE;
  AddRef();
  *object = static_cast<IDispatch*>(this);
  return S_OK;
}

ULONG EventBridge::AddRef() {
  return static_cast<ULONG>(++references_);
}

ULONG EventBridge::Release() {
  const long left = --references_;
  if (left == 0) delete this;
  return static_cast<ULONG>(left);
}

HRESULT EventBridge::GetTypeInfoCount(UINT* count) {
  *count = 0;
  return S_OK;
}

HRESULT EventBridge::GetTypeInfo(UINT /*index*/, LCID /*locale*/, ITypeInfo** information) {
  *information = nullptr;
  return E_NOTIMPL;
}

HRESULT EventBridge::GetIDsOfNames(REFIID /*reserved*/, LPOLESTR* names, UINT /*count*/, LCID /*locale*/,
                                   DISPID* identifiers) {
  const std::wstring_view name = *names;
  *identifiers = name == L"Connect"      ? connectIdentifier
                 : name == L"Disconnect" ? disconnectIdentifier
                                         : DISPID_UNKNOWN;
  return *identifiers == DISPID_UNKNOWN ? DISP_E_UNKNOWNNAME : S_OK;
}

HRESULT EventBridge::Invoke(DISPID identifier, REFIID /*reserved*/, LCID /*locale*/, WORD /*flags*/,
                            DISPPARAMS* parameters, VARIANT* /*result*/, EXCEPINFO* /*exception*/,
                            UINT* /*argument*/) {
  if (identifier == disconnectIdentifier) {
    Disconnect();
    return S_OK;
  }
  if (identifier != connectIdentifier) return DISP_E_MEMBERNOTFOUND;
  if (parameters->cArgs != 2) return DISP_E_BADPARAMCOUNT;
  IDispatch* source = ObjectArgument(*parameters, 0);
  IDispatch* handler = ObjectArgument(*parameters, 1);
  if (source == nullptr || handler == nullptr) return DISP_E_TYPEMISMATCH;
  return Connect(source, handler);
}

HRESULT EventBridge::Connect(IUnknown* source, IDispatch* handler) {
  EventSink* sink = EventSink::Advised(source, handler);
  if (sink == nullptr) return CONNECT_E_CANNOTCONNECT;
  sinks_.push_back(sink);
  return S_OK;
}

void EventBridge::Disconnect() {
  for (EventSink* sink : sinks_) {
    sink->Unadvise();
    sink->Release();
  }
  sinks_.clear();
}

std::vector<ServedClass> TheServedClasses() {
  return {{.identifier = {0x09059AE7, 0x89DC, 0x43A7, {0xB3, 0xCF, 0x0B, 0x88, 0x95, 0x5F, 0x30, 0x0F}},
           .programName = L"KRN6_TestBridge.EventBridge",
           .create = CreateEventBridge}};
}

}  // namespace krnqb::testing
