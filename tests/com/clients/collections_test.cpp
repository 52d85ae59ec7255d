// Collections in both directions, and the records in them.
#include <gtest/gtest.h>

#include "host/component.h"
#include "host/object.h"

namespace krnqb::testing {
namespace {

LateBound NewSubtotals() {
  Held<IDispatch> record;
  EXPECT_EQ(S_OK, CoCreateInstance(CLSID_cSubtotals, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                                   record.ReceiveAny()));
  return LateBound(record);
}

LateBound TablesOf(int product) {
  const LateBound exchange = NewLateBoundExchange();
  exchange.Let(L"KRNProduct", Value(product));
  return LateBound(exchange.Call(L"GetTablesAffected").value.AsObject());
}

std::vector<std::wstring> ItemsOf(const LateBound& collection) {
  std::vector<std::wstring> items;
  const long count = collection.Read(L"Count").value.AsLong();
  for (int position = 1; position <= count; ++position) {
    items.push_back(collection.Read(L"Item", {Value(position)}).value.AsText());
  }
  return items;
}

std::vector<std::wstring> Enumerated(const LateBound& collection) {
  std::vector<std::wstring> items;
  const Outcome enumerating = collection.Invoke(DISPID_NEWENUM, DISPATCH_METHOD | DISPATCH_PROPERTYGET, {});
  if (enumerating.value.Type() != VT_UNKNOWN) return {L"no enumerator"};
  const auto values = Held<IUnknown>::Sharing(enumerating.value.Raw().punkVal).As<IEnumVARIANT>();
  Value value;
  while (values->Next(1, value.Receive(), nullptr) == S_OK) items.push_back(value.AsText());
  return items;
}

TEST(Collections, ListTheTablesOfEachProductInOrder) {
  const std::vector<std::wstring> others{
      L"20000000000000000000000000000400", L"21000000000000000000000000000400",
      L"20000000000000000000000000000600", L"21000000000000000000000000000600",
      L"20000000000000000000000000000800"};
  const std::vector<std::wstring> bri{
      L"20000000000000000000000000002090", L"20000000000000000000000000002000",
      L"20000000000000000000000000000400", L"21000000000000000000000000000400"};
  EXPECT_EQ(others, ItemsOf(TablesOf(1)));
  EXPECT_EQ(bri, ItemsOf(TablesOf(2)));
  EXPECT_EQ(others, ItemsOf(TablesOf(3)));
  EXPECT_TRUE(ItemsOf(TablesOf(0)).empty());
  EXPECT_EQ(bri, Enumerated(TablesOf(2)));
  EXPECT_TRUE(Enumerated(TablesOf(0)).empty());
}

TEST(Collections, AddAndRemoveByPositionAndKey) {
  const LateBound collection = TablesOf(0);
  EXPECT_EQ(S_OK, collection.Call(L"Add", {L"one", L"first"}).result);
  EXPECT_EQ(S_OK, collection.Call(L"Add", {L"two"}).result);
  EXPECT_EQ(S_OK, collection.Call(L"Add", {L"zero", Value::Missing(), Value(1)}).result);
  EXPECT_EQ(S_OK, collection.CallNamed(L"Add", {L"between"}, {{L"After", L"FIRST"}}).result);
  EXPECT_EQ((std::vector<std::wstring>{L"zero", L"one", L"between", L"two"}), ItemsOf(collection));
  EXPECT_EQ(L"one", collection.Read(L"Item", {L"First"}).value.AsText());
  const Outcome byDefault =
      collection.Invoke(DISPID_VALUE, DISPATCH_METHOD | DISPATCH_PROPERTYGET, {Value(4)});
  EXPECT_EQ(L"two", byDefault.value.AsText());
  EXPECT_EQ(S_OK, collection.Call(L"Remove", {L"first"}).result);
  EXPECT_EQ(S_OK, collection.Call(L"Remove", {Value(1)}).result);
  EXPECT_EQ((std::vector<std::wstring>{L"between", L"two"}), ItemsOf(collection));
}

TEST(Collections, ReportInvalidArguments) {
  const LateBound collection = TablesOf(1);
  collection.Call(L"Add", {L"again", L"key"});
  EXPECT_EQ(RunTimeError(9), collection.Read(L"Item", {Value(0)}).exception.scode);
  EXPECT_EQ(RunTimeError(9), collection.Read(L"Item", {Value(7)}).exception.scode);
  EXPECT_EQ(RunTimeError(5), collection.Read(L"Item", {L"no key"}).exception.scode);
  EXPECT_EQ(RunTimeError(457), collection.Call(L"Add", {L"once more", L"KEY"}).exception.scode);
  EXPECT_EQ(RunTimeError(5), collection.Call(L"Remove", {L"no key"}).exception.scode);
}

TEST(Collections, ResumeAnEnumerationWhereItStopped) {
  const Outcome enumerating = TablesOf(1).Invoke(DISPID_NEWENUM, DISPATCH_METHOD, {});
  const auto values = Held<IUnknown>::Sharing(enumerating.value.Raw().punkVal).As<IEnumVARIANT>();
  ASSERT_TRUE(values);
  VARIANT several[7]{};
  ULONG fetched = 0;
  EXPECT_EQ(S_OK, values->Skip(1));
  EXPECT_EQ(S_OK, values->Next(2, several, &fetched));
  EXPECT_EQ(2U, fetched);
  Held<IEnumVARIANT> copy;
  EXPECT_EQ(S_OK, values->Clone(copy.Receive()));
  for (VARIANT& value : several) VariantClear(&value);
  EXPECT_EQ(S_FALSE, copy->Next(7, several, &fetched));
  EXPECT_EQ(2U, fetched);
  for (VARIANT& value : several) VariantClear(&value);
  EXPECT_EQ(S_OK, values->Reset());
  EXPECT_EQ(S_FALSE, values->Next(7, several, &fetched));
  EXPECT_EQ(5U, fetched);
  for (VARIANT& value : several) VariantClear(&value);
}

TEST(Subtotals, HaveFourteenAmountsAndTheirSum) {
  const LateBound record = NewSubtotals();
  EXPECT_EQ(L"", record.Read(L"Description").value.AsText());
  EXPECT_EQ(S_OK, record.Let(L"Description", L"Rent").result);
  EXPECT_EQ(L"Rent", record.Read(L"Description").value.AsText());
  for (int index = 1; index <= 14; ++index) {
    EXPECT_EQ(0.0, record.Read(L"SubTotal", {Value(index)}).value.AsDouble());
    EXPECT_EQ(S_OK, record.LetAt(L"SubTotal", Value(index), Value(index * 1.5)).result);
    EXPECT_EQ(index * 1.5, record.Read(L"SubTotal", {Value(index)}).value.AsDouble());
  }
  const Outcome total = record.Call(L"Total");
  EXPECT_EQ(VT_R8, total.value.Type());
  EXPECT_EQ(157.5, total.value.AsDouble());
}

TEST(Subtotals, HaveNoOtherSlots) {
  const LateBound record = NewSubtotals();
  for (const int index : {0, 15, -1}) {
    const Outcome read = record.Read(L"SubTotal", {Value(index)});
    EXPECT_EQ(DISP_E_EXCEPTION, read.result);
    EXPECT_EQ(RunTimeError(9), read.exception.scode);
    EXPECT_EQ(L"Subscript out of range", read.description);
    EXPECT_EQ(RunTimeError(9), record.LetAt(L"SubTotal", Value(index), Value(1.0)).exception.scode);
  }
  EXPECT_EQ(DISP_E_OVERFLOW, record.Read(L"SubTotal", {Value(70000)}).result);
}

TEST(Subtotals, HaveAZeroSumIfItOverflows) {
  const LateBound record = NewSubtotals();
  record.LetAt(L"SubTotal", Value(1), Value(1.7e308));
  record.LetAt(L"SubTotal", Value(2), Value(1.7e308));
  EXPECT_EQ(0.0, record.Call(L"Total").value.AsDouble());
}

// Records with one non-zero month each.
LateBound RecordsOf(const std::vector<int>& months) {
  const LateBound collection = TablesOf(0);
  for (const int month : months) {
    const LateBound record = NewSubtotals();
    if (month > 0) record.LetAt(L"SubTotal", Value(month), Value(-0.01));
    collection.Call(L"Add", {Value(record.Get())});
  }
  return collection;
}

long MonthsOf(const LateBound& collection) {
  return NewLateBoundExchange().Call(L"MonthsOfActivity", {Value(collection.Get())}).value.AsLong();
}

TEST(MonthsOfActivity, ReturnsTheLastMonthOfAnyRecord) {
  EXPECT_EQ(0, MonthsOf(RecordsOf({})));
  EXPECT_EQ(0, MonthsOf(RecordsOf({0, 0})));
  EXPECT_EQ(9, MonthsOf(RecordsOf({4, 9})));
  EXPECT_EQ(9, MonthsOf(RecordsOf({9, 4})));
  EXPECT_EQ(12, MonthsOf(RecordsOf({12})));
  EXPECT_EQ(0, MonthsOf(RecordsOf({13, 14})));
}

TEST(MonthsOfActivity, ReturnsZeroIfAnItemIsNotARecord) {
  const LateBound collection = RecordsOf({5});
  collection.Call(L"Add", {Value(NamedObject::Make().Get())});
  EXPECT_EQ(0, MonthsOf(collection));
  const LateBound texts = RecordsOf({5});
  texts.Call(L"Add", {L"a text"});
  EXPECT_EQ(0, MonthsOf(texts));
}

TEST(MonthsOfActivity, ReturnsZeroForNothing) {
  const Exchange exchange = NewExchange();
  short months = 7;
  EXPECT_EQ(E_POINTER, exchange->MonthsOfActivity(nullptr, &months));
  IDispatch* nothing = nullptr;
  months = 7;
  EXPECT_EQ(S_OK, exchange->MonthsOfActivity(&nothing, &months));
  EXPECT_EQ(0, months);
}

TEST(MonthsOfActivity, AcceptsAnyObjectWithAnEnumerator) {
  const LateBound own = RecordsOf({3, 6});
  const auto foreign = NamedObject::Make();
  foreign->Add(L"Count", DISPATCH_PROPERTYGET, [](const HostCall&) { return E_FAIL; });
  EXPECT_EQ(0, NewLateBoundExchange().Call(L"MonthsOfActivity", {Value(foreign.Get())}).value.AsLong());
  IDispatch* collection = own.Get();
  short months = 0;
  EXPECT_EQ(S_OK, NewExchange()->MonthsOfActivity(&collection, &months));
  EXPECT_EQ(6, months);
  EXPECT_EQ(own.Get(), collection);
}

}  // namespace
}  // namespace krnqb::testing
