// The values that late-bound callers may pass for a member of each type, and the errors for all others.
#include <gtest/gtest.h>

#include <vector>

#include "host/component.h"

namespace krnqb::testing {
namespace {

struct Coercion {
  const char* what;
  Value given;
  HRESULT result;
  long read = 0;  ///< if the call succeeds
};

void Check(const wchar_t* property, const std::vector<Coercion>& coercions, VARTYPE type) {
  const LateBound exchange = NewLateBoundExchange();
  for (const Coercion& coercion : coercions) {
    SCOPED_TRACE(coercion.what);
    ASSERT_EQ(S_OK, exchange.Let(property, Value(0)).result);
    const Outcome put = exchange.Let(property, coercion.given);
    EXPECT_EQ(coercion.result, put.result);
    if (FAILED(coercion.result)) {
      EXPECT_EQ(0U, put.wrongArgument);
    }
    const Outcome got = exchange.Read(property);
    EXPECT_EQ(type, got.value.Type());
    EXPECT_EQ(coercion.read, got.value.AsLong());
  }
}

TEST(Coercion, Integers) {
  Check(L"GrowthRateIncome",
        {{"an integer", Value(short{12}), S_OK, 12},
         {"a long", Value(12), S_OK, 12},
         {"a text", L"3", S_OK, 3},
         {"a text with blanks", L" 3 ", S_OK, 3},
         {"a double is rounded", Value(3.6), S_OK, 4},
         {"halves go to the even number", Value(2.5), S_OK, 2},
         {"true is -1", Value(true), S_OK, -1},
         {"empty is 0", Value(), S_OK, 0},
         {"above 16 bits", Value(40000), DISP_E_OVERFLOW},
         {"below 16 bits", Value(-40000), DISP_E_OVERFLOW},
         {"a text above 16 bits", L"70000", DISP_E_OVERFLOW},
         {"no number", L"abc", DISP_E_TYPEMISMATCH},
         {"the empty text", L"", DISP_E_TYPEMISMATCH},
         {"null", Value::Null(), DISP_E_TYPEMISMATCH}},
        VT_I2);
}

TEST(Coercion, Longs) {
  Check(L"ErrorNumber",
        {{"a long", Value(-2147221504), S_OK, -2147221504},
         {"an integer", Value(short{-5}), S_OK, -5},
         {"a text", L"-17", S_OK, -17},
         {"a double", Value(1e5), S_OK, 100000},
         {"too large", Value(3e9), DISP_E_OVERFLOW},
         {"no number", L"one", DISP_E_TYPEMISMATCH}},
        VT_I4);
}

TEST(Coercion, Booleans) {
  Check(L"IncludeExpenseAccounts",
        {{"true", Value(true), S_OK, -1},
         {"-1", Value(-1), S_OK, -1},
         {"any other number", Value(5), S_OK, -1},
         {"a fraction", Value(0.5), S_OK, -1},
         {"zero", Value(0), S_OK, 0},
         {"the word", L"True", S_OK, -1},
         {"the word in other letters", L"fALSE", S_OK, 0},
         {"a number as text", L"2", S_OK, -1},
         {"empty", Value(), S_OK, 0},
         {"another word", L"maybe", DISP_E_TYPEMISMATCH}},
        VT_BOOL);
}

TEST(Coercion, Enumerations) {
  const LateBound exchange = NewLateBoundExchange();
  for (const Value& given : {Value(2), Value(short{2}), Value(L"2"), Value(2.0)}) {
    exchange.Let(L"KRNProduct", Value(1));
    EXPECT_EQ(S_OK, exchange.Let(L"KRNProduct", given).result);
    const Outcome got = exchange.Read(L"KRNProduct");
    EXPECT_EQ(VT_I4, got.value.Type());
    EXPECT_EQ(2, got.value.AsLong());
  }
  EXPECT_EQ(DISP_E_TYPEMISMATCH, exchange.Let(L"KRNProduct", L"ald").result);
  // Values outside the enumeration are accepted.
  EXPECT_EQ(S_OK, exchange.Let(L"KRNProduct", Value(77)).result);
  EXPECT_EQ(77, exchange.Read(L"KRNProduct").value.AsLong());
}

TEST(Coercion, Texts) {
  const LateBound exchange = NewLateBoundExchange();
  const std::vector<std::pair<Value, std::wstring>> texts{
      {L"text", L"text"}, {Value(12), L"12"}, {Value(1.5), L"1.5"}, {Value(), L""}};
  for (const auto& [given, read] : texts) {
    EXPECT_EQ(S_OK, exchange.Let(L"ErrorDescription", given).result);
    const Outcome got = exchange.Read(L"ErrorDescription");
    EXPECT_EQ(VT_BSTR, got.value.Type());
    EXPECT_EQ(read, got.value.AsText());
  }
  EXPECT_EQ(DISP_E_TYPEMISMATCH, exchange.Let(L"ErrorDescription", Value::Null()).result);
}

TEST(Coercion, FollowsVariantReferencesToAnyDepth) {
  const LateBound exchange = NewLateBoundExchange();
  Value number(L"41");
  Value first = Value::Reference(number);
  Value second = Value::Reference(first);
  Value third = Value::Reference(second);
  EXPECT_EQ(S_OK, exchange.Let(L"GrowthRateCOGS", Value::Reference(number)).result);
  EXPECT_EQ(41, exchange.Read(L"GrowthRateCOGS").value.AsLong());
  number = Value(42);
  EXPECT_EQ(S_OK, exchange.Let(L"GrowthRateCOGS", Value::Reference(third)).result);
  EXPECT_EQ(42, exchange.Read(L"GrowthRateCOGS").value.AsLong());
}

TEST(Coercion, FollowsTypedReferences) {
  const LateBound exchange = NewLateBoundExchange();
  long number = 43;
  VARIANT reference{};
  reference.vt = VT_BYREF | VT_I4;
  reference.plVal = &number;
  DISPID put = DISPID_PROPERTYPUT;
  DISPPARAMS parameters{&reference, &put, 1, 1};
  EXPECT_EQ(S_OK, exchange.Get()->Invoke(exchange.Member(L"GrowthRateCOGS"), IID_NULL, LOCALE_USER_DEFAULT,
                                         DISPATCH_PROPERTYPUT, &parameters, nullptr, nullptr, nullptr));
  EXPECT_EQ(43, exchange.Read(L"GrowthRateCOGS").value.AsLong());
}

TEST(Coercion, AcceptsAPlainAssignmentOfAnObject) {
  const LateBound exchange = NewLateBoundExchange();
  const auto plan = NamedObject::Make();
  EXPECT_EQ(S_OK, exchange.Let(L"KRNPlanData", Value(plan.Get())).result);
  EXPECT_TRUE(exchange.Read(L"KRNPlanData").value.AsObject());
  const Outcome both =
      exchange.Invoke(exchange.Member(L"KRNPlanData"), DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF,
                      {Value(static_cast<IDispatch*>(nullptr))}, {DISPID_PROPERTYPUT});
  EXPECT_EQ(S_OK, both.result);
  EXPECT_FALSE(exchange.Read(L"KRNPlanData").value.AsObject());
}

TEST(Coercion, RefusesAValueThatIsNotAnObject) {
  const LateBound exchange = NewLateBoundExchange();
  for (const wchar_t* property : {L"mQBDataExchangeObject", L"SelectedExpenses"}) {
    const Outcome put = exchange.Set(property, Value(3));
    EXPECT_EQ(DISP_E_TYPEMISMATCH, put.result) << property;
    EXPECT_EQ(0U, put.wrongArgument) << property;
  }
  const Outcome plan = exchange.Set(L"KRNPlanData", Value(3));
  EXPECT_EQ(DISP_E_EXCEPTION, plan.result);
  EXPECT_EQ(RunTimeError(13), plan.exception.scode);
  EXPECT_EQ(L"Type mismatch", plan.description);
}

}  // namespace
}  // namespace krnqb::testing
