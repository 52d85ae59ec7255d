// Events: who receives them, in which order, and what handlers may do.
#include <gtest/gtest.h>
#include <olectl.h>

#include <memory>

#include "host/client_sink.h"
#include "host/component.h"

namespace krnqb::testing {
namespace {

const RecordedImport expected{"1.1", "ald", "none"};

struct Import {
  Replaying recording{L"1.1-ald-none"};
  std::shared_ptr<PlanState> plan = std::make_shared<PlanState>("recordings\\ald.kpf");
  Exchange exchange = NewExchange();

  Import() { Configure(exchange, {"1.1", "ald", "none"}, NewHostPlan(plan).Get()); }
  bool Go() const {
    VARIANT_BOOL imported = VARIANT_FALSE;
    return exchange->Go(&imported) == S_OK && imported == VARIANT_TRUE;
  }
  bool GoesWell() const {
    long number = 7;
    return Go() && exchange->get_ErrorNumber(&number) == S_OK && number == 0 &&
           plan->tables.Cells() == expected.Cells();
  }
};

TEST(Events, ReachEverySinkInAdviseOrder) {
  const Import import;
  std::string order;
  const auto first = ClientSink::Make();
  const auto second = ClientSink::Make();
  const Connection one(import.exchange.Get(), first.Get());
  const Connection two(import.exchange.Get(), second.Get());
  ASSERT_EQ(S_OK, one.Result());
  ASSERT_EQ(S_OK, two.Result());
  first->at = [&](const std::string&) {
    order += '1';
    return S_OK;
  };
  second->at = [&](const std::string&) {
    order += '2';
    return S_OK;
  };
  EXPECT_TRUE(import.GoesWell());
  EXPECT_EQ(expected.Events(), first->events);
  EXPECT_EQ(expected.Events(), second->events);
  EXPECT_EQ("121212121212", order);
}

TEST(Events, StopAfterUnadvise) {
  const Import import;
  const auto sink = ClientSink::Make();
  Connection connection(import.exchange.Get(), sink.Get());
  connection.End();
  EXPECT_TRUE(import.GoesWell());
  EXPECT_TRUE(sink->events.empty());
}

TEST(Events, MayBeUnadvisedByTheirOwnHandler) {
  const Import import;
  const auto leaving = ClientSink::Make();
  const auto staying = ClientSink::Make();
  auto connection = std::make_unique<Connection>(import.exchange.Get(), leaving.Get());
  const Connection other(import.exchange.Get(), staying.Get());
  leaving->at = [&](const std::string&) {
    connection.reset();
    return S_OK;
  };
  EXPECT_TRUE(import.GoesWell());
  EXPECT_EQ(1U, leaving->events.size());
  EXPECT_EQ(expected.Events(), staying->events);
}

TEST(Events, MayBeUnadvisedByAnotherHandler) {
  const Import import;
  const auto first = ClientSink::Make();
  const auto second = ClientSink::Make();
  const Connection one(import.exchange.Get(), first.Get());
  auto two = std::make_unique<Connection>(import.exchange.Get(), second.Get());
  first->at = [&](const std::string& event) {
    if (event == "ProgressBarChange 60 Processing...") two.reset();
    return S_OK;
  };
  EXPECT_TRUE(import.GoesWell());
  EXPECT_EQ(expected.Events(), first->events);
  EXPECT_GE(second->events.size(), 2U);
  EXPECT_LE(second->events.size(), 3U);
}

TEST(Events, MayBeAdvisedByAHandler) {
  const Import import;
  const auto first = ClientSink::Make();
  const auto second = ClientSink::Make();
  const Connection one(import.exchange.Get(), first.Get());
  std::unique_ptr<Connection> two;
  first->at = [&](const std::string& event) {
    if (event == "ProgressBarChange 60 Processing...") {
      two = std::make_unique<Connection>(import.exchange.Get(), second.Get());
    }
    return S_OK;
  };
  EXPECT_TRUE(import.GoesWell());
  ASSERT_FALSE(second->events.empty());
  EXPECT_EQ("AfterImport", second->events.back());
}

TEST(Events, ContinueAfterASinkFails) {
  const Import import;
  const auto failing = ClientSink::Make();
  const auto other = ClientSink::Make();
  const Connection one(import.exchange.Get(), failing.Get());
  const Connection two(import.exchange.Get(), other.Get());
  failing->at = [](const std::string&) { return E_FAIL; };
  EXPECT_TRUE(import.GoesWell());
  EXPECT_EQ(expected.Events(), failing->events);
  EXPECT_EQ(expected.Events(), other->events);
}

TEST(Events, AllowHandlersToCallTheComponent) {
  const Import import;
  const auto sink = ClientSink::Make();
  const Connection connection(import.exchange.Get(), sink.Get());
  short year = 0;
  sink->at = [&](const std::string&) {
    import.exchange->put_GrowthRateIncome(33);
    return import.exchange->get_StartingYear(&year);
  };
  EXPECT_TRUE(import.GoesWell());
  EXPECT_EQ(2002, year);
}

TEST(Events, AllowAHandlerToReleaseTheLastReference) {
  const Replaying recording(L"1.1-ald-none");
  const auto plan = std::make_shared<PlanState>("recordings\\ald.kpf");
  const auto sink = ClientSink::Make();
  Exchange exchange = NewExchange();
  Configure(exchange, {"1.1", "ald", "none"}, NewHostPlan(plan).Get());
  auto connection = std::make_unique<Connection>(exchange.Get(), sink.Get());
  _QBDataExchange* running = exchange.Get();
  sink->at = [&](const std::string& event) {
    if (event == "ProgressBarChange 40 Processing...") {
      connection.reset();
      exchange.Reset();
    }
    return S_OK;
  };
  VARIANT_BOOL imported = VARIANT_FALSE;
  EXPECT_EQ(S_OK, running->Go(&imported));
  EXPECT_EQ(VARIANT_TRUE, imported);
  EXPECT_FALSE(exchange);
  const RecordedImport import{"1.1", "ald", "none"};
  EXPECT_EQ(import.Cells(), plan->tables.Cells());
}

TEST(Events, RefuseAnObjectThatIsNotASink) {
  const Exchange exchange = NewExchange();
  const auto container = exchange.As<IConnectionPointContainer>();
  Held<IConnectionPoint> point;
  ASSERT_EQ(S_OK, container->FindConnectionPoint(__uuidof(__QBDataExchange), point.Receive()));
  DWORD cookie = 0;
  EXPECT_EQ(E_POINTER, point->Advise(nullptr, &cookie));
  EXPECT_EQ(CONNECT_E_NOCONNECTION, point->Unadvise(4711));
  EXPECT_EQ(CONNECT_E_NOCONNECTION, container->FindConnectionPoint(IID_IDispatch, point.Receive()));
  EXPECT_FALSE(point);
}

TEST(Events, APointWithoutItsComponentReleasesAndRefusesSinks) {
  const long before = HostObject::Alive();
  Exchange exchange = NewExchange();
  Held<IConnectionPoint> point;
  ASSERT_EQ(S_OK, exchange.As<IConnectionPointContainer>()->FindConnectionPoint(__uuidof(__QBDataExchange),
                                                                                point.Receive()));
  DWORD advised = 0;
  ASSERT_EQ(S_OK, point->Advise(ClientSink::Make().Get(), &advised));
  EXPECT_EQ(before + 1, HostObject::Alive());
  exchange.Reset();
  EXPECT_EQ(before, HostObject::Alive());
  EXPECT_EQ(CONNECT_E_NOCONNECTION, point->Unadvise(advised));
  DWORD refused = 7;
  EXPECT_EQ(CO_E_OBJNOTCONNECTED, point->Advise(ClientSink::Make().Get(), &refused));
  EXPECT_EQ(0U, refused);
  EXPECT_EQ(before, HostObject::Alive());
}

TEST(Events, AreNotRaisedIfNothingIsImported) {
  const auto sink = ClientSink::Make();
  const Exchange exchange = NewExchange();
  const Connection connection(exchange.Get(), sink.Get());
  VARIANT_BOOL imported = VARIANT_FALSE;
  EXPECT_EQ(S_OK, exchange->Go(&imported));
  EXPECT_EQ(VARIANT_TRUE, imported);
  EXPECT_TRUE(sink->events.empty());
}

}  // namespace
}  // namespace krnqb::testing
