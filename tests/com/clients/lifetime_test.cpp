// Lifetimes of objects and of the DLL, which is loaded by path so that its own count can be queried.
#include <gtest/gtest.h>

#include <memory>

#include "host/client_sink.h"
#include "host/component.h"
#include "host/library.h"

namespace krnqb::testing {
namespace {

TEST(Lifetime, OtherClassesAreNotAvailable) {
  const Library library;
  void* object = reinterpret_cast<void*>(0x10);
  EXPECT_EQ(CLASS_E_CLASSNOTAVAILABLE, library.ClassObject(IID_IUnknown, IID_IClassFactory, &object));
  EXPECT_EQ(nullptr, object);
  object = reinterpret_cast<void*>(0x10);
  EXPECT_EQ(CLASS_E_CLASSNOTAVAILABLE, library.ClassObject(CLSID_QBKRNEnums, IID_IClassFactory, &object));
  EXPECT_EQ(nullptr, object);
  object = reinterpret_cast<void*>(0x10);
  EXPECT_EQ(E_NOINTERFACE, library.ClassObject(CLSID_QBDataExchange, IID_IDispatch, &object));
  EXPECT_EQ(nullptr, object);
  EXPECT_EQ(S_OK, library.CanUnload());
}

TEST(Lifetime, EveryKindOfObjectKeepsTheLibraryLoaded) {
  const Library library;
  ASSERT_EQ(S_OK, library.CanUnload());
  {
    Held<IClassFactory> factory;
    ASSERT_EQ(S_OK, library.ClassObject(CLSID_cSubtotals, IID_IClassFactory, factory.ReceiveAny()));
    EXPECT_EQ(S_FALSE, library.CanUnload());
    EXPECT_EQ(S_OK, factory->LockServer(TRUE));
    Held<IClassFactory> other;
    library.ClassObject(CLSID_cSubtotals, IID_IClassFactory, other.ReceiveAny());
    factory.Reset();
    other.Reset();
    EXPECT_EQ(S_FALSE, library.CanUnload());
    library.ClassObject(CLSID_cSubtotals, IID_IClassFactory, factory.ReceiveAny());
    factory->LockServer(FALSE);
  }
  EXPECT_EQ(S_OK, library.CanUnload());
  for (const CLSID& identifier : {CLSID_QBDataExchange, CLSID_cSubtotals}) {
    Held<IDispatch> object = library.New<IDispatch>(identifier);
    EXPECT_EQ(S_FALSE, library.CanUnload());
    object.Reset();
    EXPECT_EQ(S_OK, library.CanUnload());
  }
  Held<IConnectionPoint> point;
  library.New<IConnectionPointContainer>(CLSID_QBDataExchange)
      ->FindConnectionPoint(__uuidof(__QBDataExchange), point.Receive());
  EXPECT_EQ(S_FALSE, library.CanUnload());
  point.Reset();
  EXPECT_EQ(S_OK, library.CanUnload());

  Held<IDispatch> tables;
  library.New<_QBDataExchange>(CLSID_QBDataExchange)->GetTablesAffected(tables.Receive());
  EXPECT_EQ(S_FALSE, library.CanUnload());
  Value enumerator = LateBound(tables).Invoke(DISPID_NEWENUM, DISPATCH_METHOD, {}).value;
  tables.Reset();
  EXPECT_EQ(S_FALSE, library.CanUnload());
  enumerator = Value();
  EXPECT_EQ(S_OK, library.CanUnload());
}

TEST(Lifetime, TenThousandObjectsAreReleased) {
  const Library library;
  const long before = HostObject::Alive();
  std::vector<Exchange> objects;
  std::vector<std::unique_ptr<Connection>> connections;
  for (int number = 0; number < 10000; ++number) {
    objects.push_back(library.New<_QBDataExchange>(CLSID_QBDataExchange));
    if (number % 10 != 0) continue;
    // A sink that holds the object whose events it receives: both live until it is unadvised.
    const auto sink = ClientSink::Make();
    sink->at = [holding = objects.back()](const std::string&) { return holding ? S_OK : E_FAIL; };
    connections.push_back(std::make_unique<Connection>(objects.back().Get(), sink.Get()));
  }
  objects.clear();
  EXPECT_EQ(S_FALSE, library.CanUnload());
  EXPECT_EQ(before + 1000, HostObject::Alive());
  for (auto& connection : connections) connection->End();
  EXPECT_EQ(before, HostObject::Alive());
  EXPECT_EQ(S_OK, library.CanUnload());
}

// An import's plan that records its own destruction.
Held<IDispatch> PlanThatReports(std::string& order, const char* name) {
  const auto object = NamedObject::Make();
  const std::shared_ptr<void> ending(nullptr, [&order, name](void*) { order += name; });
  object->Add(L"Nothing", DISPATCH_METHOD, [ending](const HostCall&) { return S_OK; });
  return object.As<IDispatch>();
}

TEST(Lifetime, HostObjectsAreReleasedInOrderAtTheEnd) {
  std::string order;
  {
    const Exchange exchange = NewExchange();
    exchange->putref_KRNPlanData(Value(PlanThatReports(order, "plan ").Get()).Raw());
    exchange->putref_mQBDataExchangeObject(PlanThatReports(order, "slot ").Get());
    EXPECT_EQ("", order);
  }
  EXPECT_EQ("slot plan ", order);
}

TEST(Lifetime, ReplacedObjectsAreReleasedAtOnce) {
  std::string order;
  const Exchange exchange = NewExchange();
  exchange->putref_KRNPlanData(Value(PlanThatReports(order, "first ").Get()).Raw());
  exchange->putref_KRNPlanData(Value(PlanThatReports(order, "second ").Get()).Raw());
  EXPECT_EQ("first ", order);
}

TEST(Lifetime, TheLibraryIsLoadedAHundredTimesInOneProcess) {
  const Replaying recording(L"2.0-ald-none");
  const RecordedImport import{"2.0", "ald", "none"};
  CoFreeUnusedLibrariesEx(0, 0);
  for (int time = 0; time < 100; ++time) {
    const auto plan = std::make_shared<PlanState>("recordings\\ald.kpf");
    {
      const Library library;
      const Exchange exchange = library.New<_QBDataExchange>(CLSID_QBDataExchange);
      Configure(exchange, import, NewHostPlan(plan).Get());
      VARIANT_BOOL imported = VARIANT_FALSE;
      ASSERT_EQ(S_OK, exchange->Go(&imported));
    }
    ASSERT_EQ(import.Cells(), plan->tables.Cells()) << time;
    ASSERT_EQ(nullptr, GetModuleHandleW(L"KRN6_QB2002.dll")) << time;
  }
}

}  // namespace
}  // namespace krnqb::testing
