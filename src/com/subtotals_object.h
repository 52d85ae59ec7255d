#pragma once

#include <krn6_qb2002.h>

#include "com/objects/class_information.h"
#include "krnqb/subtotals.h"

namespace krnqb::com {

/// `cSubtotals` as hosts see it.
class SubtotalsObject final : public CreatableObject<_cSubtotals> {
 public:
  SubtotalsObject();

  STDMETHODIMP get_Description(BSTR* result) noexcept override;
  STDMETHODIMP put_Description(BSTR value) noexcept override;
  STDMETHODIMP get_SubTotal(short Index, double* result) noexcept override;
  STDMETHODIMP put_SubTotal(short Index, double value) noexcept override;
  STDMETHODIMP Total(double* result) noexcept override;

 private:
  krnqb::cSubtotals subtotals;
};

/// A copy of any record with that interface; null when the object is none. What it throws is the record's own
/// failure.
std::shared_ptr<krnqb::cSubtotals> SubtotalsOf(IUnknown* object);

}  // namespace krnqb::com
