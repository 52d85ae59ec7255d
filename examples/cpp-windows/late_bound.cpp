// Imports the accounts of a QuickBooks company into a plan file, calling the component by name. Nothing is
// needed to build this but Windows' own headers:
//
//     late_bound nursery.kpf
//
// Exit code 0: imported and saved. Exit code 1: failed, the plan file is unchanged.
#include <cstdio>

#include "errors.h"
#include "events.h"
#include "named_object.h"
#include "plan.h"

namespace {

NamedObject NewExchange() {
  IDispatchPtr exchange;
  Check(exchange.CreateInstance(L"KRN6_QB2002.QBDataExchange"));
  return NamedObject(exchange);
}

/// Connects a plan to the component, and disconnects it however the import ends: the component and the plan
/// hold references to each other.
class PlanConnection {
 public:
  PlanConnection(const NamedObject& exchange, IDispatch* plan) : exchange_(exchange) {
    exchange_.Set(L"KRNPlanData", plan);
  }
  ~PlanConnection() {
    try {
      exchange_.Set(L"KRNPlanData", nullptr);
    } catch (const _com_error&) {
      // The program ends anyway.
    }
  }
  PlanConnection(const PlanConnection&) = delete;
  PlanConnection& operator=(const PlanConnection&) = delete;

 private:
  NamedObject exchange_;
};

void SetOptions(const NamedObject& exchange) {
  exchange.Let(L"KRNProduct", 1L);  // QBKRN_ALD
  exchange.Let(L"KRNStartingYear", 2003L);
  exchange.Let(L"KRNStartingMonth", 1L);
  exchange.Let(L"BalancesImport", 0L);  // BalImport_None: accounts without amounts
  exchange.Let(L"IncludeExpenseAccounts", true);
  exchange.Let(L"IncludeIncomeAccounts", true);
}

// The component says itself which interface its events have.
IID EventsOf(const NamedObject& exchange) {
  IID eventsId = IID_NULL;
  const IProvideClassInfo2Ptr information(exchange.Object());
  Check(information->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &eventsId));
  return eventsId;
}

// Go returns True even if the import failed: the error is in the pair ErrorNumber and ErrorDescription.
bool Import(const NamedObject& exchange) {
  const bool done = exchange.Call(L"Go");
  const long number = exchange.Get(L"ErrorNumber");
  if (done && number == 0) return true;
  const _bstr_t description(exchange.Get(L"ErrorDescription"));
  std::printf("Not imported: %s (error %ld)\n", Utf8(description).c_str(), number);
  return false;
}

int ImportInto(const wchar_t* file) {
  const NamedObject exchange = NewExchange();
  Plan plan;
  const PlanConnection connection(exchange, plan.Object());
  if (!static_cast<bool>(exchange.Call(L"KRNOpenPlan", {file}))) {
    std::printf("Not imported: there is no plan %s\n", Utf8(file).c_str());
    return 1;
  }
  SetOptions(exchange);
  const ProgressPrinting progress(exchange.Object(), EventsOf(exchange));
  if (!Import(exchange)) return 1;
  plan.Save();
  std::printf("The accounts are in %s\n", Utf8(file).c_str());
  return 0;
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
  if (count != 2) {
    std::puts("usage: late_bound PLAN");
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
