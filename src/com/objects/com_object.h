#pragma once

#include <unknwn.h>

#include <atomic>

#include "com/objects/live_objects.h"
#include "com/values/com_pointer.h"

namespace krnqb::com {

/// The IUnknown of an object with these interfaces: lives while references are held, and keeps the library
/// loaded. Objects are made by `MakeObject`.
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
  STDMETHODIMP_(ULONG) AddRef() noexcept override { return ++references; }
  STDMETHODIMP_(ULONG) Release() noexcept override {
    const ULONG left = --references;
    if (left != 0) return left;
    // What is released at the end may refer to the object once more, which must not end it twice.
    ++references;
    delete this;
    return 0;
  }

 protected:
  ComObject() noexcept = default;
  virtual ~ComObject() = default;

  /// The interface of that identifier, not counted; null when the object has none.
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

  std::atomic<ULONG> references{0};
  Counted counted;
};

/// A new object with one reference, which the pointer holds.
template <typename Object, typename... Arguments>
ComPointer<Object> MakeObject(Arguments&&... arguments) {
  return ComPointer<Object>(new Object(std::forward<Arguments>(arguments)...));
}

}  // namespace krnqb::com
