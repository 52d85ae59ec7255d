#include "com/subtotals_object.h"

#include "com/server_classes.h"
#include "com/values/text.h"

namespace krnqb::com {

SubtotalsObject::SubtotalsObject()
    : CreatableObject(program_name::subtotals, __uuidof(::cSubtotals), GUID_NULL) {}

STDMETHODIMP SubtotalsObject::get_Description(BSTR* result) noexcept {
  return Give(result, [&] { return std::string_view(subtotals_.Description()); });
}
STDMETHODIMP SubtotalsObject::put_Description(BSTR value) noexcept {
  return Do([&] { subtotals_.Description(Utf8(TextOf(value))); });
}

STDMETHODIMP SubtotalsObject::get_SubTotal(short Index, double* result) noexcept {
  return Give(result, [&] { return subtotals_.SubTotal(Index); });
}
STDMETHODIMP SubtotalsObject::put_SubTotal(short Index, double value) noexcept {
  return Do([&] { subtotals_.SubTotal(Index, value); });
}

STDMETHODIMP SubtotalsObject::Total(double* result) noexcept {
  return Give(result, [&] { return subtotals_.Total(); });
}

std::shared_ptr<krnqb::cSubtotals> SubtotalsOf(IUnknown* object) {
  const auto record = Query<_cSubtotals>(object);
  if (!record) return nullptr;
  auto copy = std::make_shared<krnqb::cSubtotals>();
  for (std::int16_t slot = 1; slot <= krnqb::cSubtotals::monthCount; ++slot) {
    double amount = 0;
    ForgetErrors();
    const HRESULT result = record->get_SubTotal(slot, &amount);
    if (FAILED(result)) throw ErrorOf(result, *record.get(), __uuidof(_cSubtotals));
    copy->SubTotal(slot, amount);
  }
  return copy;
}

}  // namespace krnqb::com
