// The properties of QBDataExchange that keep a value.
#include "com/exchange_object.h"
#include "com/objects/incoming_values.h"
#include "com/values/text.h"

namespace krnqb::com {

STDMETHODIMP ExchangeObject::get_mQBDataExchangeObject(IDispatch** result) noexcept {
  return Give(result, [&] { return OutsideObject(component.mQBDataExchangeObject()); });
}
STDMETHODIMP ExchangeObject::putref_mQBDataExchangeObject(IDispatch* value) noexcept {
  return Do([&] { component.mQBDataExchangeObject(HostObjectOf(value)); });
}

STDMETHODIMP ExchangeObject::get_KRNPlanData(VARIANT* result) noexcept {
  return Give(result, [&] { return component.KRNPlanData(); });
}
STDMETHODIMP ExchangeObject::putref_KRNPlanData(VARIANT value) noexcept {
  return Do([&] { component.KRNPlanData(HostObjectOf(value)); });
}

STDMETHODIMP ExchangeObject::get_IncludeExpenseAccounts(VARIANT_BOOL* result) noexcept {
  return Give(result, [&] { return component.IncludeExpenseAccounts(); });
}
STDMETHODIMP ExchangeObject::put_IncludeExpenseAccounts(VARIANT_BOOL value) noexcept {
  return Do([&] { component.IncludeExpenseAccounts(value != VARIANT_FALSE); });
}

STDMETHODIMP ExchangeObject::get_IncludeIncomeAccounts(VARIANT_BOOL* result) noexcept {
  return Give(result, [&] { return component.IncludeIncomeAccounts(); });
}
STDMETHODIMP ExchangeObject::put_IncludeIncomeAccounts(VARIANT_BOOL value) noexcept {
  return Do([&] { component.IncludeIncomeAccounts(value != VARIANT_FALSE); });
}

STDMETHODIMP ExchangeObject::get_IncludePastPerformance(VARIANT_BOOL* result) noexcept {
  return Give(result, [&] { return component.IncludePastPerformance(); });
}
STDMETHODIMP ExchangeObject::put_IncludePastPerformance(VARIANT_BOOL value) noexcept {
  return Do([&] { component.IncludePastPerformance(value != VARIANT_FALSE); });
}

STDMETHODIMP ExchangeObject::get_GrowthRateCOGS(short* result) noexcept {
  return Give(result, [&] { return component.GrowthRateCOGS(); });
}
STDMETHODIMP ExchangeObject::put_GrowthRateCOGS(short value) noexcept {
  return Do([&] { component.GrowthRateCOGS(value); });
}

STDMETHODIMP ExchangeObject::get_GrowthRateIncome(short* result) noexcept {
  return Give(result, [&] { return component.GrowthRateIncome(); });
}
STDMETHODIMP ExchangeObject::put_GrowthRateIncome(short value) noexcept {
  return Do([&] { component.GrowthRateIncome(value); });
}

STDMETHODIMP ExchangeObject::get_GrowthRateExpenses(short* result) noexcept {
  return Give(result, [&] { return component.GrowthRateExpenses(); });
}
STDMETHODIMP ExchangeObject::put_GrowthRateExpenses(short value) noexcept {
  return Do([&] { component.GrowthRateExpenses(value); });
}

STDMETHODIMP ExchangeObject::get_BalancesImport(::QBKRN_BalancesImport* result) noexcept {
  return Give(result, [&] { return component.BalancesImport(); });
}
STDMETHODIMP ExchangeObject::put_BalancesImport(::QBKRN_BalancesImport value) noexcept {
  return Do([&] { component.BalancesImport(static_cast<krnqb::QBKRN_BalancesImport>(value)); });
}

STDMETHODIMP ExchangeObject::get_ErrorNumber(long* result) noexcept {
  return Give(result, [&] { return component.ErrorNumber(); });
}
STDMETHODIMP ExchangeObject::put_ErrorNumber(long value) noexcept {
  return Do([&] { component.ErrorNumber(value); });
}

STDMETHODIMP ExchangeObject::get_ErrorDescription(BSTR* result) noexcept {
  return Give(result, [&] { return component.ErrorDescription(); });
}
STDMETHODIMP ExchangeObject::put_ErrorDescription(BSTR value) noexcept {
  return Do([&] { component.ErrorDescription(Utf8(TextOf(value))); });
}

STDMETHODIMP ExchangeObject::get_KRNStartingMonth(short* result) noexcept {
  return Give(result, [&] { return component.KRNStartingMonth(); });
}
STDMETHODIMP ExchangeObject::put_KRNStartingMonth(short value) noexcept {
  return Do([&] { component.KRNStartingMonth(value); });
}

STDMETHODIMP ExchangeObject::get_KRNStartingYear(short* result) noexcept {
  return Give(result, [&] { return component.KRNStartingYear(); });
}
STDMETHODIMP ExchangeObject::put_KRNStartingYear(short value) noexcept {
  return Do([&] { component.KRNStartingYear(value); });
}

STDMETHODIMP ExchangeObject::get_StartingMonth(short* result) noexcept {
  return Give(result, [&] { return component.StartingMonth(); });
}
STDMETHODIMP ExchangeObject::put_StartingMonth(short value) noexcept {
  return Do([&] { component.StartingMonth(value); });
}

STDMETHODIMP ExchangeObject::get_StartingYear(short* result) noexcept {
  return Give(result, [&] { return component.StartingYear(); });
}
STDMETHODIMP ExchangeObject::put_StartingYear(short value) noexcept {
  return Do([&] { component.StartingYear(value); });
}

STDMETHODIMP ExchangeObject::get_QBStartingMonth(short* result) noexcept {
  return Give(result, [&] { return component.QBStartingMonth(); });
}
STDMETHODIMP ExchangeObject::put_QBStartingMonth(short value) noexcept {
  return Do([&] { component.QBStartingMonth(value); });
}

STDMETHODIMP ExchangeObject::get_KRNProduct(::QBKRNproduct* result) noexcept {
  return Give(result, [&] { return component.KRNProduct(); });
}
STDMETHODIMP ExchangeObject::put_KRNProduct(::QBKRNproduct value) noexcept {
  return Do([&] { component.KRNProduct(static_cast<krnqb::QBKRNproduct>(value)); });
}

STDMETHODIMP ExchangeObject::get_QBMajorVersion(short* result) noexcept {
  return Give(result, [&] { return component.QBMajorVersion(); });
}
STDMETHODIMP ExchangeObject::put_QBMajorVersion(short value) noexcept {
  return Do([&] { component.QBMajorVersion(value); });
}

STDMETHODIMP ExchangeObject::get_QBMinorVersion(short* result) noexcept {
  return Give(result, [&] { return component.QBMinorVersion(); });
}
STDMETHODIMP ExchangeObject::put_QBMinorVersion(short value) noexcept {
  return Do([&] { component.QBMinorVersion(value); });
}

}  // namespace krnqb::com
