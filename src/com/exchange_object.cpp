#include "com/exchange_object.h"

#include <olectl.h>

#include "com/debugger_observer.h"
#include "com/objects/collection_object.h"
#include "com/objects/event_raising.h"
#include "com/objects/incoming_values.h"
#include "com/server_classes.h"
#include "com/subtotals_object.h"
#include "com/values/text.h"
#include "com/windows_world.h"

namespace krnqb::com {
namespace {

OutsideWorld WorldRaisingTo(std::shared_ptr<AdvisedSinks> sinks) {
  const std::shared_ptr<Observer> observer = DebuggerObserver();
  return WindowsOutsideWorld(RaisingTo(std::move(sinks), observer), observer);
}

// An item that is not a `cSubtotals` becomes Nothing, which ends the scan.
std::shared_ptr<Collection> RecordsOf(IDispatch& collection) {
  auto records = std::make_shared<Collection>();
  for (const VariantValue& value : ValuesOf(collection))
    records->Add(SubtotalsOf(value.IsObject() ? value.Get().punkVal : nullptr));
  return records;
}

}  // namespace

ExchangeObject::ExchangeObject()
    : CreatableObject(program_name::exchange, __uuidof(::QBDataExchange), __uuidof(__QBDataExchange)),
      sinks_(std::make_shared<AdvisedSinks>()),
      events_(MakeObject<ConnectionPoint>(this, __uuidof(__QBDataExchange), sinks_)),
      component_(WorldRaisingTo(sinks_)) {}

ExchangeObject::~ExchangeObject() {
  events_->Disconnect();
}

STDMETHODIMP ExchangeObject::IsSDKVersionSupported(BSTR sVersion, VARIANT* result) noexcept {
  return Give(result, [&] { return component_.IsSDKVersionSupported(Utf8(TextOf(sVersion))); });
}

STDMETHODIMP ExchangeObject::get_QBCompany(BSTR* result) noexcept {
  return Give(result, [&] { return component_.QBCompany(); });
}
STDMETHODIMP ExchangeObject::put_QBCompany(BSTR value) noexcept {
  return Do([&] { component_.QBCompany(Utf8(TextOf(value))); });
}

STDMETHODIMP ExchangeObject::QbSerialize(VARIANT SerialData,
                                         ::QBKRN_DeserializeOptions* /*DeserializeOptions*/,
                                         VARIANT* result) noexcept {
  return Give(result, [&] { return component_.QbSerialize(RequestOf(SerialData)); });
}

STDMETHODIMP ExchangeObject::KRNOpenPlan(BSTR PlanFile, VARIANT_BOOL* result) noexcept {
  return Give(result, [&] { return component_.KRNOpenPlan(Utf8(TextOf(PlanFile))); });
}

STDMETHODIMP ExchangeObject::KRNDeserialize(VARIANT SerialData,
                                            ::QBKRN_DeserializeOptions* /*DeserializeOptions*/,
                                            VARIANT* result) noexcept {
  return Give(result, [&] { return component_.KRNDeserialize(AnswerOf(SerialData)); });
}

STDMETHODIMP ExchangeObject::KRNSerialize(::QBKRN_SerializeOptions* /*SerializeOptions*/,
                                          VARIANT* result) noexcept {
  return Give(result, [&] { return component_.KRNSerialize(); });
}

STDMETHODIMP ExchangeObject::MonthsOfActivity(IDispatch** colMonthSubtotals, short* result) noexcept {
  if (result != nullptr) *result = 0;
  if (colMonthSubtotals == nullptr) return E_POINTER;
  return Give(result, [&]() -> std::int16_t {
    const ComPointer<IDispatch> collection(*colMonthSubtotals);
    if (!collection) return 0;
    try {
      return component_.MonthsOfActivity(RecordsOf(*collection));
    } catch (const Error&) {
      // A collection that cannot be enumerated has no months.
      return 0;
    }
  });
}

STDMETHODIMP ExchangeObject::ShowDialog(::QBKRN_Dialogs DialogOption, VARIANT* result) noexcept {
  return Give(result, [&] { return component_.ShowDialog(static_cast<krnqb::QBKRN_Dialogs>(DialogOption)); });
}

STDMETHODIMP ExchangeObject::Go(VARIANT_BOOL* result) noexcept {
  return Give(result, [&] { return component_.Go(); });
}

STDMETHODIMP ExchangeObject::SubmitCustomRequest(BSTR QBRequestXML, VARIANT* result) noexcept {
  return Give(result, [&] { return component_.SubmitCustomRequest(Utf8(TextOf(QBRequestXML))); });
}

STDMETHODIMP ExchangeObject::get_QBExpenseAccounts(IDispatch** result) noexcept {
  return Give(result, [&] { return OutsideObject(component_.QBExpenseAccounts()); });
}
STDMETHODIMP ExchangeObject::get_QBIncomeAccounts(IDispatch** result) noexcept {
  return Give(result, [&] { return OutsideObject(component_.QBIncomeAccounts()); });
}
STDMETHODIMP ExchangeObject::get_QBCompanies(IDispatch** result) noexcept {
  return Give(result, [&] { return OutsideObject(component_.QBCompanies()); });
}

STDMETHODIMP ExchangeObject::Execute(BSTR* Action, VARIANT* /*Args*/, VARIANT* result) noexcept {
  if (result != nullptr) *result = VARIANT{};
  if (Action == nullptr) return E_POINTER;
  return Give(result, [&] {
    std::string action = Utf8(TextOf(*Action));
    return component_.Execute(action);
  });
}

// A selection built by the component is returned as an element of the system's document model, which then
// replaces it: changes that the host makes to the element take effect.
STDMETHODIMP ExchangeObject::get_SelectedExpenses(IDispatch** result) noexcept {
  return Give(result, [&] {
    const XmlElement selection = component_.SelectedExpenses();
    ComPointer<IDispatch> element = OutsideObject(selection);
    if (element && selection.Outside() == nullptr) component_.SelectedExpenses(SelectionOf(element.get()));
    return element;
  });
}
STDMETHODIMP ExchangeObject::putref_SelectedExpenses(IDispatch* value) noexcept {
  return Do([&] { component_.SelectedExpenses(SelectionOf(value)); });
}

STDMETHODIMP ExchangeObject::GetTablesAffected(IDispatch** result) noexcept {
  return Give(result, [&] { return OutsideObject(component_.GetTablesAffected()); });
}

STDMETHODIMP ExchangeObject::EnumConnectionPoints(IEnumConnectionPoints** result) noexcept {
  return Give(result, [&] { return EnumeratePoint(ComPointer<IConnectionPoint>(events_.get())); });
}

STDMETHODIMP ExchangeObject::FindConnectionPoint(REFIID eventsId, IConnectionPoint** result) noexcept {
  if (result == nullptr) return E_POINTER;
  *result = nullptr;
  if (eventsId != __uuidof(__QBDataExchange)) return CONNECT_E_NOCONNECTION;
  *result = ComPointer<IConnectionPoint>(events_.get()).Detach();
  return S_OK;
}

}  // namespace krnqb::com
