#pragma once

#include <memory>
#include <vector>

#include "com/objects/com_object.h"

namespace krnqb::com {

/// One of the system's enumeration interfaces over a list that no longer changes. `Given` is the type that
/// the interface gives out; `Hold` keeps an item alive and gives it out by `Given Hold::Give() const`.
template <typename Interface, typename Given, typename Hold>
class Enumerator final : public ComObject<Interface> {
 public:
  using Items = std::shared_ptr<const std::vector<Hold>>;

  explicit Enumerator(Items listed, std::size_t start = 0) : items(std::move(listed)), position(start) {}

  STDMETHODIMP Next(ULONG count, Given* given, ULONG* fetched) noexcept override {
    if (fetched != nullptr) *fetched = 0;
    if (given == nullptr || (fetched == nullptr && count != 1)) return E_POINTER;
    ULONG done = 0;
    try {
      for (; done < count && position < items->size(); ++done, ++position)
        given[done] = (*items)[position].Give();
    } catch (...) {
      if (done == 0) return E_OUTOFMEMORY;
    }
    if (fetched != nullptr) *fetched = done;
    return done == count ? S_OK : S_FALSE;
  }

  STDMETHODIMP Skip(ULONG count) noexcept override {
    const std::size_t left = items->size() - position;
    position += count < left ? count : left;
    return count <= left ? S_OK : S_FALSE;
  }

  STDMETHODIMP Reset() noexcept override {
    position = 0;
    return S_OK;
  }

  STDMETHODIMP Clone(Interface** copy) noexcept override {
    if (copy == nullptr) return E_POINTER;
    *copy = nullptr;
    try {
      *copy = MakeObject<Enumerator>(items, position).Detach();
      return S_OK;
    } catch (...) {
      return E_OUTOFMEMORY;
    }
  }

 private:
  Items items;
  std::size_t position;
};

}  // namespace krnqb::com
