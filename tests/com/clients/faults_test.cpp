// Failures outside the component: of the processor and of the plan. After each the object still works.
#include <gtest/gtest.h>

#include <optional>

#include "host/client_sink.h"
#include "host/component.h"
#include "test_processor/texts.h"

namespace krnqb::testing {
namespace {

const RecordedImport import{"1.1", "ald", "all"};

struct Ending {
  bool imported = false;
  long number = 0;
  std::string description;
  std::string lastEvent;
};

// An import with an object supplied by the caller.
Ending Go(const Exchange& exchange) {
  const auto sink = ClientSink::Make();
  const Connection connection(exchange.Get(), sink.Get());
  VARIANT_BOOL imported = VARIANT_FALSE;
  EXPECT_EQ(S_OK, exchange->Go(&imported));
  Ending ending;
  ending.imported = imported == VARIANT_TRUE;
  Text description;
  exchange->get_ErrorNumber(&ending.number);
  exchange->get_ErrorDescription(description.Receive());
  ending.description = Utf8(description.View());
  if (!sink->events.empty()) ending.lastEvent = sink->events.back();
  return ending;
}

// Imports again with the same object, without any failure.
void ExpectToWork(const Exchange& exchange) {
  const auto plan = std::make_shared<PlanState>("recordings\\ald.kpf");
  exchange->put_ErrorNumber(0);
  exchange->put_ErrorDescription(nullptr);
  Configure(exchange, import, NewHostPlan(plan).Get());
  const Ending ending = Go(exchange);
  EXPECT_TRUE(ending.imported);
  EXPECT_EQ(0, ending.number) << ending.description;
  EXPECT_EQ("AfterImport", ending.lastEvent);
  EXPECT_EQ(import.Cells(), plan->tables.Cells());
}

struct Refusal {
  const wchar_t* call;
  HRESULT number;
  const wchar_t* text;  ///< null: the processor gives no description
  bool imported;
  bool pathSet;
  long expectedNumber;
  std::string expectedDescription;
};

const std::string notInstalled =
    "You must have a U.S. version of one of the following Quickbooks 2002 or 2003 products to perform this "
    "import:  Quickbooks Premier, Quickbooks Premier Accountant Edition, or QuickBooks Pro.";
const std::string notOpen = "Your QuickBooks company file must be open to perform this import.";
const HRESULT otherRefusal = static_cast<HRESULT>(0x80040408);
const HRESULT companyNotOpen = static_cast<HRESULT>(0x80040416);

TEST(Faults, ARefusalIsReportedInTheErrorPair) {
  const std::vector<Refusal> refusals{
      {L"creation", REGDB_E_CLASSNOTREG, nullptr, false, false, 429, notInstalled},
      {L"creation", CLASS_E_CLASSNOTAVAILABLE, nullptr, false, false, 429, notInstalled},
      {L"creation", E_OUTOFMEMORY, nullptr, false, false, 7, "Error (7): Out of memory"},
      {L"creation", E_ACCESSDENIED, nullptr, false, false, 70, "Error (70): Permission denied"},
      {L"creation", CO_E_SERVER_EXEC_FAILURE, nullptr, false, false, CO_E_SERVER_EXEC_FAILURE,
       "Error (-2146959355): Automation error"},
      {L"connection", E_NOTIMPL, nullptr, false, false, 445,
       "Error (445): Object doesn't support this action"},
      {L"connection", HRESULT_FROM_WIN32(RPC_S_SERVER_UNAVAILABLE), nullptr, false, false, 462,
       "Error (462): The remote server machine does not exist or is unavailable"},
      {L"session", E_ACCESSDENIED, L"not today", false, false, E_ACCESSDENIED,
       "Error (-2147024891): not today"},
      {L"creation", otherRefusal, nullptr, false, false, otherRefusal,
       "Error (-2147220472): Automation error"},
      {L"connection", otherRefusal, L"not today", false, false, otherRefusal,
       "Error (-2147220472): not today"},
      {L"connection", otherRefusal, nullptr, false, false, otherRefusal,
       "Error (-2147220472): Automation error"},
      {L"session", companyNotOpen, L"company closed", false, false, companyNotOpen, notOpen},
      {L"session", otherRefusal, L"caf\u00e9", false, false, otherRefusal, "Error (-2147220472): caf\u00e9"},
      {L"major", otherRefusal, L"no version", true, true, otherRefusal, "no version"},
      {L"minor", otherRefusal, L"no version", true, true, otherRefusal, "no version"},
      {L"company", otherRefusal, L"no company", true, true, otherRefusal, "no company"},
      {L"request:2", otherRefusal, L"no answer", true, true, otherRefusal, "no answer"},
      {L"request:5", otherRefusal, L"no answer", true, true, otherRefusal, "no answer"},
      {L"request:9", otherRefusal, L"no answer", true, true, otherRefusal, "no answer"}};
  const Replaying recording(Utf16(import.Name()));
  for (const Refusal& refusal : refusals) {
    SCOPED_TRACE(Utf8(std::wstring_view(refusal.call)));
    const Exchange exchange = NewExchange();
    const auto plan = std::make_shared<PlanState>("recordings\\ald.kpf");
    Configure(exchange, import, NewHostPlan(plan).Get());
    if (!refusal.pathSet) exchange->put_QBCompany(nullptr);
    {
      const Variable call(L"KRNQB_REFUSED_CALL", refusal.call);
      wchar_t number[9];
      swprintf(number, 9, L"%08X", static_cast<unsigned>(refusal.number));
      const Variable refusalNumber(L"KRNQB_REFUSAL_NUMBER", number);
      std::optional<Variable> text;
      if (refusal.text != nullptr) text.emplace(L"KRNQB_REFUSAL_TEXT", refusal.text);
      const Ending ending = Go(exchange);
      EXPECT_EQ(refusal.imported, ending.imported);
      EXPECT_EQ(refusal.expectedNumber, ending.number);
      EXPECT_EQ(Utf16(refusal.expectedDescription), Utf16(ending.description));
      EXPECT_NE("AfterImport", ending.lastEvent);
    }
    exchange->put_QBCompany(nullptr);
    ExpectToWork(exchange);
  }
}

TEST(Faults, ADescriptionIsReadOnlyIfTheInterfaceSupportsErrorInformation) {
  const Variable call(L"KRNQB_REFUSED_CALL", L"connection");
  const Variable text(L"KRNQB_REFUSAL_TEXT", L"of another call perhaps");
  const Variable unsupported(L"KRNQB_ERRORS_UNSUPPORTED", L"yes");
  const Answering answers(1, UsualAnswers());
  const LateBound exchange = NewLateBoundExchange();
  EXPECT_EQ(L"", exchange.Read(L"QBCompany").value.AsText());
  EXPECT_EQ(L"Error (-2147220480): Automation error", exchange.Read(L"ErrorDescription").value.AsText());
}

TEST(Faults, ARefusedRequestReachesTheCaller) {
  const Answering answers(1, UsualAnswers());
  const LateBound exchange = NewLateBoundExchange();
  const Variable call(L"KRNQB_REFUSED_CALL", L"request:2");
  const Variable text(L"KRNQB_REFUSAL_TEXT", L"no answer");
  const Outcome supported = exchange.Call(L"IsSDKVersionSupported");
  EXPECT_EQ(DISP_E_EXCEPTION, supported.result);
  EXPECT_EQ(static_cast<HRESULT>(0x80040400), supported.exception.scode);
  EXPECT_EQ(L"no answer", supported.description);
  EXPECT_EQ(0, exchange.Read(L"ErrorNumber").value.AsLong());
}

TEST(Faults, APlanThatRaisesEndsTheImport) {
  const Replaying recording(Utf16(import.Name()));
  // Failures while reading tables for accounts are tolerated; failures of loading, or of reading past
  // performance, end the import.
  for (const char* member : {"Data", "tables", "Serialize", "Deserialize"}) {
    SCOPED_TRACE(member);
    const Exchange exchange = NewExchange();
    const auto plan = std::make_shared<PlanState>("recordings\\ald.kpf");
    const std::string before = plan->tables.Cells();
    plan->before = [&](const std::string& called, const HostCall& call) {
      return called == member ? Raise(call, RunTimeError(1001), 0, L"the plan's own") : S_OK;
    };
    Configure(exchange, import, NewHostPlan(plan).Get());
    const Ending ending = Go(exchange);
    EXPECT_TRUE(ending.imported);
    EXPECT_EQ(1001, ending.number);
    EXPECT_EQ("the plan's own", ending.description);
    EXPECT_NE("AfterImport", ending.lastEvent);
    EXPECT_EQ(before, plan->tables.Cells());
    ExpectToWork(exchange);
  }
}

TEST(Faults, AnIntermittentlyFailingPlanLeavesTheObjectWorking) {
  const Replaying recording(Utf16(import.Name()));
  for (int failing = 1; failing <= 12; ++failing) {
    SCOPED_TRACE(failing);
    const Exchange exchange = NewExchange();
    const auto plan = std::make_shared<PlanState>("recordings\\ald.kpf");
    int calls = 0;
    plan->before = [&](const std::string&, const HostCall&) { return ++calls == failing ? E_FAIL : S_OK; };
    Configure(exchange, import, NewHostPlan(plan).Get());
    EXPECT_TRUE(Go(exchange).imported);
    EXPECT_GE(calls, failing);
    if (failing % 4 == 0) ExpectToWork(exchange);
  }
}

TEST(Faults, AMissingPlanFailsTheImport) {
  const Replaying recording(Utf16(import.Name()));
  const Exchange exchange = NewExchange();
  Configure(exchange, import, nullptr);
  const Ending ending = Go(exchange);
  EXPECT_TRUE(ending.imported);
  EXPECT_EQ(91, ending.number);
  EXPECT_EQ("Object variable or With block variable not set", ending.description);
  ExpectToWork(exchange);
}

TEST(Faults, ARefusedSessionMakesQbSerializeEmpty) {
  const Variable refused(L"KRNQB_REFUSED_CALL", L"session");
  const Answering answers(1, UsualAnswers());
  const LateBound exchange = NewLateBoundExchange();
  const Outcome answer = exchange.Call(L"QbSerialize", {L"<request/>"});
  EXPECT_EQ(S_OK, answer.result);
  EXPECT_TRUE(answer.value.IsEmpty());
  EXPECT_EQ(static_cast<long>(0x80040400), exchange.Read(L"ErrorNumber").value.AsLong());
}

}  // namespace
}  // namespace krnqb::testing
