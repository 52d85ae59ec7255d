#pragma once

#include <krn6_qb2002.h>

#include <optional>
#include <string>
#include <vector>

#include "com/objects/automation_object.h"
#include "krnqb/variant.h"

namespace krnqb::com {

/// A collection as hosts see it: values in order, some with keys, that a host may add to and remove from.
class CollectionObject final : public AutomationObject<_QBCollection> {
 public:
  explicit CollectionObject(const Collection& source);

  STDMETHODIMP get_Count(long* result) noexcept override;
  STDMETHODIMP get_Item(VARIANT Index, VARIANT* result) noexcept override;
  STDMETHODIMP _NewEnum(IUnknown** result) noexcept override;
  STDMETHODIMP Add(VARIANT Item, VARIANT Key, VARIANT Before, VARIANT After) noexcept override;
  STDMETHODIMP Remove(VARIANT Index) noexcept override;

 private:
  struct Entry {
    std::optional<std::string> key;  // folded
    VariantValue value;
  };

  // The place of an entry: a number from 1 to the count (error 9 outside), or a key (error 5 when missing).
  std::size_t PositionOf(const VARIANT& index) const;
  std::size_t PlaceForNew(const VARIANT& before, const VARIANT& after) const;

  std::vector<Entry> entries;
};

/// A collection object that holds the values of one of the component's collections.
ComPointer<IDispatch> MakeCollectionObject(const Collection& source);

/// The values of any collection of a host's, found by its enumerator.
std::vector<VariantValue> ValuesOf(IDispatch& collection);

}  // namespace krnqb::com
