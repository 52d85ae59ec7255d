// The interfaces beside the default one: class information, connection points and their enumerators, the
// factory.
#include <gtest/gtest.h>
#include <olectl.h>

#include "host/client_sink.h"
#include "host/component.h"

namespace krnqb::testing {
namespace {

Held<IClassFactory> FactoryOf(REFCLSID identifier) {
  Held<IClassFactory> factory;
  EXPECT_EQ(S_OK, CoGetClassObject(identifier, CLSCTX_INPROC_SERVER, nullptr, IID_IClassFactory,
                                   factory.ReceiveAny()));
  return factory;
}

TEST(Interfaces, ShareOneIdentity) {
  const Exchange exchange = NewExchange();
  const auto identity = exchange.As<IUnknown>();
  EXPECT_EQ(identity.Get(), exchange.As<IDispatch>().As<IUnknown>().Get());
  EXPECT_EQ(identity.Get(), exchange.As<IConnectionPointContainer>().As<IUnknown>().Get());
  EXPECT_EQ(identity.Get(), exchange.As<IProvideClassInfo2>().As<IUnknown>().Get());
  EXPECT_EQ(identity.Get(), exchange.As<ISupportErrorInfo>().As<IUnknown>().Get());
  EXPECT_TRUE(exchange.As<IProvideClassInfo>());
  EXPECT_FALSE(exchange.As<IPersist>());
  EXPECT_EQ(E_POINTER, exchange->QueryInterface(IID_IUnknown, nullptr));
}

TEST(Interfaces, TheClassInformationNamesTheClassAndItsEvents) {
  const Exchange exchange = NewExchange();
  const auto provider = exchange.As<IProvideClassInfo2>();
  GUID events{};
  ASSERT_EQ(S_OK, provider->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &events));
  EXPECT_TRUE(IsEqualGUID(__uuidof(__QBDataExchange), events));
  EXPECT_EQ(E_INVALIDARG, provider->GetGUID(77, &events));
  Held<ITypeInfo> information;
  ASSERT_EQ(S_OK, provider->GetClassInfo(information.Receive()));
  TYPEATTR* attributes = nullptr;
  ASSERT_EQ(S_OK, information->GetTypeAttr(&attributes));
  EXPECT_TRUE(IsEqualGUID(CLSID_QBDataExchange, attributes->guid));
  EXPECT_EQ(TKIND_COCLASS, attributes->typekind);
  information->ReleaseTypeAttr(attributes);
}

TEST(Interfaces, TheTypeInformationDescribesTheDefaultInterface) {
  const Exchange exchange = NewExchange();
  UINT count = 0;
  ASSERT_EQ(S_OK, exchange->GetTypeInfoCount(&count));
  EXPECT_EQ(1U, count);
  Held<ITypeInfo> information;
  ASSERT_EQ(S_OK, exchange->GetTypeInfo(0, LOCALE_USER_DEFAULT, information.Receive()));
  Text name;
  information->GetDocumentation(MEMBERID_NIL, name.Receive(), nullptr, nullptr, nullptr);
  EXPECT_EQ(L"_QBDataExchange", name.View());
  EXPECT_EQ(DISP_E_BADINDEX, exchange->GetTypeInfo(1, LOCALE_USER_DEFAULT, information.Receive()));
}

TEST(Interfaces, ThereIsOneConnectionPoint) {
  const Exchange exchange = NewExchange();
  const auto container = exchange.As<IConnectionPointContainer>();
  Held<IEnumConnectionPoints> points;
  ASSERT_EQ(S_OK, container->EnumConnectionPoints(points.Receive()));
  Held<IConnectionPoint> point;
  ULONG fetched = 0;
  ASSERT_EQ(S_OK, points->Next(1, point.Receive(), &fetched));
  EXPECT_EQ(1U, fetched);
  IID identifier{};
  EXPECT_EQ(S_OK, point->GetConnectionInterface(&identifier));
  EXPECT_TRUE(IsEqualIID(__uuidof(__QBDataExchange), identifier));
  Held<IConnectionPointContainer> owner;
  EXPECT_EQ(S_OK, point->GetConnectionPointContainer(owner.Receive()));
  EXPECT_EQ(exchange.As<IUnknown>().Get(), owner.As<IUnknown>().Get());
  Held<IConnectionPoint> second;
  EXPECT_EQ(S_FALSE, points->Next(1, second.Receive(), &fetched));
  EXPECT_EQ(0U, fetched);
  EXPECT_EQ(S_OK, points->Reset());
  EXPECT_EQ(S_OK, points->Skip(1));
  EXPECT_EQ(S_FALSE, points->Skip(1));
}

TEST(Interfaces, ConnectionsAreEnumerated) {
  const Exchange exchange = NewExchange();
  const auto first = ClientSink::Make();
  const auto second = ClientSink::Make();
  const Connection one(exchange.Get(), first.Get());
  const Connection two(exchange.Get(), second.Get());
  Held<IConnectionPoint> point;
  exchange.As<IConnectionPointContainer>()->FindConnectionPoint(__uuidof(__QBDataExchange), point.Receive());
  Held<IEnumConnections> connections;
  ASSERT_EQ(S_OK, point->EnumConnections(connections.Receive()));
  CONNECTDATA data[3]{};
  ULONG fetched = 0;
  EXPECT_EQ(S_FALSE, connections->Next(3, data, &fetched));
  ASSERT_EQ(2U, fetched);
  EXPECT_NE(data[0].dwCookie, data[1].dwCookie);
  for (ULONG index = 0; index < fetched; ++index) {
    const Held<IUnknown> sink(data[index].pUnk);
    const IUnknown* expected = index == 0 ? first.As<IUnknown>().Get() : second.As<IUnknown>().Get();
    EXPECT_EQ(expected, sink.As<IUnknown>().Get());
  }
  Held<IEnumConnections> copy;
  EXPECT_EQ(S_OK, connections->Reset());
  EXPECT_EQ(S_OK, connections->Clone(copy.Receive()));
  EXPECT_EQ(S_OK, copy->Skip(2));
  EXPECT_EQ(S_FALSE, copy->Skip(1));
}

TEST(Interfaces, RefuseNullPointers) {
  const Exchange exchange = NewExchange();
  EXPECT_EQ(E_POINTER, exchange->GetTypeInfoCount(nullptr));
  EXPECT_EQ(E_POINTER, exchange->GetTypeInfo(0, LOCALE_USER_DEFAULT, nullptr));
  DISPID member = 0;
  EXPECT_EQ(E_POINTER, exchange->GetIDsOfNames(IID_NULL, nullptr, 1, LOCALE_USER_DEFAULT, &member));
  LPOLESTR name = const_cast<LPOLESTR>(L"Go");
  EXPECT_EQ(E_POINTER, exchange->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, nullptr));
  EXPECT_EQ(E_INVALIDARG, exchange->Invoke(1, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, nullptr,
                                           nullptr, nullptr, nullptr));
  const auto provider = exchange.As<IProvideClassInfo2>();
  EXPECT_EQ(E_POINTER, provider->GetClassInfo(nullptr));
  EXPECT_EQ(E_POINTER, provider->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, nullptr));
  const auto container = exchange.As<IConnectionPointContainer>();
  EXPECT_EQ(E_POINTER, container->EnumConnectionPoints(nullptr));
  EXPECT_EQ(E_POINTER, container->FindConnectionPoint(__uuidof(__QBDataExchange), nullptr));
  Held<IConnectionPoint> point;
  ASSERT_EQ(S_OK, container->FindConnectionPoint(__uuidof(__QBDataExchange), point.Receive()));
  EXPECT_EQ(E_POINTER, point->GetConnectionInterface(nullptr));
  EXPECT_EQ(E_POINTER, point->GetConnectionPointContainer(nullptr));
  DWORD cookie = 7;
  EXPECT_EQ(E_POINTER, point->Advise(nullptr, &cookie));
  EXPECT_EQ(0U, cookie);
  EXPECT_EQ(E_POINTER, point->Advise(ClientSink::Make().Get(), nullptr));
  EXPECT_EQ(E_POINTER, point->EnumConnections(nullptr));
  Held<IEnumConnections> connections;
  ASSERT_EQ(S_OK, point->EnumConnections(connections.Receive()));
  ULONG fetched = 7;
  EXPECT_EQ(E_POINTER, connections->Next(1, nullptr, &fetched));
  EXPECT_EQ(0U, fetched);
  CONNECTDATA data[2]{};
  EXPECT_EQ(E_POINTER, connections->Next(2, data, nullptr));
  EXPECT_EQ(E_POINTER, connections->Clone(nullptr));
}

TEST(Interfaces, TheFactoryRefusesAggregation) {
  const auto factory = FactoryOf(CLSID_QBDataExchange);
  ASSERT_TRUE(factory);
  const auto outer = NamedObject::Make();
  void* object = reinterpret_cast<void*>(0x10);
  EXPECT_EQ(CLASS_E_NOAGGREGATION, factory->CreateInstance(outer.Get(), IID_IUnknown, &object));
  EXPECT_EQ(nullptr, object);
}

TEST(Interfaces, TheFactoryReturnsNothingForAnUnknownInterface) {
  const auto factory = FactoryOf(CLSID_cSubtotals);
  ASSERT_TRUE(factory);
  void* object = reinterpret_cast<void*>(0x10);
  EXPECT_EQ(E_NOINTERFACE, factory->CreateInstance(nullptr, IID_IPersist, &object));
  EXPECT_EQ(nullptr, object);
  EXPECT_EQ(E_POINTER, factory->CreateInstance(nullptr, IID_IUnknown, nullptr));
}

TEST(Interfaces, BothClassesHaveProgramNamesWithAndWithoutVersion) {
  const std::vector<std::pair<const wchar_t*, CLSID>> names{
      {L"KRN6_QB2002.QBDataExchange", CLSID_QBDataExchange},
      {L"KRN6_QB2002.QBDataExchange.1", CLSID_QBDataExchange},
      {L"KRN6_QB2002.cSubtotals", CLSID_cSubtotals},
      {L"KRN6_QB2002.cSubtotals.1", CLSID_cSubtotals}};
  for (const auto& [name, identifier] : names) {
    CLSID found{};
    EXPECT_EQ(S_OK, CLSIDFromProgID(name, &found));
    EXPECT_TRUE(IsEqualCLSID(identifier, found));
  }
  Held<IUnknown> object;
  EXPECT_EQ(REGDB_E_CLASSNOTREG, CoCreateInstance(CLSID_QBKRNEnums, nullptr, CLSCTX_INPROC_SERVER,
                                                  IID_IUnknown, object.ReceiveAny()));
}

}  // namespace
}  // namespace krnqb::testing
