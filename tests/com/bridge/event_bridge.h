#pragma once

#include <windows.h>

#include <atomic>
#include <vector>

#include "test_server/server.h"

namespace krnqb::testing {

class EventSink;

/// Delivers an object's events to scripts whose host cannot connect events itself:
///
///     bridge.Connect(source, handler)  calls the handler's method with the event's name for each event
///     bridge.Disconnect()              ends all connections
///
/// Called late-bound, as scripts do.
class EventBridge final : public IDispatch {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID identifier, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;

  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** information) override;
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                                          DISPID* identifiers) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID identifier, REFIID reserved, LCID locale, WORD flags,
                                   DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                                   UINT* argument) override;

 private:
  ~EventBridge();

  HRESULT Connect(IUnknown* source, IDispatch* handler);
  void Disconnect();

  std::atomic<long> references_{1};
  ServerUse use_;
  std::vector<EventSink*> sinks_;  ///< owned references
};

}  // namespace krnqb::testing
