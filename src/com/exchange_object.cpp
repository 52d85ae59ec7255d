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

// A record that is no `cSubtotals` stands in the collection as Nothing, which ends the scan.
std::shared_ptr<Collection> RecordsOf(IDispatch& collection) {
  auto records = std::make_shared<Collection>();
  for (const VariantValue& value : ValuesOf(collection))
    records->Add(SubtotalsOf(value.IsObject() ? value.Get().punkVal : nullptr));
  return records;
}

}  // namespace

ExchangeObject::ExchangeObject()
    : CreatableObject(program_name::exchange, __uuidof(::QBDataExchange), __uuidof(__QBDataExchange)),
      sinks(std::make_shared<AdvisedSinks>()),
      events(MakeObject<ConnectionPoint>(this, __uuidof(__QBDataExchange), sinks)),
      component(WorldRaisingTo(sinks)) {}

ExchangeObject::~ExchangeObject() {
  events->Disconnect();
}

STDMETHODIMP ExchangeObject::IsSDKVersionSupported(BSTR sVersion, VARIANT* result) noexcept {
  return Give(result, [&] { return component.IsSDKVersionSupported(Utf8(TextOf(sVersion))); });
}

STDMETHODIMP ExchangeObject::get_QBCompany(BSTR* result) noexcept {
  return Give(result, [&] { return component.QBCompany(); });
}
STDMETHODIMP ExchangeObject::put_QBCompany(BSTR value) noexcept {
  return Do([&] { component.QBCompany(Utf8(TextOf(value))); });
}

STDMETHODIMP ExchangeObject::QbSerialize(VARIANT SerialData,
                                         ::QBKRN_DeserializeOptions* /*DeserializeOptions*/,
                                         VARIANT* result) noexcept {
  return Give(result, [&] { return component.QbSerialize(RequestOf(SerialData)); });
}

STDMETHODIMP ExchangeObject::KRNOpenPlan(BSTR PlanFile, VARIANT_BOOL* result) noexcept {
  return Give(result, [&] { return component.KRNOpenPlan(Utf8(TextOf(PlanFile))); });
}

STDMETHODIMP ExchangeObject::KRNDeserialize(VARIANT SerialData,
                                            ::QBKRN_DeserializeOptions* /*DeserializeOptions*/,
                                            VARIANT* result) noexcept {
  return Give(result, [&] { return component.KRNDeserialize(AnswerOf(SerialData)); });
}

STDMETHODIMP ExchangeObject::KRNSerialize(::QBKRN_SerializeOptions* /*SerializeOptions*/,
                                          VARIANT* result) noexcept {
  return Give(result, [&] { return component.KRNSerialize(); });
}

STDMETHODIMP ExchangeObject::MonthsOfActivity(IDispatch** colMonthSubtotals, short* result) noexcept {
  if (result != nullptr) *result = 0;
  if (colMonthSubtotals == nullptr) return E_POINTER;
  return Give(result, [&]() -> std::int16_t {
    const ComPointer<IDispatch> collection(*colMonthSubtotals);
    if (!collection) return 0;
    try {
      return component.MonthsOfActivity(RecordsOf(*collection));
    } catch (const Error&) {
      // A collection that cannot be gone through has no months.
      return 0;
    }
  });
}

STDMETHODIMP ExchangeObject::ShowDialog(::QBKRN_Dialogs DialogOption, VARIANT* result) noexcept {
  return Give(result, [&] { return component.ShowDialog(static_cast<krnqb::QBKRN_Dialogs>(DialogOption)); });
}

STDMETHODIMP ExchangeObject::Go(VARIANT_BOOL* result) noexcept {
  return Give(result, [&] { return component.Go(); });
}

STDMETHODIMP ExchangeObject::SubmitCustomRequest(BSTR QBRequestXML, VARIANT* result) noexcept {
  return Give(result, [&] { return component.SubmitCustomRequest(Utf8(TextOf(QBRequestXML))); });
}

STDMETHODIMP ExchangeObject::get_QBExpenseAccounts(IDispatch** result) noexcept {
  return Give(result, [&] { return OutsideObject(component.QBExpenseAccounts()); });
}
STDMETHODIMP ExchangeObject::get_QBIncomeAccounts(IDispatch** result) noexcept {
  return Give(result, [&] { return OutsideObject(component.QBIncomeAccounts()); });
}
STDMETHODIMP ExchangeObject::get_QBCompanies(IDispatch** result) noexcept {
  return Give(result, [&] { return OutsideObject(component.QBCompanies()); });
}

STDMETHODIMP ExchangeObject::Execute(BSTR* Action, VARIANT* /*Args*/, VARIANT* result) noexcept {
  if (result != nullptr) *result = VARIANT{};
  if (Action == nullptr) return E_POINTER;
  return Give(result, [&] {
    std::string action = Utf8(TextOf(*Action));
    return component.Execute(action);
  });
}

// A selection that the component has built is handed out as an element of the host system's, which then is
// the selection: what the host changes in it counts.
STDMETHODIMP ExchangeObject::get_SelectedExpenses(IDispatch** result) noexcept {
  return Give(result, [&] {
    const XmlElement selection = component.SelectedExpenses();
    ComPointer<IDispatch> element = OutsideObject(selection);
    if (element && selection.Outside() == nullptr) component.SelectedExpenses(SelectionOf(element.get()));
    return element;
  });
}
STDMETHODIMP ExchangeObject::putref_SelectedExpenses(IDispatch* value) noexcept {
  return Do([&] { component.SelectedExpenses(SelectionOf(value)); });
}

STDMETHODIMP ExchangeObject::GetTablesAffected(IDispatch** result) noexcept {
  return Give(result, [&] { return OutsideObject(component.GetTablesAffected()); });
}

STDMETHODIMP ExchangeObject::EnumConnectionPoints(IEnumConnectionPoints** result) noexcept {
  return Give(result, [&] { return EnumeratePoint(ComPointer<IConnectionPoint>(events.get())); });
}

STDMETHODIMP ExchangeObject::FindConnectionPoint(REFIID eventsId, IConnectionPoint** result) noexcept {
  if (result == nullptr) return E_POINTER;
  *result = nullptr;
  if (eventsId != __uuidof(__QBDataExchange)) return CONNECT_E_NOCONNECTION;
  *result = ComPointer<IConnectionPoint>(events.get()).Detach();
  return S_OK;
}

}  // namespace krnqb::com
