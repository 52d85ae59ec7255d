#pragma once

#include <krn6_qb2002.h>

#include "com/objects/class_information.h"
#include "krnqb/subtotals.h"

namespace krnqb::com {

/// `cSubtotals` as hosts see it: forwards to the component's own class.
class SubtotalsObject final : public CreatableObject<_cSubtotals> {
 public:
  SubtotalsObject();

  STDMETHODIMP get_Description(BSTR* result) noexcept override;
  STDMETHODIMP put_Description(BSTR value) noexcept override;
  STDMETHODIMP get_SubTotal(short Index, double* result) noexcept override;
  STDMETHODIMP put_SubTotal(short Index, double value) noexcept override;
  STDMETHODIMP Total(double* result) noexcept override;

 private:
  krnqb::cSubtotals subtotals_;
};

/// Returns a copy of any object that implements the interface, or null if it does not. Throws the object's
/// own error if it cannot be read.
std::shared_ptr<krnqb::cSubtotals> SubtotalsOf(IUnknown* object);

}  // namespace krnqb::com
