#pragma once

#include <unknwn.h>

#include <atomic>

#include "com/objects/live_objects.h"
#include "com/values/com_pointer.h"

namespace krnqb::com {

/// Implements IUnknown for an object with these interfaces: reference counting, and a lock that keeps the DLL
/// loaded. Create objects with `MakeObject`.
template <typename First, typename... Others>
class ComObject : public First, public Others... {
 public:
  ComObject(const ComObject&) = delete;
  ComObject& operator=(const ComObject&) = delete;

  STDMETHODIMP QueryInterface(REFIID interfaceId, void** object) noexcept override {
    if (object == nullptr) return E_POINTER;
    *object = Find(interfaceId);
    if (*object == nullptr) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() noexcept override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() noexcept override {
    const ULONG left = --references_;
    if (left != 0) return left;
    // The destructor may take and release a reference, which must not delete the object again.
    ++references_;
    delete this;
    return 0;
  }

 protected:
  ComObject() noexcept = default;
  virtual ~ComObject() = default;

  /// Returns the interface with this identifier without adding a reference, or null if the object does not
  /// implement it.
  virtual void* Find(REFIID interfaceId) noexcept {
    if (interfaceId == __uuidof(IUnknown) || interfaceId == __uuidof(First)) return static_cast<First*>(this);
    void* found = nullptr;
    ((found == nullptr && interfaceId == __uuidof(Others) ? void(found = static_cast<Others*>(this))
                                                          : void()),
     ...);
    return found;
  }

 private:
  static constexpr ULONG ending = 0x10000000;

  std::atomic<ULONG> references_{0};
  Counted counted_;
};

/// Creates an object; the returned pointer holds its only reference.
template <typename Object, typename... Arguments>
ComPointer<Object> MakeObject(Arguments&&... arguments) {
  return ComPointer<Object>(new Object(std::forward<Arguments>(arguments)...));
}

}  // namespace krnqb::com
