// The properties of QBDataExchange that store a value.
#include "com/exchange_object.h"
#include "com/objects/incoming_values.h"
#include "com/values/text.h"

namespace krnqb::com {

STDMETHODIMP ExchangeObject::get_mQBDataExchangeObject(IDispatch** result) noexcept {
  return Give(result, [&] { return OutsideObject(component_.mQBDataExchangeObject()); });
}
STDMETHODIMP ExchangeObject::putref_mQBDataExchangeObject(IDispatch* value) noexcept {
  return Do([&] { component_.mQBDataExchangeObject(HostObjectOf(value)); });
}

STDMETHODIMP ExchangeObject::get_KRNPlanData(VARIANT* result) noexcept {
  return Give(result, [&]() -> Variant {
    Variant plan = component_.KRNPlanData();
    return plan.IsEmpty() ? Variant(ObjectReference()) : plan;
  });
}
STDMETHODIMP ExchangeObject::putref_KRNPlanData(VARIANT value) noexcept {
  return Do([&] { component_.KRNPlanData(HostObjectOf(value)); });
}

STDMETHODIMP ExchangeObject::get_IncludeExpenseAccounts(VARIANT_BOOL* result) noexcept {
  return Give(result, [&] { return component_.IncludeExpenseAccounts(); });
}
STDMETHODIMP ExchangeObject::put_IncludeExpenseAccounts(VARIANT_BOOL value) noexcept {
  return Do([&] { component_.IncludeExpenseAccounts(value != VARIANT_FALSE); });
}

STDMETHODIMP ExchangeObject::get_IncludeIncomeAccounts(VARIANT_BOOL* result) noexcept {
  return Give(result, [&] { return component_.IncludeIncomeAccounts(); });
}
STDMETHODIMP ExchangeObject::put_IncludeIncomeAccounts(VARIANT_BOOL value) noexcept {
  return Do([&] { component_.IncludeIncomeAccounts(value != VARIANT_FALSE); });
}

STDMETHODIMP ExchangeObject::get_IncludePastPerformance(VARIANT_BOOL* result) noexcept {
  return Give(result, [&] { return component_.IncludePastPerformance(); });
}
STDMETHODIMP ExchangeObject::put_IncludePastPerformance(VARIANT_BOOL value) noexcept {
  return Do([&] { component_.IncludePastPerformance(value != VARIANT_FALSE); });
}

STDMETHODIMP ExchangeObject::get_GrowthRateCOGS(short* result) noexcept {
  return Give(result, [&] { return component_.GrowthRateCOGS(); });
}
STDMETHODIMP ExchangeObject::put_GrowthRateCOGS(short value) noexcept {
  return Do([&] { component_.GrowthRateCOGS(value); });
}

STDMETHODIMP ExchangeObject::get_GrowthRateIncome(short* result) noexcept {
  return Give(result, [&] { return component_.GrowthRateIncome(); });
}
STDMETHODIMP ExchangeObject::put_GrowthRateIncome(short value) noexcept {
  return Do([&] { component_.GrowthRateIncome(value); });
}

STDMETHODIMP ExchangeObject::get_GrowthRateExpenses(short* result) noexcept {
  return Give(result, [&] { return component_.GrowthRateExpenses(); });
}
STDMETHODIMP ExchangeObject::put_GrowthRateExpenses(short value) noexcept {
  return Do([&] { component_.GrowthRateExpenses(value); });
}

STDMETHODIMP ExchangeObject::get_BalancesImport(::QBKRN_BalancesImport* result) noexcept {
  return Give(result, [&] { return component_.BalancesImport(); });
}
STDMETHODIMP ExchangeObject::put_BalancesImport(::QBKRN_BalancesImport value) noexcept {
  return Do([&] { component_.BalancesImport(static_cast<krnqb::QBKRN_BalancesImport>(value)); });
}

STDMETHODIMP ExchangeObject::get_ErrorNumber(long* result) noexcept {
  return Give(result, [&] { return component_.ErrorNumber(); });
}
STDMETHODIMP ExchangeObject::put_ErrorNumber(long value) noexcept {
  return Do([&] { component_.ErrorNumber(value); });
}

STDMETHODIMP ExchangeObject::get_ErrorDescription(BSTR* result) noexcept {
  return Give(result, [&] { return component_.ErrorDescription(); });
}
STDMETHODIMP ExchangeObject::put_ErrorDescription(BSTR value) noexcept {
  return Do([&] { component_.ErrorDescription(Utf8(TextOf(value))); });
}

STDMETHODIMP ExchangeObject::get_KRNStartingMonth(short* result) noexcept {
  return Give(result, [&] { return component_.KRNStartingMonth(); });
}
STDMETHODIMP ExchangeObject::put_KRNStartingMonth(short value) noexcept {
  return Do([&] { component_.KRNStartingMonth(value); });
}

STDMETHODIMP ExchangeObject::get_KRNStartingYear(short* result) noexcept {
  return Give(result, [&] { return component_.KRNStartingYear(); });
}
STDMETHODIMP ExchangeObject::put_KRNStartingYear(short value) noexcept {
  return Do([&] { component_.KRNStartingYear(value); });
}

STDMETHODIMP ExchangeObject::get_StartingMonth(short* result) noexcept {
  return Give(result, [&] { return component_.StartingMonth(); });
}
STDMETHODIMP ExchangeObject::put_StartingMonth(short value) noexcept {
  return Do([&] { component_.StartingMonth(value); });
}

STDMETHODIMP ExchangeObject::get_StartingYear(short* result) noexcept {
  return Give(result, [&] { return component_.StartingYear(); });
}
STDMETHODIMP ExchangeObject::put_StartingYear(short value) noexcept {
  return Do([&] { component_.StartingYear(value); });
}

STDMETHODIMP ExchangeObject::get_QBStartingMonth(short* result) noexcept {
  return Give(result, [&] { return component_.QBStartingMonth(); });
}
STDMETHODIMP ExchangeObject::put_QBStartingMonth(short value) noexcept {
  return Do([&] { component_.QBStartingMonth(value); });
}

STDMETHODIMP ExchangeObject::get_KRNProduct(::QBKRNproduct* result) noexcept {
  return Give(result, [&] { return component_.KRNProduct(); });
}
STDMETHODIMP ExchangeObject::put_KRNProduct(::QBKRNproduct value) noexcept {
  return Do([&] { component_.KRNProduct(static_cast<krnqb::QBKRNproduct>(value)); });
}

STDMETHODIMP ExchangeObject::get_QBMajorVersion(short* result) noexcept {
  return Give(result, [&] { return component_.QBMajorVersion(); });
}
STDMETHODIMP ExchangeObject::put_QBMajorVersion(short value) noexcept {
  return Do([&] { component_.QBMajorVersion(value); });
}

STDMETHODIMP ExchangeObject::get_QBMinorVersion(short* result) noexcept {
  return Give(result, [&] { return component_.QBMinorVersion(); });
}
STDMETHODIMP ExchangeObject::put_QBMinorVersion(short value) noexcept {
  return Do([&] { component_.QBMinorVersion(value); });
}

}  // namespace krnqb::com
