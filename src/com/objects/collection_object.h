#pragma once

#include <krn6_qb2002.h>

#include <optional>
#include <string>
#include <vector>

#include "com/objects/automation_object.h"
#include "krnqb/variant.h"

namespace krnqb::com {

/// A collection as hosts see it: an ordered list of values, some of which have keys. Hosts may add and remove
/// values.
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
    std::optional<std::string> key;  // case-folded
    VariantValue value;
  };

  // Returns the index of an entry by its position, 1 to the count (throws Error 9 if out of range), or by its
  // key (throws Error 5 if missing).
  std::size_t PositionOf(const VARIANT& index) const;
  std::size_t PlaceForNew(const VARIANT& before, const VARIANT& after) const;

  std::vector<Entry> entries_;
};

/// Returns a collection object with the values of one of the component's collections.
ComPointer<IDispatch> MakeCollectionObject(const Collection& source);

/// Returns the values of any collection object of a host, read through its enumerator.
std::vector<VariantValue> ValuesOf(IDispatch& collection);

}  // namespace krnqb::com
