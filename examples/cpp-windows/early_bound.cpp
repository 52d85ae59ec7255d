// Imports the accounts of a QuickBooks company into a plan file, through the interfaces of the type library:
//
//     early_bound nursery.kpf
//
// Exit code 0: imported and saved. Exit code 1: failed, the plan file is unchanged.
#include <comdef.h>
#include <krn6_qb2002.h>

#include <cstdio>

#include "errors.h"
#include "events.h"
#include "plan.h"

_COM_SMARTPTR_TYPEDEF(_QBDataExchange, __uuidof(_QBDataExchange));

namespace {

/// Connects a plan to the component, and disconnects it however the import ends: the component and the plan
/// hold references to each other.
class PlanConnection {
 public:
  PlanConnection(_QBDataExchange* exchange, IDispatch* plan) : exchange_(exchange) {
    Check(exchange_->putref_KRNPlanData(_variant_t(plan)), exchange_);
  }
  ~PlanConnection() { exchange_->putref_KRNPlanData(_variant_t(static_cast<IDispatch*>(nullptr))); }
  PlanConnection(const PlanConnection&) = delete;
  PlanConnection& operator=(const PlanConnection&) = delete;

 private:
  _QBDataExchangePtr exchange_;
};

void SetOptions(_QBDataExchange* exchange) {
  Check(exchange->put_KRNProduct(QBKRN_ALD), exchange);
  Check(exchange->put_KRNStartingYear(2003), exchange);
  Check(exchange->put_KRNStartingMonth(1), exchange);
  Check(exchange->put_BalancesImport(BalImport_None), exchange);  // accounts without amounts
  Check(exchange->put_IncludeExpenseAccounts(VARIANT_TRUE), exchange);
  Check(exchange->put_IncludeIncomeAccounts(VARIANT_TRUE), exchange);
}

// Go succeeds even if the import failed: the error is in the pair ErrorNumber and ErrorDescription.
bool Import(_QBDataExchange* exchange) {
  VARIANT_BOOL done = VARIANT_FALSE;
  Check(exchange->Go(&done), exchange);
  long number = 0;
  Check(exchange->get_ErrorNumber(&number), exchange);
  if (done == VARIANT_TRUE && number == 0) return true;
  _bstr_t description;
  Check(exchange->get_ErrorDescription(description.GetAddress()), exchange);
  std::printf("Not imported: %s (error %ld)\n", Utf8(description).c_str(), number);
  return false;
}

int ImportInto(const wchar_t* file) {
  _QBDataExchangePtr exchange;
  Check(exchange.CreateInstance(__uuidof(QBDataExchange)));
  Plan plan;
  const PlanConnection connection(exchange, plan.Object());
  VARIANT_BOOL opened = VARIANT_FALSE;
  Check(exchange->KRNOpenPlan(_bstr_t(file), &opened), exchange);
  if (opened != VARIANT_TRUE) {
    std::printf("Not imported: there is no plan %s\n", Utf8(file).c_str());
    return 1;
  }
  SetOptions(exchange);
  const ProgressPrinting progress(exchange, __uuidof(__QBDataExchange));
  if (!Import(exchange)) return 1;
  plan.Save();
  std::printf("The accounts are in %s\n", Utf8(file).c_str());
  return 0;
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
  if (count != 2) {
    std::puts("usage: early_bound PLAN");
    return 2;
  }
  // The component lives in a single-threaded apartment.
  if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) return 1;
  int result = 1;
  try {
    result = ImportInto(arguments[1]);
  } catch (const _com_error& error) {
    std::printf("Not imported: %s\n", MessageOf(error).c_str());
  }
  CoUninitialize();
  return result;
}
