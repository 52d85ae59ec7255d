#include "com/objects/connection_point.h"

#include <olectl.h>

#include <algorithm>
#include <utility>

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
  sinks_.push_back({lastCookie_ + 1, std::move(sink)});
  return ++lastCookie_;
}

bool AdvisedSinks::Remove(DWORD cookie) noexcept {
  const auto found = std::find_if(sinks_.begin(), sinks_.end(),
                                  [&](const Advised& advised) { return advised.cookie == cookie; });
  if (found == sinks_.end()) return false;
  // Releasing the sink may call back into this object, so the list must be consistent first.
  const Advised removed = std::move(*found);
  sinks_.erase(found);
  return true;
}

void AdvisedSinks::RemoveAll() noexcept {
  const std::vector<Advised> removed = std::exchange(sinks_, {});
}

bool AdvisedSinks::Has(DWORD cookie) const noexcept {
  return std::any_of(sinks_.begin(), sinks_.end(),
                     [&](const Advised& advised) { return advised.cookie == cookie; });
}

ConnectionPoint::ConnectionPoint(IConnectionPointContainer* container, const IID& eventsInterfaceId,
                                 std::shared_ptr<AdvisedSinks> sinks)
    : container_(container), eventsInterfaceId_(eventsInterfaceId), sinks_(std::move(sinks)) {}

void ConnectionPoint::Disconnect() noexcept {
  container_ = nullptr;
  sinks_->RemoveAll();
}

STDMETHODIMP ConnectionPoint::GetConnectionInterface(IID* interfaceId) noexcept {
  if (interfaceId == nullptr) return E_POINTER;
  *interfaceId = eventsInterfaceId_;
  return S_OK;
}

STDMETHODIMP ConnectionPoint::GetConnectionPointContainer(IConnectionPointContainer** result) noexcept {
  if (result == nullptr) return E_POINTER;
  *result = ComPointer<IConnectionPointContainer>(container_).Detach();
  return *result == nullptr ? E_UNEXPECTED : S_OK;
}

STDMETHODIMP ConnectionPoint::Advise(IUnknown* sink, DWORD* cookie) noexcept {
  if (cookie == nullptr) return E_POINTER;
  *cookie = 0;
  if (sink == nullptr) return E_POINTER;
  if (container_ == nullptr) return CO_E_OBJNOTCONNECTED;
  void* events = nullptr;
  if (FAILED(sink->QueryInterface(eventsInterfaceId_, &events))) return CONNECT_E_CANNOTCONNECT;
  try {
    // The events are a dispinterface, so their sink is an IDispatch.
    *cookie = sinks_->Add(ComPointer<IDispatch>::Adopt(static_cast<IDispatch*>(events)));
    return S_OK;
  } catch (...) {
    return E_OUTOFMEMORY;
  }
}

STDMETHODIMP ConnectionPoint::Unadvise(DWORD cookie) noexcept {
  return sinks_->Remove(cookie) ? S_OK : CONNECT_E_NOCONNECTION;
}

STDMETHODIMP ConnectionPoint::EnumConnections(IEnumConnections** result) noexcept {
  if (result == nullptr) return E_POINTER;
  *result = nullptr;
  try {
    auto snapshot = std::make_shared<const std::vector<AdvisedSinks::Advised>>(sinks_->All());
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
