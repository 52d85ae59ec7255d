#pragma once

#include <ocidl.h>
#include <windows.h>

#include <atomic>

#include "test_server/server.h"

namespace krnqb::testing {

/// Receives the events of one source and calls the handler's method with the event's name.
class EventSink final : public IDispatch {
 public:
  /// Finds the source's event interface in its class information and advises it. Returns null on failure.
  static EventSink* Advised(IUnknown* source, IDispatch* handler);

  void Unadvise();

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID identifier, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;

  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** type) override;
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                                          DISPID* identifiers) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID identifier, REFIID reserved, LCID locale, WORD flags,
                                   DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                                   UINT* argument) override;

 private:
  EventSink(IDispatch* handler, ITypeInfo* information);
  ~EventSink();

  std::atomic<long> references_{1};
  ServerUse use_;
  IDispatch* handler_;      ///< owned
  ITypeInfo* information_;  ///< owned; of the event interface
  IID eventIdentifier_{};
  IConnectionPoint* point_ = nullptr;  ///< owned while advised
  DWORD cookie_ = 0;
};

}  // namespace krnqb::testing
