#pragma once

#include <ocidl.h>

#include <memory>
#include <vector>

#include "com/objects/com_object.h"

namespace krnqb::com {

/// The advised sinks, in the order in which they were advised. Hosts may advise and unadvise while an event
/// is being raised.
class AdvisedSinks {
 public:
  struct Advised {
    DWORD cookie;
    ComPointer<IDispatch> sink;
    CONNECTDATA Give() const noexcept;
  };

  DWORD Add(ComPointer<IDispatch> sink);
  /// Removes the sink with this cookie; returns whether it existed.
  bool Remove(DWORD cookie) noexcept;
  void RemoveAll() noexcept;
  const std::vector<Advised>& All() const noexcept { return sinks_; }
  bool Has(DWORD cookie) const noexcept;

 private:
  std::vector<Advised> sinks_;
  DWORD lastCookie_ = 0;
};

/// Where hosts connect to a component's events. May outlive the component if a host still holds it, but then
/// it holds and accepts no sinks.
class ConnectionPoint final : public ComObject<IConnectionPoint> {
 public:
  ConnectionPoint(IConnectionPointContainer* container, const IID& eventsInterfaceId,
                  std::shared_ptr<AdvisedSinks> sinks);

  /// Detaches from the component, which is being destroyed, and releases the sinks.
  void Disconnect() noexcept;

  STDMETHODIMP GetConnectionInterface(IID* interfaceId) noexcept override;
  STDMETHODIMP GetConnectionPointContainer(IConnectionPointContainer** result) noexcept override;
  STDMETHODIMP Advise(IUnknown* sink, DWORD* cookie) noexcept override;
  STDMETHODIMP Unadvise(DWORD cookie) noexcept override;
  STDMETHODIMP EnumConnections(IEnumConnections** result) noexcept override;

 private:
  IConnectionPointContainer* container_;
  const IID& eventsInterfaceId_;
  std::shared_ptr<AdvisedSinks> sinks_;
};

/// Returns an enumerator over a component's only connection point.
ComPointer<IEnumConnectionPoints> EnumeratePoint(ComPointer<IConnectionPoint> point);

}  // namespace krnqb::com
