// The tables of the guide for hosts with what members raise and return: each row is provoked, and everything
// provoked has a row.
#include <gtest/gtest.h>
#include <olectl.h>

#include <cstdio>
#include <set>

#include "document_table.h"
#include "host/client_sink.h"
#include "host/component.h"
#include "host/library.h"
#include "host/plan.h"
#include "test_processor/texts.h"

namespace krnqb::testing {
namespace {

const HRESULT refusal = static_cast<HRESULT>(0x80040408);

struct Provoked {
  const char* what;
  std::function<HRESULT()> provoke;
};

/// The result of a late-bound call: that of the error if the call raised one.
HRESULT ResultOf(const Outcome& outcome) {
  return outcome.result == DISP_E_EXCEPTION ? outcome.exception.scode : outcome.result;
}

HRESULT CallOn(const wchar_t* member, std::vector<Value> arguments) {
  return ResultOf(NewLateBoundExchange().Call(member, std::move(arguments)));
}

LateBound NewCollection() {
  const LateBound exchange = NewLateBoundExchange();
  return LateBound(exchange.Call(L"GetTablesAffected").value.AsObject());
}

Held<IConnectionPoint> PointOf(const Exchange& exchange) {
  Held<IConnectionPoint> point;
  exchange.As<IConnectionPointContainer>()->FindConnectionPoint(__uuidof(__QBDataExchange), point.Receive());
  return point;
}

HRESULT OpenInPlan(IDispatch* plan) {
  const LateBound exchange = NewLateBoundExchange();
  exchange.Set(L"KRNPlanData", Value(plan));
  return ResultOf(exchange.Call(L"KRNOpenPlan", {L"plan"}));
}

HRESULT OpenInPlanThatReturns(HRESULT result) {
  const auto state = std::make_shared<PlanState>("recordings\\ald.kpf");
  state->before = [&](const std::string&, const HostCall&) { return result; };
  return OpenInPlan(NewHostPlan(state).Get());
}

const std::vector<Provoked> members{
    {"a key that the collection does not have",
     [] { return ResultOf(NewCollection().Read(L"Item", {L"no key"})); }},
    {"a year outside 16 bits",
     [] {
       const Exchange exchange = NewExchange();
       exchange->put_KRNStartingYear(-32768);
       short year = 0;
       return exchange->get_StartingYear(&year);
     }},
    {"a plan without memory", [] { return OpenInPlanThatReturns(E_OUTOFMEMORY); }},
    {"a position outside a collection", [] { return ResultOf(NewCollection().Read(L"Item", {Value(9)})); }},
    {"a slot outside 1 to 14",
     [] {
       Held<_cSubtotals> subtotals;
       CoCreateInstance(CLSID_cSubtotals, nullptr, CLSCTX_INPROC_SERVER, __uuidof(_cSubtotals),
                        subtotals.ReceiveAny());
       double amount = 0;
       return subtotals->get_SubTotal(15, &amount);
     }},
    {"a plan that is not an object", [] { return NewExchange()->putref_KRNPlanData(Value(L"text").Raw()); }},
    {"no plan", [] { return CallOn(L"KRNOpenPlan", {L"plan"}); }},
    {"no text",
     [] {
       const Answering answers(1, UsualAnswers());
       return CallOn(L"QbSerialize", {Value(static_cast<IDispatch*>(nullptr))});
     }},
    {"an object that is not a plan", [] { return OpenInPlan(NamedObject::Make().Get()); }},
    {"a key that the collection has",
     [] {
       const LateBound collection = NewCollection();
       collection.Call(L"Add", {L"one", L"key"});
       return ResultOf(collection.Call(L"Add", {L"two", L"key"}));
     }},
    {"a quote in a version",
     [] {
       const Answering answers(1, UsualAnswers());
       return CallOn(L"IsSDKVersionSupported", {L"1\"0"});
     }},
};

const std::vector<Provoked> calls{
    {"no place for the result", [] { return NewExchange()->get_KRNProduct(nullptr); }},
    {"no such interface",
     [] {
       Held<IUnknown> none;
       return NewExchange()->QueryInterface(IID_IPersist, none.ReceiveAny());
     }},
    {"an unknown kind of identifier",
     [] {
       GUID events{};
       return NewExchange().As<IProvideClassInfo2>()->GetGUID(77, &events);
     }},
    {"the component of a point is gone",
     [] {
       Exchange exchange = NewExchange();
       const auto point = PointOf(exchange);
       exchange.Reset();
       Held<IConnectionPointContainer> container;
       return point->GetConnectionPointContainer(container.Receive());
     }},
    {"an interface identifier with a call by name",
     [] {
       const LateBound exchange = NewLateBoundExchange();
       return exchange.Invoke(exchange.Member(L"Go"), DISPATCH_METHOD, {}, {}, IID_IDispatch).result;
     }},
    {"an assignment to a method",
     [] {
       const LateBound exchange = NewLateBoundExchange();
       return exchange.Invoke(exchange.Member(L"Go"), DISPATCH_PROPERTYPUT, {1}, {DISPID_PROPERTYPUT}).result;
     }},
    {"an unknown named argument",
     [] {
       const LateBound exchange = NewLateBoundExchange();
       return exchange.Invoke(exchange.Member(L"KRNDeserialize"), DISPATCH_METHOD, {L""}, {99}).result;
     }},
    {"a text for a number", [] { return CallOn(L"ShowDialog", {L"none"}); }},
    {"an unknown name",
     [] {
       auto* name = const_cast<wchar_t*>(L"Gone");
       DISPID member = 0;
       return NewExchange()->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &member);
     }},
    {"an error of a call by name",
     [] { return NewLateBoundExchange().Call(L"KRNOpenPlan", {L"plan"}).result; }},
    {"a number outside 16 bits",
     [] { return NewLateBoundExchange().Let(L"KRNStartingYear", Value(70000)).result; }},
    {"a second type information",
     [] {
       Held<ITypeInfo> information;
       return NewExchange()->GetTypeInfo(1, LOCALE_USER_DEFAULT, information.Receive());
     }},
    {"too many arguments", [] { return CallOn(L"Go", {1}); }},
    {"a missing argument", [] { return CallOn(L"KRNOpenPlan", {Value::Missing()}); }},
    {"a class within another",
     [] {
       Held<IUnknown> object;
       const auto outer = NamedObject::Make();
       return CoCreateInstance(CLSID_QBDataExchange, outer.Get(), CLSCTX_INPROC_SERVER, IID_IUnknown,
                               object.ReceiveAny());
     }},
    {"a class that the library does not have",
     [] {
       void* object = nullptr;
       return Library().ClassObject(CLSID_QBKRNEnums, IID_IClassFactory, &object);
     }},
    {"a class that is not registered",
     [] {
       Held<IUnknown> object;
       return CoCreateInstance(CLSID_QBKRNEnums, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown,
                               object.ReceiveAny());
     }},
    {"a connection that was ended", [] { return PointOf(NewExchange())->Unadvise(4711); }},
    {"an object that receives no events",
     [] {
       DWORD cookie = 0;
       const Exchange exchange = NewExchange();
       return PointOf(exchange)->Advise(NamedObject::Make().Get(), &cookie);
     }},
    {"a sink for a component that is gone",
     [] {
       Exchange exchange = NewExchange();
       const auto point = PointOf(exchange);
       exchange.Reset();
       DWORD cookie = 0;
       return point->Advise(ClientSink::Make().Get(), &cookie);
     }},
};

// The error pair after an import into a plan.
std::pair<std::string, std::string> PairAfterImport(IDispatch* plan) {
  const Replaying recording(L"1.1-ald-none");
  const Exchange exchange = NewExchange();
  Configure(exchange, {"1.1", "ald", "none"}, plan);
  VARIANT_BOOL imported = VARIANT_FALSE;
  exchange->Go(&imported);
  long number = 0;
  Text description;
  exchange->get_ErrorNumber(&number);
  exchange->get_ErrorDescription(description.Receive());
  return {std::to_string(number), Utf8(description.View())};
}

std::string Hexadecimal(HRESULT result) {
  char text[11];
  std::snprintf(text, sizeof text, "0x%08lX", static_cast<unsigned long>(result));
  return text;
}

// The rows' first cells; a row without a number is about the errors of other objects.
std::set<std::string> Documented(const std::string& heading) {
  std::set<std::string> results;
  for (const auto& row : tests::RowsBelow("host-guide.md", heading)) {
    EXPECT_EQ(4U, row.size()) << row.front();
    if (row.front().starts_with("0x")) {
      EXPECT_TRUE(results.insert(row.front()).second) << row.front() << " is there twice";
    }
    // A run-time error's row begins with its number.
    if (row.front().starts_with("0x800A")) {
      EXPECT_EQ(std::stoi(row.front().substr(6), nullptr, 16), std::stoi(row.at(1))) << row.front();
    }
  }
  return results;
}

void ExpectRowForEach(const std::vector<Provoked>& all, const std::string& heading) {
  std::set<std::string> shown;
  for (const Provoked& provoked : all) {
    const std::string result = Hexadecimal(provoked.provoke());
    EXPECT_TRUE(result.starts_with("0x8")) << provoked.what << " returned " << result;
    shown.insert(result);
  }
  EXPECT_EQ(shown, Documented(heading));
}

TEST(ErrorTable, HasEveryErrorThatAMemberRaises) {
  ExpectRowForEach(members, "### Errors that a member raises");
}

TEST(ErrorTable, HasEveryResultOfAWrongCall) {
  ExpectRowForEach(calls, "### Results of a wrong call");
}

TEST(ErrorTable, HasTheErrorsThatAnAutomationPlanCauses) {
  std::set<std::pair<std::string, std::string>> shown;
  const auto refusing = std::make_shared<PlanState>("recordings\\ald.kpf");
  refusing->before = [](const std::string& member, const HostCall&) -> HRESULT {
    return member == "Deserialize" ? DISP_E_TYPEMISMATCH : S_OK;
  };
  shown.insert(PairAfterImport(NewHostPlan(refusing).Get()));
  const auto withoutData = NamedObject::Make();
  withoutData->Add(L"Data", DISPATCH_METHOD | DISPATCH_PROPERTYGET,
                   [](const HostCall& call) { return GiveText(call, L"data"); });
  shown.insert(PairAfterImport(withoutData.Get()));

  std::set<std::pair<std::string, std::string>> documented;
  for (const auto& row :
       tests::RowsBelow("host-guide.md", "An automation plan on Windows can cause two more:"))
    documented.emplace(row.at(0), row.at(1));
  EXPECT_EQ(shown, documented);
}

TEST(ErrorTable, TheErrorsOfOtherObjectsKeepTheirNumbers) {
  EXPECT_EQ(refusal, OpenInPlanThatReturns(refusal));
  const Answering answers(1, UsualAnswers());
  const Variable call(L"KRNQB_REFUSED_CALL", L"company");
  const Variable number(L"KRNQB_REFUSAL_NUMBER", L"80040408");
  EXPECT_EQ(refusal, ResultOf(NewLateBoundExchange().Read(L"QBCompany")));
  const auto rows = tests::RowsBelow("host-guide.md", "### Errors that a member raises");
  ASSERT_FALSE(rows.empty());
  EXPECT_EQ("its own", rows.back().front());
}

}  // namespace
}  // namespace krnqb::testing
