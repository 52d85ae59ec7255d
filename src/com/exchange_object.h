#pragma once

#include <krn6_qb2002.h>

#include "com/objects/class_information.h"
#include "com/objects/connection_point.h"
#include "krnqb/qb_data_exchange.h"

namespace krnqb::com {

/// `QBDataExchange` as hosts see it: each method converts its arguments and results and forwards to the
/// component.
class ExchangeObject final : public CreatableObject<_QBDataExchange, IConnectionPointContainer> {
 public:
  ExchangeObject();
  ~ExchangeObject() override;

  STDMETHODIMP get_mQBDataExchangeObject(IDispatch** result) noexcept override;
  STDMETHODIMP putref_mQBDataExchangeObject(IDispatch* value) noexcept override;
  STDMETHODIMP get_IncludeExpenseAccounts(VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP put_IncludeExpenseAccounts(VARIANT_BOOL value) noexcept override;
  STDMETHODIMP get_IncludeIncomeAccounts(VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP put_IncludeIncomeAccounts(VARIANT_BOOL value) noexcept override;
  STDMETHODIMP get_IncludePastPerformance(VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP put_IncludePastPerformance(VARIANT_BOOL value) noexcept override;
  STDMETHODIMP get_GrowthRateCOGS(short* result) noexcept override;
  STDMETHODIMP put_GrowthRateCOGS(short value) noexcept override;
  STDMETHODIMP get_GrowthRateIncome(short* result) noexcept override;
  STDMETHODIMP put_GrowthRateIncome(short value) noexcept override;
  STDMETHODIMP get_GrowthRateExpenses(short* result) noexcept override;
  STDMETHODIMP put_GrowthRateExpenses(short value) noexcept override;
  STDMETHODIMP get_BalancesImport(::QBKRN_BalancesImport* result) noexcept override;
  STDMETHODIMP put_BalancesImport(::QBKRN_BalancesImport value) noexcept override;

  STDMETHODIMP IsSDKVersionSupported(BSTR sVersion, VARIANT* result) noexcept override;
  STDMETHODIMP get_QBCompany(BSTR* result) noexcept override;
  STDMETHODIMP put_QBCompany(BSTR value) noexcept override;
  STDMETHODIMP QbSerialize(VARIANT SerialData, ::QBKRN_DeserializeOptions* DeserializeOptions,
                           VARIANT* result) noexcept override;
  STDMETHODIMP get_KRNPlanData(VARIANT* result) noexcept override;
  STDMETHODIMP putref_KRNPlanData(VARIANT value) noexcept override;
  STDMETHODIMP KRNOpenPlan(BSTR PlanFile, VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP KRNDeserialize(VARIANT SerialData, ::QBKRN_DeserializeOptions* DeserializeOptions,
                              VARIANT* result) noexcept override;
  STDMETHODIMP KRNSerialize(::QBKRN_SerializeOptions* SerializeOptions, VARIANT* result) noexcept override;
  STDMETHODIMP MonthsOfActivity(IDispatch** colMonthSubtotals, short* result) noexcept override;
  STDMETHODIMP ShowDialog(::QBKRN_Dialogs DialogOption, VARIANT* result) noexcept override;
  STDMETHODIMP Go(VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP SubmitCustomRequest(BSTR QBRequestXML, VARIANT* result) noexcept override;
  STDMETHODIMP get_QBExpenseAccounts(IDispatch** result) noexcept override;
  STDMETHODIMP get_QBIncomeAccounts(IDispatch** result) noexcept override;
  STDMETHODIMP get_QBCompanies(IDispatch** result) noexcept override;
  STDMETHODIMP Execute(BSTR* Action, VARIANT* Args, VARIANT* result) noexcept override;

  STDMETHODIMP get_ErrorNumber(long* result) noexcept override;
  STDMETHODIMP put_ErrorNumber(long value) noexcept override;
  STDMETHODIMP get_ErrorDescription(BSTR* result) noexcept override;
  STDMETHODIMP put_ErrorDescription(BSTR value) noexcept override;
  STDMETHODIMP get_KRNStartingMonth(short* result) noexcept override;
  STDMETHODIMP put_KRNStartingMonth(short value) noexcept override;
  STDMETHODIMP get_KRNStartingYear(short* result) noexcept override;
  STDMETHODIMP put_KRNStartingYear(short value) noexcept override;
  STDMETHODIMP get_StartingMonth(short* result) noexcept override;
  STDMETHODIMP put_StartingMonth(short value) noexcept override;
  STDMETHODIMP get_StartingYear(short* result) noexcept override;
  STDMETHODIMP put_StartingYear(short value) noexcept override;
  STDMETHODIMP get_QBStartingMonth(short* result) noexcept override;
  STDMETHODIMP put_QBStartingMonth(short value) noexcept override;
  STDMETHODIMP get_KRNProduct(::QBKRNproduct* result) noexcept override;
  STDMETHODIMP put_KRNProduct(::QBKRNproduct value) noexcept override;

  STDMETHODIMP get_SelectedExpenses(IDispatch** result) noexcept override;
  STDMETHODIMP putref_SelectedExpenses(IDispatch* value) noexcept override;
  STDMETHODIMP GetTablesAffected(IDispatch** result) noexcept override;
  STDMETHODIMP get_QBMajorVersion(short* result) noexcept override;
  STDMETHODIMP put_QBMajorVersion(short value) noexcept override;
  STDMETHODIMP get_QBMinorVersion(short* result) noexcept override;
  STDMETHODIMP put_QBMinorVersion(short value) noexcept override;

  STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints** result) noexcept override;
  STDMETHODIMP FindConnectionPoint(REFIID eventsId, IConnectionPoint** result) noexcept override;

 private:
  std::shared_ptr<AdvisedSinks> sinks_;
  ComPointer<ConnectionPoint> events_;
  krnqb::QBDataExchange component_;
};

}  // namespace krnqb::com
