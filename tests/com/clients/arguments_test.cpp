// Named, missing and omitted arguments, wrong counts and wrong types in late-bound calls.
#include <gtest/gtest.h>

#include "host/component.h"

namespace krnqb::testing {
namespace {

TEST(Arguments, FindMembersCaseInsensitively) {
  const LateBound exchange = NewLateBoundExchange();
  const DISPID member = exchange.Member(L"IncludeExpenseAccounts");
  EXPECT_NE(DISPID_UNKNOWN, member);
  EXPECT_EQ(member, exchange.Member(L"INCLUDEexpenseaccounts"));
  EXPECT_EQ(DISPID_UNKNOWN, exchange.Member(L"IncludeEverything"));
}

TEST(Arguments, DefaultWhenOmitted) {
  const Answering answers(1, UsualAnswers());
  const LateBound exchange = NewLateBoundExchange();
  EXPECT_EQ(-1, exchange.Call(L"IsSDKVersionSupported").value.AsLong());
  EXPECT_EQ(-1, exchange.Call(L"IsSDKVersionSupported", {Value::Missing()}).value.AsLong());
  EXPECT_EQ(0, exchange.Call(L"IsSDKVersionSupported", {L"3.0"}).value.AsLong());
  EXPECT_EQ(S_OK, exchange.Call(L"KRNSerialize").result);
  EXPECT_EQ(S_OK, exchange.Call(L"KRNSerialize", {Value::Missing()}).result);
}

TEST(Arguments, MayBeNamedInAnyOrder) {
  const Answering answers(1, UsualAnswers());
  const LateBound exchange = NewLateBoundExchange();
  const Outcome supported = exchange.CallNamed(L"IsSDKVersionSupported", {}, {{L"sVersion", L"1.0"}});
  EXPECT_EQ(S_OK, supported.result);
  EXPECT_EQ(-1, supported.value.AsLong());
  for (const auto& named :
       {std::vector<NamedValue>{{L"DeserializeOptions", 0}, {L"SerialData", L"no document"}},
        std::vector<NamedValue>{{L"SerialData", L"no document"}, {L"DeserializeOptions", 0}},
        std::vector<NamedValue>{{L"serialdata", L"no document"}}}) {
    const Outcome read = exchange.CallNamed(L"KRNDeserialize", {}, named);
    EXPECT_EQ(S_OK, read.result);
    EXPECT_EQ(VT_BSTR, read.value.Type());
    EXPECT_EQ(L"", read.value.AsText());
  }
  const Outcome mixed = exchange.CallNamed(L"KRNDeserialize", {L"no document"}, {{L"DeserializeOptions", 0}});
  EXPECT_EQ(S_OK, mixed.result);
}

TEST(Arguments, AreRefusedIfTheirNameIsUnknown) {
  const LateBound exchange = NewLateBoundExchange();
  EXPECT_EQ(DISP_E_UNKNOWNNAME, exchange.CallNamed(L"KRNDeserialize", {}, {{L"SerialDatum", L""}}).result);
  const Outcome unknown = exchange.Invoke(exchange.Member(L"KRNDeserialize"), DISPATCH_METHOD, {L""}, {99});
  EXPECT_EQ(DISP_E_PARAMNOTFOUND, unknown.result);
  EXPECT_EQ(0U, unknown.wrongArgument);
}

TEST(Arguments, AreRefusedIfTheirCountIsWrong) {
  const LateBound exchange = NewLateBoundExchange();
  EXPECT_EQ(DISP_E_BADPARAMCOUNT, exchange.Call(L"Go", {1}).result);
  EXPECT_EQ(DISP_E_BADPARAMCOUNT, exchange.Call(L"KRNSerialize", {0, 0}).result);
  EXPECT_EQ(DISP_E_BADPARAMCOUNT, exchange.Call(L"IsSDKVersionSupported", {L"1.1", L"1.0"}).result);
  EXPECT_EQ(DISP_E_BADPARAMCOUNT, exchange.Read(L"KRNProduct", {1}).result);
  const Outcome put =
      exchange.Invoke(exchange.Member(L"KRNProduct"), DISPATCH_PROPERTYPUT, {1, 2}, {DISPID_PROPERTYPUT});
  EXPECT_EQ(DISP_E_BADPARAMCOUNT, put.result);
}

TEST(Arguments, AreRefusedIfARequiredOneIsMissing) {
  const LateBound exchange = NewLateBoundExchange();
  for (const wchar_t* method : {L"KRNOpenPlan", L"KRNDeserialize", L"QbSerialize", L"SubmitCustomRequest",
                                L"ShowDialog", L"MonthsOfActivity", L"Execute"}) {
    const HRESULT result = exchange.Call(method).result;
    EXPECT_TRUE(result == DISP_E_BADPARAMCOUNT || result == DISP_E_PARAMNOTOPTIONAL)
        << std::hex << result << ' ' << std::wstring(method).size();
  }
  const Outcome missing = exchange.Call(L"KRNOpenPlan", {Value::Missing()});
  EXPECT_EQ(DISP_E_PARAMNOTOPTIONAL, missing.result);
}

TEST(Arguments, ReportTheIndexOfTheInvalidOne) {
  const LateBound exchange = NewLateBoundExchange();
  // The index is that of the reversed array: the last argument is 0.
  const Outcome options = exchange.Call(L"KRNDeserialize", {L"", L"no number"});
  EXPECT_EQ(DISP_E_TYPEMISMATCH, options.result);
  EXPECT_EQ(0U, options.wrongArgument);
  const Outcome dialog = exchange.Call(L"ShowDialog", {L"none"});
  EXPECT_EQ(DISP_E_TYPEMISMATCH, dialog.result);
  EXPECT_EQ(0U, dialog.wrongArgument);
  const Outcome action = exchange.Call(L"Execute", {Value::Null(), 7});
  EXPECT_EQ(DISP_E_TYPEMISMATCH, action.result);
  EXPECT_EQ(1U, action.wrongArgument);
}

TEST(Arguments, AcceptVariantReferencesForTypedParameters) {
  const LateBound exchange = NewLateBoundExchange();
  Value options(0);
  Value document(L"no document");
  EXPECT_EQ(S_OK,
            exchange.Call(L"KRNDeserialize", {Value::Reference(document), Value::Reference(options)}).result);
  EXPECT_EQ(0, options.AsLong());
  Value action(L"do it");
  Value rest(5);
  const Outcome executed = exchange.Call(L"Execute", {Value::Reference(action), Value::Reference(rest)});
  EXPECT_EQ(S_OK, executed.result);
  EXPECT_TRUE(executed.value.IsEmpty());
  EXPECT_EQ(L"do it", action.AsText());
  EXPECT_EQ(5, rest.AsLong());
  Value collection(exchange.Call(L"GetTablesAffected").value);
  EXPECT_EQ(0, exchange.Call(L"MonthsOfActivity", {Value::Reference(collection)}).value.AsLong());
  EXPECT_TRUE(collection.AsObject());
}

TEST(Arguments, AcceptTypedReferences) {
  const LateBound exchange = NewLateBoundExchange();
  int options = 0;
  VARIANT arguments[2]{};
  arguments[0].vt = VT_BYREF | VT_I4;
  arguments[0].plVal = reinterpret_cast<LONG*>(&options);
  const Value document(L"no document");
  arguments[1] = document.Raw();
  DISPPARAMS parameters{arguments, nullptr, 2, 0};
  Value result;
  EXPECT_EQ(S_OK, exchange.Get()->Invoke(exchange.Member(L"KRNDeserialize"), IID_NULL, LOCALE_USER_DEFAULT,
                                         DISPATCH_METHOD, &parameters, result.Receive(), nullptr, nullptr));
  EXPECT_EQ(L"", result.AsText());
}

// Calls a method with one argument, a variable of the caller's.
HRESULT CallWithVariable(const LateBound& exchange, const wchar_t* method, VARTYPE type, void* variable) {
  VARIANT argument{};
  argument.vt = static_cast<VARTYPE>(VT_BYREF | type);
  argument.byref = variable;
  DISPPARAMS parameters{&argument, nullptr, 1, 0};
  Value result;
  return exchange.Get()->Invoke(exchange.Member(method), IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD,
                                &parameters, result.Receive(), nullptr, nullptr);
}

// Returns what a variable of a type holds after a method that takes a whole number has been called with it.
template <typename Number>
Number AfterCall(VARTYPE type, Number number) {
  EXPECT_EQ(S_OK, CallWithVariable(NewLateBoundExchange(), L"KRNSerialize", type, &number)) << type;
  return number;
}

TEST(Arguments, AreWrittenBackInTheTypeOfTheCallersVariable) {
  EXPECT_EQ(1, AfterCall<signed char>(VT_I1, 1));
  EXPECT_EQ(1, AfterCall<unsigned char>(VT_UI1, 1));
  EXPECT_EQ(1, AfterCall<short>(VT_I2, 1));
  EXPECT_EQ(1, AfterCall<unsigned short>(VT_UI2, 1));
  EXPECT_EQ(VARIANT_TRUE, AfterCall<VARIANT_BOOL>(VT_BOOL, VARIANT_TRUE));
  EXPECT_EQ(1, AfterCall<int>(VT_I4, 1));
  EXPECT_EQ(1U, AfterCall<unsigned>(VT_UI4, 1));
  EXPECT_EQ(1, AfterCall<int>(VT_INT, 1));
  EXPECT_EQ(1U, AfterCall<unsigned>(VT_UINT, 1));
  EXPECT_EQ(1, AfterCall<long long>(VT_I8, 1));
  EXPECT_EQ(1U, AfterCall<unsigned long long>(VT_UI8, 1));
  // The method's own variable is a whole number, and that is what returns.
  EXPECT_EQ(3.0F, AfterCall<float>(VT_R4, 2.6F));
  EXPECT_EQ(3.0, AfterCall<double>(VT_R8, 2.6));
  EXPECT_EQ(3.0, AfterCall<DATE>(VT_DATE, 2.6));
  EXPECT_EQ(30'000, AfterCall<long long>(VT_CY, 26'000));  // ten-thousandths
  BSTR text = SysAllocString(L" 2.6 ");
  EXPECT_EQ(S_OK, CallWithVariable(NewLateBoundExchange(), L"KRNSerialize", VT_BSTR, &text));
  EXPECT_EQ(L"3", std::wstring(text));
  SysFreeString(text);
}

TEST(Arguments, KeepAnObjectInTheCallersVariable) {
  const LateBound exchange = NewLateBoundExchange();
  const Held<IDispatch> tables = exchange.Call(L"GetTablesAffected").value.AsObject();
  for (const VARTYPE type : {VT_DISPATCH, VT_UNKNOWN}) {
    IDispatch* variable = tables.Get();
    variable->AddRef();
    const ULONG references = variable->AddRef();
    variable->Release();
    EXPECT_EQ(S_OK, CallWithVariable(exchange, L"MonthsOfActivity", type, &variable)) << type;
    EXPECT_EQ(tables.Get(), variable);
    EXPECT_EQ(references, variable->AddRef());
    variable->Release();
    variable->Release();
  }
}

TEST(Arguments, AreATypeMismatchIfTheirVariableIsMissing) {
  const LateBound exchange = NewLateBoundExchange();
  for (const VARTYPE type : {VT_I4, VT_BSTR, VT_VARIANT}) {
    EXPECT_EQ(DISP_E_TYPEMISMATCH, CallWithVariable(exchange, L"KRNSerialize", type, nullptr)) << type;
  }
}

TEST(Arguments, RequireTheNullInterfaceIdentifier) {
  const LateBound exchange = NewLateBoundExchange();
  const DISPID member = exchange.Member(L"KRNProduct");
  EXPECT_EQ(DISP_E_UNKNOWNINTERFACE,
            exchange.Invoke(member, DISPATCH_PROPERTYGET, {}, {}, IID_IDispatch).result);
  LPOLESTR name = const_cast<LPOLESTR>(L"KRNProduct");
  DISPID found = 0;
  EXPECT_EQ(DISP_E_UNKNOWNINTERFACE,
            exchange.Get()->GetIDsOfNames(IID_IDispatch, &name, 1, LOCALE_USER_DEFAULT, &found));
}

TEST(Arguments, ReportAMissingMember) {
  const LateBound exchange = NewLateBoundExchange();
  EXPECT_EQ(DISP_E_MEMBERNOTFOUND, exchange.Invoke(4711, DISPATCH_METHOD, {}).result);
  // A property cannot be called, and a read-only one cannot be assigned.
  EXPECT_EQ(DISP_E_MEMBERNOTFOUND, exchange.Let(L"QBIncomeAccounts", Value(1)).result);
  EXPECT_EQ(DISP_E_MEMBERNOTFOUND, exchange.Set(L"KRNProduct", Value(1)).result);
}

TEST(Arguments, AllowNullResultsAndExceptions) {
  const LateBound exchange = NewLateBoundExchange();
  DISPPARAMS none{};
  EXPECT_EQ(S_OK, exchange.Get()->Invoke(exchange.Member(L"KRNSerialize"), IID_NULL, LOCALE_USER_DEFAULT,
                                         DISPATCH_METHOD, &none, nullptr, nullptr, nullptr));
  const Value plan(L"C:\\plan.kpf");
  VARIANT argument = plan.Raw();
  DISPPARAMS one{&argument, nullptr, 1, 0};
  EXPECT_EQ(DISP_E_EXCEPTION,
            exchange.Get()->Invoke(exchange.Member(L"KRNOpenPlan"), IID_NULL, LOCALE_USER_DEFAULT,
                                   DISPATCH_METHOD, &one, nullptr, nullptr, nullptr));
}

TEST(Arguments, AllowMethodsToBeReadAsProperties) {
  const LateBound exchange = NewLateBoundExchange();
  // Visual Basic cannot know whether a late-bound name is a method or a property.
  const Outcome read =
      exchange.Invoke(exchange.Member(L"GetTablesAffected"), DISPATCH_METHOD | DISPATCH_PROPERTYGET, {});
  EXPECT_EQ(S_OK, read.result);
  EXPECT_TRUE(read.value.AsObject());
  const Outcome product =
      exchange.Invoke(exchange.Member(L"KRNProduct"), DISPATCH_METHOD | DISPATCH_PROPERTYGET, {});
  EXPECT_EQ(1, product.value.AsLong());
}

}  // namespace
}  // namespace krnqb::testing
