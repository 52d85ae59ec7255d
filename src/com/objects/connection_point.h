#pragma once

#include <ocidl.h>

#include <memory>
#include <vector>

#include "com/objects/com_object.h"

namespace krnqb::com {

/// The sinks that hosts have advised, in that order. A host may advise and unadvise while an event is raised.
class AdvisedSinks {
 public:
  struct Advised {
    DWORD cookie;
    ComPointer<IDispatch> sink;
    CONNECTDATA Give() const noexcept;
  };

  DWORD Add(ComPointer<IDispatch> sink);
  /// Whether there was one of that cookie.
  bool Remove(DWORD cookie) noexcept;
  const std::vector<Advised>& All() const noexcept { return sinks; }
  bool Has(DWORD cookie) const noexcept;

 private:
  std::vector<Advised> sinks;
  DWORD lastCookie = 0;
};

/// Where hosts connect to the events of a component. Outlives it when a host still holds it; nothing is
/// raised then.
class ConnectionPoint final : public ComObject<IConnectionPoint> {
 public:
  ConnectionPoint(IConnectionPointContainer* owner, const IID& eventsId, std::shared_ptr<AdvisedSinks> list);

  /// The component ends.
  void Disconnect() noexcept { container = nullptr; }

  STDMETHODIMP GetConnectionInterface(IID* interfaceId) noexcept override;
  STDMETHODIMP GetConnectionPointContainer(IConnectionPointContainer** result) noexcept override;
  STDMETHODIMP Advise(IUnknown* sink, DWORD* cookie) noexcept override;
  STDMETHODIMP Unadvise(DWORD cookie) noexcept override;
  STDMETHODIMP EnumConnections(IEnumConnections** result) noexcept override;

 private:
  IConnectionPointContainer* container;
  const IID& eventsInterfaceId;
  std::shared_ptr<AdvisedSinks> sinks;
};

/// Enumerates the one connection point of a component.
ComPointer<IEnumConnectionPoints> EnumeratePoint(ComPointer<IConnectionPoint> point);

}  // namespace krnqb::com
