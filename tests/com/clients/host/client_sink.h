#pragma once

#include <functional>
#include <string>
#include <vector>

#include "host/host_object.h"
#include "krn6_qb2002.h"

namespace krnqb::testing {

/// A client's event sink: writes down each event, and does what the test wants at it.
class ClientSink final : public HostObject {
 public:
  static Held<ClientSink> Make() { return Held<ClientSink>(new ClientSink); }

  std::vector<std::string> events;
  /// Called at each event with its text; what it gives is the event's result.
  std::function<HRESULT(const std::string& event)> at;

  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                                          DISPID* identifiers) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID identifier, REFIID reserved, LCID locale, WORD flags,
                                   DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                                   UINT* argument) override;

 private:
  ClientSink();
};

/// A sink's connection to a component; ends with it.
class Connection {
 public:
  Connection(IUnknown* source, IUnknown* sink);
  ~Connection() { End(); }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  void End();
  HRESULT Result() const { return result_; }

 private:
  Held<IConnectionPoint> point_;
  DWORD cookie_ = 0;
  HRESULT result_ = E_FAIL;
};

}  // namespace krnqb::testing
