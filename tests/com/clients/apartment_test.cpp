// A client in the multithreaded apartment reaches the object through the standard marshaller.
#include <gtest/gtest.h>

#include <thread>

#include "host/component.h"

namespace krnqb::testing {
namespace {

TEST(Apartments, ServeClientsOfTheMultithreadedApartment) {
  HRESULT created = E_FAIL;
  HRESULT put = E_FAIL;
  long year = 0;
  HRESULT opened = S_OK;
  bool marshalled = false;
  std::thread client([&] {
    CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    {
      Exchange exchange;
      created = CoCreateInstance(CLSID_QBDataExchange, nullptr, CLSCTX_INPROC_SERVER,
                                 __uuidof(_QBDataExchange), exchange.ReceiveAny());
      if (SUCCEEDED(created)) {
        // A proxy: the object lives in an apartment of its own.
        Held<IUnknown> proxy;
        marshalled = SUCCEEDED(exchange->QueryInterface(IID_IMarshal, proxy.ReceiveAny()));
        put = exchange->put_KRNStartingYear(2004);
        short value = 0;
        exchange->get_StartingYear(&value);
        year = value;
        VARIANT_BOOL result = VARIANT_TRUE;
        opened = exchange->KRNOpenPlan(Text(L"plan").Get(), &result);
      }
    }
    CoUninitialize();
  });
  client.join();
  EXPECT_EQ(S_OK, created);
  EXPECT_TRUE(marshalled);
  EXPECT_EQ(S_OK, put);
  EXPECT_EQ(2003, year);
  EXPECT_EQ(RunTimeError(91), opened);
}

}  // namespace
}  // namespace krnqb::testing
