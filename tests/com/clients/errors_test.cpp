// How failures reach a caller: number and description, early- and late-bound.
#include <gtest/gtest.h>

#include "host/component.h"
#include "host/plan.h"

namespace krnqb::testing {
namespace {

std::wstring LastDescription() {
  Held<IErrorInfo> information;
  Text description;
  if (GetErrorInfo(0, information.Receive()) == S_OK) information->GetDescription(description.Receive());
  return std::wstring(description.View());
}

TEST(Errors, ReachEarlyBoundCallersWithNumberAndDescription) {
  const Exchange exchange = NewExchange();
  VARIANT_BOOL opened = VARIANT_TRUE;
  EXPECT_EQ(RunTimeError(91), exchange->KRNOpenPlan(Text(L"plan").Get(), &opened));
  EXPECT_EQ(L"Object variable or With block variable not set", LastDescription());
  exchange->put_KRNStartingYear(-32768);
  short year = 0;
  EXPECT_EQ(RunTimeError(6), exchange->get_StartingYear(&year));
  EXPECT_EQ(L"Overflow", LastDescription());
}

TEST(Errors, AreAnnouncedByTheInterface) {
  const Exchange exchange = NewExchange();
  const auto support = exchange.As<ISupportErrorInfo>();
  ASSERT_TRUE(support);
  EXPECT_EQ(S_OK, support->InterfaceSupportsErrorInfo(__uuidof(_QBDataExchange)));
  EXPECT_EQ(S_FALSE, support->InterfaceSupportsErrorInfo(IID_IConnectionPoint));
}

TEST(Errors, ReachLateBoundCallersInTheException) {
  const LateBound exchange = NewLateBoundExchange();
  const Outcome opened = exchange.Call(L"KRNOpenPlan", {L"plan"});
  EXPECT_EQ(DISP_E_EXCEPTION, opened.result);
  EXPECT_EQ(RunTimeError(91), opened.exception.scode);
  EXPECT_EQ(L"Object variable or With block variable not set", opened.description);
}

TEST(Errors, AreNotTakenFromAnEarlierCall) {
  const LateBound exchange = NewLateBoundExchange();
  exchange.Call(L"KRNOpenPlan", {L"plan"});
  const Outcome wrong = exchange.Call(L"ShowDialog", {L"none"});
  EXPECT_EQ(DISP_E_TYPEMISMATCH, wrong.result);
  EXPECT_EQ(L"", wrong.description);
  EXPECT_EQ(S_OK, exchange.Call(L"KRNSerialize").result);
}

// Returns the error that a caller gets when the plan's OpenPlan fails.
struct Failure {
  const char* what;
  std::function<HRESULT(const HostCall&)> fail;
  HRESULT scode;
  std::wstring description;
};

EXCEPINFO* deferredAsked = nullptr;
HRESULT STDAPICALLTYPE FillIn(EXCEPINFO* exception) {
  deferredAsked = exception;
  exception->scode = static_cast<SCODE>(0x80040123);
  exception->bstrDescription = SysAllocString(L"told late");
  return S_OK;
}

TEST(Errors, KeepThePlansNumbers) {
  const std::vector<Failure> failures{
      {"scode", [](const HostCall& call) { return Raise(call, static_cast<SCODE>(0x80040201), 0, L"own"); },
       static_cast<HRESULT>(0x80040201), L"own"},
      {"scode of a run-time error",
       [](const HostCall& call) { return Raise(call, RunTimeError(1001), 0, L"own number"); },
       RunTimeError(1001), L"own number"},
      {"wCode", [](const HostCall& call) { return Raise(call, 0, 1004, L"by code"); }, RunTimeError(1004),
       L"by code"},
      {"told late",
       [](const HostCall& call) {
         *call.exception = {};
         call.exception->pfnDeferredFillIn = FillIn;
         return DISP_E_EXCEPTION;
       },
       static_cast<HRESULT>(0x80040123), L"told late"},
      {"no description", [](const HostCall& call) { return Raise(call, RunTimeError(13), 0, nullptr); },
       RunTimeError(13), L"Type mismatch"},
      {"an unknown number", [](const HostCall& call) { return Raise(call, RunTimeError(2000), 0, nullptr); },
       RunTimeError(2000), L"Automation error"},
      {"DISP_E_TYPEMISMATCH", [](const HostCall&) { return DISP_E_TYPEMISMATCH; }, RunTimeError(13),
       L"Type mismatch"},
      {"DISP_E_OVERFLOW", [](const HostCall&) { return DISP_E_OVERFLOW; }, RunTimeError(6), L"Overflow"},
      {"DISP_E_DIVBYZERO", [](const HostCall&) { return DISP_E_DIVBYZERO; }, RunTimeError(11), L""},
      {"DISP_E_BADINDEX", [](const HostCall&) { return DISP_E_BADINDEX; }, RunTimeError(9),
       L"Subscript out of range"},
      {"DISP_E_MEMBERNOTFOUND", [](const HostCall&) { return DISP_E_MEMBERNOTFOUND; }, RunTimeError(438),
       L""},
      {"E_OUTOFMEMORY", [](const HostCall&) { return E_OUTOFMEMORY; }, RunTimeError(7), L"Out of memory"},
      {"any other", [](const HostCall&) { return static_cast<HRESULT>(0x80040321); },
       static_cast<HRESULT>(0x80040321), L"Automation error"},
      {"E_ACCESSDENIED", [](const HostCall&) { return E_ACCESSDENIED; }, RunTimeError(70),
       L"Permission denied"},
      {"E_NOTIMPL", [](const HostCall&) { return E_NOTIMPL; }, RunTimeError(445),
       L"Object doesn't support this action"},
      {"TYPE_E_DLLFUNCTIONNOTFOUND", [](const HostCall&) { return TYPE_E_DLLFUNCTIONNOTFOUND; },
       RunTimeError(453), L"Specified DLL function not found"},
      {"a server that is gone", [](const HostCall&) { return HRESULT_FROM_WIN32(RPC_S_SERVER_UNAVAILABLE); },
       RunTimeError(462), L"The remote server machine does not exist or is unavailable"},
      {"a run-time error of others",
       [](const HostCall& call) { return Raise(call, RunTimeError(70), 0, nullptr); }, RunTimeError(70),
       L"Permission denied"},
      {"scode with a run-time error of its own",
       [](const HostCall& call) { return Raise(call, E_ACCESSDENIED, 0, nullptr); }, RunTimeError(70),
       L"Permission denied"},
      {"the same with a description",
       [](const HostCall& call) { return Raise(call, E_ACCESSDENIED, 0, L"locked by another user"); },
       E_ACCESSDENIED, L"locked by another user"},
      {"a refusal of the system", [](const HostCall&) { return HRESULT_FROM_WIN32(ERROR_SHARING_VIOLATION); },
       HRESULT_FROM_WIN32(ERROR_SHARING_VIOLATION), L""}};
  for (const Failure& failure : failures) {
    SCOPED_TRACE(failure.what);
    const auto state = std::make_shared<PlanState>("recordings\\ald.kpf");
    state->before = [&](const std::string&, const HostCall& call) { return failure.fail(call); };
    const LateBound exchange = NewLateBoundExchange();
    exchange.Set(L"KRNPlanData", Value(NewHostPlan(state).Get()));
    const Outcome opened = exchange.Call(L"KRNOpenPlan", {L"plan"});
    EXPECT_EQ(DISP_E_EXCEPTION, opened.result);
    EXPECT_EQ(failure.scode, opened.exception.scode) << std::hex << opened.exception.scode;
    EXPECT_FALSE(opened.description.empty());
    EXPECT_FALSE(opened.description.ends_with(L"\n"));
    if (!failure.description.empty()) {
      EXPECT_EQ(failure.description, opened.description);
    }
  }
  EXPECT_NE(nullptr, deferredAsked);
}

TEST(Errors, ReportAnObjectThatIsNotAPlan) {
  const LateBound exchange = NewLateBoundExchange();
  exchange.Set(L"KRNPlanData", Value(NamedObject::Make().Get()));
  const Outcome opened = exchange.Call(L"KRNOpenPlan", {L"plan"});
  EXPECT_EQ(DISP_E_EXCEPTION, opened.result);
  EXPECT_EQ(RunTimeError(438), opened.exception.scode);
}

}  // namespace
}  // namespace krnqb::testing
