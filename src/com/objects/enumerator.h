#pragma once

#include <memory>
#include <vector>

#include "com/objects/com_object.h"

namespace krnqb::com {

/// Implements one of the system's enumeration interfaces over an immutable list. `Given` is the element type
/// of the interface; `Hold` owns an item and returns it from `Given Hold::Give() const`.
template <typename Interface, typename Given, typename Hold>
class Enumerator final : public ComObject<Interface> {
 public:
  using Items = std::shared_ptr<const std::vector<Hold>>;

  explicit Enumerator(Items items, std::size_t position = 0)
      : items_(std::move(items)), position_(position) {}

  STDMETHODIMP Next(ULONG count, Given* given, ULONG* fetched) noexcept override {
    if (fetched != nullptr) *fetched = 0;
    if (given == nullptr || (fetched == nullptr && count != 1)) return E_POINTER;
    ULONG done = 0;
    try {
      for (; done < count && position_ < items_->size(); ++done, ++position_)
        given[done] = (*items_)[position_].Give();
    } catch (...) {
      if (done == 0) return E_OUTOFMEMORY;
    }
    if (fetched != nullptr) *fetched = done;
    return done == count ? S_OK : S_FALSE;
  }

  STDMETHODIMP Skip(ULONG count) noexcept override {
    const std::size_t left = items_->size() - position_;
    position_ += count < left ? count : left;
    return count <= left ? S_OK : S_FALSE;
  }

  STDMETHODIMP Reset() noexcept override {
    position_ = 0;
    return S_OK;
  }

  STDMETHODIMP Clone(Interface** copy) noexcept override {
    if (copy == nullptr) return E_POINTER;
    *copy = nullptr;
    try {
      *copy = MakeObject<Enumerator>(items_, position_).Detach();
      return S_OK;
    } catch (...) {
      return E_OUTOFMEMORY;
    }
  }

 private:
  Items items_;
  std::size_t position_;
};

}  // namespace krnqb::com
