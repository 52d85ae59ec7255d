// The ways in which a host's plan may implement its members.
#include <gtest/gtest.h>

#include "host/component.h"
#include "test_processor/texts.h"

namespace krnqb::testing {
namespace {

// A component with the responses needed to read accounts.
struct Accounts {
  LateBound exchange = NewLateBoundExchange();
  std::shared_ptr<PlanState> plan = std::make_shared<PlanState>("recordings\\ald.kpf");

  void Set(const Held<IDispatch>& object) const {
    ASSERT_EQ(S_OK, exchange.Set(L"KRNPlanData", Value(object.Get())).result);
  }
  std::string Read(const std::string& answer) const {
    return Utf8(exchange.Call(L"KRNDeserialize", {Value(Utf16(answer))}).value.AsText());
  }
};

TEST(Plans, ReceiveOpenPlan) {
  const Accounts accounts;
  accounts.Set(NewHostPlan(accounts.plan));
  const Outcome opened = accounts.exchange.Call(L"KRNOpenPlan", {L"C:\\Plans\\caf\u00e9.kpf"});
  EXPECT_EQ(S_OK, opened.result);
  EXPECT_EQ(VT_BOOL, opened.value.Type());
  EXPECT_EQ(-1, opened.value.AsLong());
  EXPECT_EQ(L"C:\\Plans\\caf\u00e9.kpf", accounts.plan->openedPlan);
  EXPECT_EQ(0, accounts.exchange.Call(L"KRNOpenPlan", {L""}).value.AsLong());
}

TEST(Plans, ReceiveATypedTextReference) {
  const Accounts accounts;
  accounts.Set(NewTypedPlan(accounts.plan));
  EXPECT_EQ(-1, accounts.exchange.Call(L"KRNOpenPlan", {L"C:\\Plans\\typed.kpf"}).value.AsLong());
  EXPECT_EQ(L"C:\\Plans\\typed.kpf", accounts.plan->openedPlan);
}

TEST(Plans, ReturnTablesFromAnyKindOfMember) {
  for (const MemberKind kind : {MemberKind::Methods, MemberKind::Properties, MemberKind::Collection}) {
    SCOPED_TRACE(static_cast<int>(kind));
    const Accounts accounts;
    accounts.Set(NewHostPlan(accounts.plan, kind));
    const std::string tables = accounts.Read(AccountsAnswer(4, {"Brand New Expense"}));
    EXPECT_NE(std::string::npos, tables.find("<tableitem id=\"20000000000000000000000000000600\">"));
    EXPECT_NE(std::string::npos, tables.find("Brand New Expense"));
  }
}

TEST(Plans, ReturnTablesFromTypedMembers) {
  const Accounts accounts;
  accounts.Set(NewTypedPlan(accounts.plan));
  EXPECT_NE(std::string::npos,
            accounts.Read(AccountsAnswer(4, {"Brand New Expense"})).find("Brand New Expense"));
}

TEST(Plans, ReceiveTextsFirstAsVariantReferences) {
  const Replaying recording(L"1.1-ald-none");
  const RecordedImport import{"1.1", "ald", "none"};
  const auto plan = std::make_shared<PlanState>("recordings\\ald.kpf");
  const Exchange exchange = NewExchange();
  Configure(exchange, import, NewHostPlan(plan).Get());
  VARIANT_BOOL imported = VARIANT_FALSE;
  EXPECT_EQ(S_OK, exchange->Go(&imported));
  ASSERT_FALSE(plan->textTypes.empty());
  for (const VARTYPE type : plan->textTypes) EXPECT_EQ(VT_BYREF | VT_VARIANT, type);
  // What the host leaves in its argument does not affect the next load.
  EXPECT_EQ(import.Cells(), plan->tables.Cells());
}

TEST(Plans, ReceiveTheNextFormOfTextIfTheyRefuseOne) {
  const RecordedImport import{"1.1", "ald", "none"};
  for (const VARTYPE taken : {VARTYPE(VT_BYREF | VT_BSTR), VARTYPE(VT_BSTR)}) {
    SCOPED_TRACE(taken);
    const Replaying recording(L"1.1-ald-none");
    const auto plan = std::make_shared<PlanState>("recordings\\ald.kpf");
    std::vector<VARTYPE> offered;
    plan->before = [&](const std::string& member, const HostCall& call) -> HRESULT {
      if (member != "Deserialize") return S_OK;
      offered.push_back(call.arguments.at(0)->vt);
      return call.arguments.at(0)->vt == taken ? S_OK : DISP_E_TYPEMISMATCH;
    };
    const Exchange exchange = NewExchange();
    Configure(exchange, import, NewHostPlan(plan).Get());
    VARIANT_BOOL imported = VARIANT_FALSE;
    EXPECT_EQ(S_OK, exchange->Go(&imported));
    EXPECT_EQ(import.Cells(), plan->tables.Cells());
    ASSERT_GE(offered.size(), 2U);
    EXPECT_EQ(VT_BYREF | VT_VARIANT, offered[0]);
    EXPECT_EQ(VT_BYREF | VT_BSTR, offered[1]);
  }
}

TEST(Plans, AreATypeMismatchIfTheyRefuseEveryFormOfText) {
  const Replaying recording(L"1.1-ald-none");
  const auto plan = std::make_shared<PlanState>("recordings\\ald.kpf");
  plan->before = [&](const std::string& member, const HostCall&) -> HRESULT {
    return member == "Deserialize" ? DISP_E_TYPEMISMATCH : S_OK;
  };
  const Exchange exchange = NewExchange();
  Configure(exchange, {"1.1", "ald", "none"}, NewHostPlan(plan).Get());
  VARIANT_BOOL imported = VARIANT_FALSE;
  EXPECT_EQ(S_OK, exchange->Go(&imported));
  long number = 0;
  exchange->get_ErrorNumber(&number);
  EXPECT_EQ(13, number);
}

TEST(Plans, FailTheImportIfTheirDataIsNoObject) {
  struct Case {
    const char* what;
    NamedObject::Function give;
    long number;
  };
  Held<IMalloc> memory;
  ASSERT_EQ(S_OK, CoGetMalloc(1, memory.Receive()));
  const std::vector<Case> cases{
      {"Nothing", [](const HostCall& call) { return GiveObject(call, nullptr); }, 91},
      {"a text", [](const HostCall& call) { return GiveText(call, L"data"); }, 424},
      {"an object without automation",
       [&](const HostCall& call) {
         call.result->vt = VT_UNKNOWN;
         call.result->punkVal = memory.Get();
         memory->AddRef();
         return S_OK;
       },
       438}};
  const Replaying recording(L"1.1-ald-none");
  for (const Case& test : cases) {
    SCOPED_TRACE(test.what);
    const auto plan = NamedObject::Make();
    plan->Add(L"Data", DISPATCH_METHOD | DISPATCH_PROPERTYGET, test.give);
    const Exchange exchange = NewExchange();
    Configure(exchange, {"1.1", "ald", "none"}, plan.Get());
    VARIANT_BOOL imported = VARIANT_FALSE;
    EXPECT_EQ(S_OK, exchange->Go(&imported));
    long number = 0;
    exchange->get_ErrorNumber(&number);
    EXPECT_EQ(test.number, number);
  }
}

TEST(Plans, MayLackATable) {
  const Accounts accounts;
  auto bri = std::make_shared<PlanState>("recordings\\bri.kpf");
  accounts.Set(NewHostPlan(bri));
  // The plan of another product has no expense table.
  EXPECT_EQ("", accounts.Read(AccountsAnswer(4, {"Brand New Expense"})));
  EXPECT_NE("", accounts.Read(AccountsAnswer(1, {"Brand New Income"})));
}

}  // namespace
}  // namespace krnqb::testing
