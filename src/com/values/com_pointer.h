#pragma once

#include <unknwn.h>

#include <utility>

namespace krnqb::com {

/// Shares one COM interface pointer: holds a reference while it lives. May be null.
template <typename Interface>
class ComPointer {
 public:
  ComPointer() noexcept = default;
  /// Takes a reference of its own.
  explicit ComPointer(Interface* shared) noexcept : pointer(shared) {
    if (pointer != nullptr) pointer->AddRef();
  }
  ComPointer(const ComPointer& other) noexcept : ComPointer(other.pointer) {}
  ComPointer(ComPointer&& other) noexcept : pointer(std::exchange(other.pointer, nullptr)) {}
  ComPointer& operator=(ComPointer other) noexcept {
    std::swap(pointer, other.pointer);
    return *this;
  }
  ~ComPointer() { Release(); }

  /// Takes over a reference that the caller owns.
  static ComPointer Adopt(Interface* owned) noexcept {
    ComPointer adopted;
    adopted.pointer = owned;
    return adopted;
  }

  /// Where a call puts an interface that the caller is to release; what was held is released first.
  Interface** Receive() noexcept {
    Release();
    return &pointer;
  }
  /// Gives the reference away; the caller releases it.
  [[nodiscard]] Interface* Detach() noexcept { return std::exchange(pointer, nullptr); }

  Interface* get() const noexcept { return pointer; }
  Interface* operator->() const noexcept { return pointer; }
  Interface& operator*() const noexcept { return *pointer; }
  explicit operator bool() const noexcept { return pointer != nullptr; }

 private:
  void Release() noexcept {
    if (Interface* released = std::exchange(pointer, nullptr)) released->Release();
  }

  Interface* pointer = nullptr;
};

/// The same object by another of its interfaces; null when it does not have it, or when there is no object.
template <typename Wanted>
ComPointer<Wanted> Query(IUnknown* object) noexcept {
  void* found = nullptr;
  if (object == nullptr || FAILED(object->QueryInterface(__uuidof(Wanted), &found))) return {};
  return ComPointer<Wanted>::Adopt(static_cast<Wanted*>(found));
}

}  // namespace krnqb::com
