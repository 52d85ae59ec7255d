#include "com/objects/connection_point.h"

#include <olectl.h>

#include <algorithm>

#include "com/objects/enumerator.h"

namespace krnqb::com {
namespace {

struct HeldPoint {
  ComPointer<IConnectionPoint> point;
  IConnectionPoint* Give() const noexcept { return ComPointer<IConnectionPoint>(point).Detach(); }
};

using ConnectionEnumerator = Enumerator<IEnumConnections, CONNECTDATA, AdvisedSinks::Advised>;
using PointEnumerator = Enumerator<IEnumConnectionPoints, IConnectionPoint*, HeldPoint>;

}  // namespace

CONNECTDATA AdvisedSinks::Advised::Give() const noexcept {
  CONNECTDATA data{};
  data.pUnk = ComPointer<IDispatch>(sink).Detach();
  data.dwCookie = cookie;
  return data;
}

DWORD AdvisedSinks::Add(ComPointer<IDispatch> sink) {
  sinks.push_back({lastCookie + 1, std::move(sink)});
  return ++lastCookie;
}

bool AdvisedSinks::Remove(DWORD cookie) noexcept {
  const auto found = std::find_if(sinks.begin(), sinks.end(),
                                  [&](const Advised& advised) { return advised.cookie == cookie; });
  if (found == sinks.end()) return false;
  // The host may come back in while its sink is being released, so the list is in order by then.
  const Advised removed = std::move(*found);
  sinks.erase(found);
  return true;
}

bool AdvisedSinks::Has(DWORD cookie) const noexcept {
  return std::any_of(sinks.begin(), sinks.end(),
                     [&](const Advised& advised) { return advised.cookie == cookie; });
}

ConnectionPoint::ConnectionPoint(IConnectionPointContainer* owner, const IID& eventsId,
                                 std::shared_ptr<AdvisedSinks> list)
    : container(owner), eventsInterfaceId(eventsId), sinks(std::move(list)) {}

STDMETHODIMP ConnectionPoint::GetConnectionInterface(IID* interfaceId) noexcept {
  if (interfaceId == nullptr) return E_POINTER;
  *interfaceId = eventsInterfaceId;
  return S_OK;
}

STDMETHODIMP ConnectionPoint::GetConnectionPointContainer(IConnectionPointContainer** result) noexcept {
  if (result == nullptr) return E_POINTER;
  *result = ComPointer<IConnectionPointContainer>(container).Detach();
  return *result == nullptr ? E_UNEXPECTED : S_OK;
}

STDMETHODIMP ConnectionPoint::Advise(IUnknown* sink, DWORD* cookie) noexcept {
  if (cookie == nullptr) return E_POINTER;
  *cookie = 0;
  if (sink == nullptr) return E_POINTER;
  void* events = nullptr;
  if (FAILED(sink->QueryInterface(eventsInterfaceId, &events))) return CONNECT_E_CANNOTCONNECT;
  try {
    // The events are a dispinterface: its sink is an IDispatch.
    *cookie = sinks->Add(ComPointer<IDispatch>::Adopt(static_cast<IDispatch*>(events)));
    return S_OK;
  } catch (...) {
    return E_OUTOFMEMORY;
  }
}

STDMETHODIMP ConnectionPoint::Unadvise(DWORD cookie) noexcept {
  return sinks->Remove(cookie) ? S_OK : CONNECT_E_NOCONNECTION;
}

STDMETHODIMP ConnectionPoint::EnumConnections(IEnumConnections** result) noexcept {
  if (result == nullptr) return E_POINTER;
  *result = nullptr;
  try {
    auto snapshot = std::make_shared<const std::vector<AdvisedSinks::Advised>>(sinks->All());
    *result = MakeObject<ConnectionEnumerator>(std::move(snapshot)).Detach();
    return S_OK;
  } catch (...) {
    return E_OUTOFMEMORY;
  }
}

ComPointer<IEnumConnectionPoints> EnumeratePoint(ComPointer<IConnectionPoint> point) {
  auto points = std::make_shared<const std::vector<HeldPoint>>(std::vector{HeldPoint{std::move(point)}});
  return ComPointer<IEnumConnectionPoints>(MakeObject<PointEnumerator>(std::move(points)).get());
}

}  // namespace krnqb::com
