#pragma once

#include <unknwn.h>

#include <utility>

namespace krnqb::com {

/// Shares ownership of a COM interface pointer; may be null.
template <typename Interface>
class ComPointer {
 public:
  ComPointer() noexcept = default;
  /// Adds a reference.
  explicit ComPointer(Interface* pointer) noexcept : pointer_(pointer) {
    if (pointer_ != nullptr) pointer_->AddRef();
  }
  ComPointer(const ComPointer& other) noexcept : ComPointer(other.pointer_) {}
  ComPointer(ComPointer&& other) noexcept : pointer_(std::exchange(other.pointer_, nullptr)) {}
  ComPointer& operator=(ComPointer other) noexcept {
    std::swap(pointer_, other.pointer_);
    return *this;
  }
  ~ComPointer() { Release(); }

  /// Takes ownership of a reference held by the caller.
  static ComPointer Adopt(Interface* owned) noexcept {
    ComPointer adopted;
    adopted.pointer_ = owned;
    return adopted;
  }

  /// Releases the current reference and returns where a call stores a new one.
  Interface** Receive() noexcept {
    Release();
    return &pointer_;
  }
  /// Returns the pointer and gives up its reference, which the caller must release.
  [[nodiscard]] Interface* Detach() noexcept { return std::exchange(pointer_, nullptr); }

  Interface* get() const noexcept { return pointer_; }
  Interface* operator->() const noexcept { return pointer_; }
  Interface& operator*() const noexcept { return *pointer_; }
  explicit operator bool() const noexcept { return pointer_ != nullptr; }

 private:
  void Release() noexcept {
    if (Interface* released = std::exchange(pointer_, nullptr)) released->Release();
  }

  Interface* pointer_ = nullptr;
};

/// Returns another interface of the same object, or null if the object is null or does not implement it.
template <typename Wanted>
ComPointer<Wanted> Query(IUnknown* object) noexcept {
  void* found = nullptr;
  if (object == nullptr || FAILED(object->QueryInterface(__uuidof(Wanted), &found))) return {};
  return ComPointer<Wanted>::Adopt(static_cast<Wanted*>(found));
}

}  // namespace krnqb::com
