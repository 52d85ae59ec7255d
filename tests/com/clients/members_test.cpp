// Every property, early-bound: the initial value of a new object, and whether each value stored is read back.
#include <gtest/gtest.h>

#include "host/component.h"
#include "host/object.h"

namespace krnqb::testing {
namespace {

using Interface = _QBDataExchange;

struct TruthProperty {
  const char* name;
  HRESULT (STDMETHODCALLTYPE Interface::*get)(VARIANT_BOOL*);
  HRESULT (STDMETHODCALLTYPE Interface::*put)(VARIANT_BOOL);
};

const TruthProperty truths[] = {
    {"IncludeExpenseAccounts", &Interface::get_IncludeExpenseAccounts,
     &Interface::put_IncludeExpenseAccounts},
    {"IncludeIncomeAccounts", &Interface::get_IncludeIncomeAccounts, &Interface::put_IncludeIncomeAccounts},
    {"IncludePastPerformance", &Interface::get_IncludePastPerformance,
     &Interface::put_IncludePastPerformance}};

TEST(Members, BooleansStartFalseAndTrueIsMinusOne) {
  for (const TruthProperty& property : truths) {
    SCOPED_TRACE(property.name);
    const Exchange exchange = NewExchange();
    VARIANT_BOOL value = 7;
    ASSERT_EQ(S_OK, (exchange.Get()->*property.get)(&value));
    EXPECT_EQ(VARIANT_FALSE, value);
    ASSERT_EQ(S_OK, (exchange.Get()->*property.put)(1));
    ASSERT_EQ(S_OK, (exchange.Get()->*property.get)(&value));
    EXPECT_EQ(VARIANT_TRUE, value);
    ASSERT_EQ(S_OK, (exchange.Get()->*property.put)(VARIANT_FALSE));
    ASSERT_EQ(S_OK, (exchange.Get()->*property.get)(&value));
    EXPECT_EQ(VARIANT_FALSE, value);
    EXPECT_EQ(E_POINTER, (exchange.Get()->*property.get)(nullptr));
  }
}

struct IntegerProperty {
  const char* name;
  HRESULT (STDMETHODCALLTYPE Interface::*get)(short*);
  HRESULT (STDMETHODCALLTYPE Interface::*put)(short);
};

const IntegerProperty integers[] = {
    {"GrowthRateCOGS", &Interface::get_GrowthRateCOGS, &Interface::put_GrowthRateCOGS},
    {"GrowthRateIncome", &Interface::get_GrowthRateIncome, &Interface::put_GrowthRateIncome},
    {"GrowthRateExpenses", &Interface::get_GrowthRateExpenses, &Interface::put_GrowthRateExpenses},
    {"KRNStartingMonth", &Interface::get_KRNStartingMonth, &Interface::put_KRNStartingMonth},
    {"KRNStartingYear", &Interface::get_KRNStartingYear, &Interface::put_KRNStartingYear},
    {"QBStartingMonth", &Interface::get_QBStartingMonth, &Interface::put_QBStartingMonth},
    {"QBMajorVersion", &Interface::get_QBMajorVersion, &Interface::put_QBMajorVersion},
    {"QBMinorVersion", &Interface::get_QBMinorVersion, &Interface::put_QBMinorVersion}};

TEST(Members, IntegersStartAtZeroAndHoldSixteenBits) {
  for (const IntegerProperty& property : integers) {
    SCOPED_TRACE(property.name);
    const Exchange exchange = NewExchange();
    short value = 7;
    ASSERT_EQ(S_OK, (exchange.Get()->*property.get)(&value));
    EXPECT_EQ(0, value);
    for (const short put : {short{1}, short{-32768}, short{32767}}) {
      ASSERT_EQ(S_OK, (exchange.Get()->*property.put)(put));
      ASSERT_EQ(S_OK, (exchange.Get()->*property.get)(&value));
      EXPECT_EQ(put, value);
    }
    EXPECT_EQ(E_POINTER, (exchange.Get()->*property.get)(nullptr));
  }
}

TEST(Members, PropertiesAreIndependent) {
  const Exchange exchange = NewExchange();
  short number = 0;
  for (const IntegerProperty& property : integers) (exchange.Get()->*property.put)(++number);
  number = 0;
  for (const IntegerProperty& property : integers) {
    short value = 0;
    (exchange.Get()->*property.get)(&value);
    EXPECT_EQ(++number, value) << property.name;
  }
}

TEST(Members, EnumerationsStartWithTheFirstProductAndNoBalances) {
  const Exchange exchange = NewExchange();
  QBKRNproduct product{};
  QBKRN_BalancesImport balances = BalImport_All;
  ASSERT_EQ(S_OK, exchange->get_KRNProduct(&product));
  ASSERT_EQ(S_OK, exchange->get_BalancesImport(&balances));
  EXPECT_EQ(QBKRN_ALD, product);
  EXPECT_EQ(BalImport_None, balances);
  exchange->put_KRNProduct(QBKRN_COR);
  exchange->put_BalancesImport(BalImport_Actual);
  exchange->get_KRNProduct(&product);
  exchange->get_BalancesImport(&balances);
  EXPECT_EQ(QBKRN_COR, product);
  EXPECT_EQ(BalImport_Actual, balances);
}

TEST(Members, TheErrorPairStoresWhatTheHostSets) {
  const Exchange exchange = NewExchange();
  long number = 7;
  Text description;
  ASSERT_EQ(S_OK, exchange->get_ErrorNumber(&number));
  ASSERT_EQ(S_OK, exchange->get_ErrorDescription(description.Receive()));
  EXPECT_EQ(0, number);
  EXPECT_EQ(L"", description.View());
  exchange->put_ErrorNumber(-2147221504);
  exchange->put_ErrorDescription(Text(L"caf\u00e9").Get());
  exchange->get_ErrorNumber(&number);
  exchange->get_ErrorDescription(description.Receive());
  EXPECT_EQ(-2147221504, number);
  EXPECT_EQ(L"caf\u00e9", description.View());
}

TEST(Members, TheHostsSlotHoldsAndReleasesAnObject) {
  const long before = HostObject::Alive();
  {
    const Exchange exchange = NewExchange();
    Held<IDispatch> slot;
    ASSERT_EQ(S_OK, exchange->get_mQBDataExchangeObject(slot.Receive()));
    EXPECT_FALSE(slot);
    {
      const auto object = NamedObject::Make();
      ASSERT_EQ(S_OK, exchange->putref_mQBDataExchangeObject(object.Get()));
    }
    EXPECT_EQ(before + 1, HostObject::Alive());
    ASSERT_EQ(S_OK, exchange->get_mQBDataExchangeObject(slot.Receive()));
    EXPECT_TRUE(slot);
    slot.Reset();
    ASSERT_EQ(S_OK, exchange->putref_mQBDataExchangeObject(nullptr));
    EXPECT_EQ(before, HostObject::Alive());
    exchange->putref_mQBDataExchangeObject(NamedObject::Make().Get());
  }
  EXPECT_EQ(before, HostObject::Alive());
}

TEST(Members, ExecuteReturnsEmptyForAnyArguments) {
  const Exchange exchange = NewExchange();
  Text action(L"anything");
  BSTR passed = action.Get();
  Value arguments(7);
  VARIANT argument = arguments.Raw();
  Value result(3);
  ASSERT_EQ(S_OK, exchange->Execute(&passed, &argument, result.Receive()));
  EXPECT_TRUE(result.IsEmpty());
  EXPECT_EQ(action.Get(), passed);
  ASSERT_EQ(S_OK, exchange->Execute(&passed, nullptr, result.Receive()));
  EXPECT_TRUE(result.IsEmpty());
  EXPECT_EQ(E_POINTER, exchange->Execute(nullptr, nullptr, result.Receive()));
  EXPECT_EQ(E_POINTER, exchange->Execute(&passed, nullptr, nullptr));
}

TEST(Members, KrnSerializeReturnsEmpty) {
  const Exchange exchange = NewExchange();
  Value result(3);
  QBKRN_SerializeOptions options = qbkrnsDefault;
  ASSERT_EQ(S_OK, exchange->KRNSerialize(&options, result.Receive()));
  EXPECT_TRUE(result.IsEmpty());
  ASSERT_EQ(S_OK, exchange->KRNSerialize(nullptr, result.Receive()));
  EXPECT_TRUE(result.IsEmpty());
  EXPECT_EQ(E_POINTER, exchange->KRNSerialize(&options, nullptr));
}

TEST(Members, OptionalOptionsMayBeNull) {
  const Exchange exchange = NewExchange();
  Value result(3);
  ASSERT_EQ(S_OK, exchange->KRNDeserialize(Value(L"no document").Raw(), nullptr, result.Receive()));
  EXPECT_EQ(L"", result.AsText());
  const Variable refused(L"KRNQB_REFUSED_CALL", L"creation");
  ASSERT_EQ(S_OK, exchange->QbSerialize(Value(L"<request/>").Raw(), nullptr, result.Receive()));
  EXPECT_TRUE(result.IsEmpty());
}

TEST(Members, ThePlanIsHeldAndReleased) {
  const long before = HostObject::Alive();
  const Exchange exchange = NewExchange();
  Value plan;
  ASSERT_EQ(S_OK, exchange->get_KRNPlanData(plan.Receive()));
  EXPECT_EQ(VT_DISPATCH, plan.Type());
  EXPECT_EQ(nullptr, plan.AsObject().Get());
  ASSERT_EQ(S_OK, exchange->putref_KRNPlanData(Value(NamedObject::Make().Get()).Raw()));
  ASSERT_EQ(S_OK, exchange->get_KRNPlanData(plan.Receive()));
  EXPECT_EQ(VT_DISPATCH, plan.Type());
  plan = Value();
  EXPECT_EQ(before + 1, HostObject::Alive());
  ASSERT_EQ(S_OK, exchange->putref_KRNPlanData(Value(static_cast<IDispatch*>(nullptr)).Raw()));
  EXPECT_EQ(before, HostObject::Alive());
}

TEST(Members, NothingEmptyAndNullReleaseThePlan) {
  const long before = HostObject::Alive();
  const Exchange exchange = NewExchange();
  Value empty;
  for (const Value& value :
       {Value(static_cast<IDispatch*>(nullptr)), Value(), Value::Null(), Value::Reference(empty)}) {
    SCOPED_TRACE(value.Type());
    ASSERT_EQ(S_OK, exchange->putref_KRNPlanData(Value(NamedObject::Make().Get()).Raw()));
    EXPECT_EQ(before + 1, HostObject::Alive());
    EXPECT_EQ(S_OK, exchange->putref_KRNPlanData(value.Raw()));
    EXPECT_EQ(before, HostObject::Alive());
    Value plan;
    ASSERT_EQ(S_OK, exchange->get_KRNPlanData(plan.Receive()));
    EXPECT_EQ(VT_DISPATCH, plan.Type());
    EXPECT_EQ(nullptr, plan.AsObject().Get());
  }
}

TEST(Members, APlanWithoutAutomationIsReturnedAsItWasGiven) {
  const Exchange exchange = NewExchange();
  Held<IMalloc> memory;
  ASSERT_EQ(S_OK, CoGetMalloc(1, memory.Receive()));
  VARIANT plan{};
  plan.vt = VT_UNKNOWN;
  plan.punkVal = memory.Get();
  ASSERT_EQ(S_OK, exchange->putref_KRNPlanData(plan));
  Value held;
  ASSERT_EQ(S_OK, exchange->get_KRNPlanData(held.Receive()));
  ASSERT_EQ(VT_UNKNOWN, held.Type());
  EXPECT_EQ(memory.As<IUnknown>().Get(), Held<IUnknown>::Sharing(held.Raw().punkVal).As<IUnknown>().Get());
}

TEST(Members, APlanThatIsNotAnObjectIsATypeMismatch) {
  const Exchange exchange = NewExchange();
  exchange->putref_KRNPlanData(Value(NamedObject::Make().Get()).Raw());
  const long kept = HostObject::Alive();
  EXPECT_EQ(RunTimeError(13), exchange->putref_KRNPlanData(Value(L"text").Raw()));
  EXPECT_EQ(RunTimeError(13), exchange->putref_KRNPlanData(Value(3).Raw()));
  EXPECT_EQ(kept, HostObject::Alive());
}

TEST(Members, ShowDialogReturnsEmptyIfThereIsNothingToShow) {
  const Exchange exchange = NewExchange();
  Value result(3);
  ASSERT_EQ(S_OK, exchange->ShowDialog(dlg_KRNtoQB, result.Receive()));
  EXPECT_TRUE(result.IsEmpty());
}

}  // namespace
}  // namespace krnqb::testing
