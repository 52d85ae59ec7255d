#pragma once

#include <functional>
#include <string>
#include <vector>

#include "host/object.h"
#include "krn6_qb2002.h"

namespace krnqb::testing {

/// A client's event sink: records each event and runs the test's callback.
class ClientSink final : public HostObject {
 public:
  static Held<ClientSink> Make() { return Held<ClientSink>(new ClientSink); }

  std::vector<std::string> events;
  /// Called with the text of each event; its result becomes the event's.
  std::function<HRESULT(const std::string& event)> at;

  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                                          DISPID* identifiers) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID identifier, REFIID reserved, LCID locale, WORD flags,
                                   DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                                   UINT* argument) override;

 private:
  ClientSink();
};

/// Connects a sink to a component until destroyed.
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
