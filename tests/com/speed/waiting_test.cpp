// What a host waits for: creating the component, and a large import, with and without the time that the
// host's own plan takes. Prints lines "NAME VALUE", medians of several runs in seconds.
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "host/component.h"
#include "test_processor/texts.h"

namespace krnqb::testing {
namespace {

constexpr int createdPerRun = 10'000;

std::size_t Runs() {
  const char* set = std::getenv("KRNQB_REPETITIONS");
  return set == nullptr ? 3 : static_cast<std::size_t>(std::atoi(set));
}

template <typename Action>
double SecondsOf(const Action& action) {
  const auto begun = std::chrono::steady_clock::now();
  action();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - begun).count();
}

void PrintMedian(const char* name, std::vector<double> seconds) {
  std::ranges::sort(seconds);
  std::printf("%s %.9f\n", name, seconds.at(seconds.size() / 2));
}

// Prints what an object takes that `create` returns a reference to.
template <typename Create>
void MeasureCreating(const char* name, const Create& create) {
  std::vector<double> seconds;
  for (std::size_t run = 0; run < Runs(); ++run) {
    const double all = SecondsOf([&] {
      for (int number = 0; number < createdPerRun; ++number) ASSERT_TRUE(create());
    });
    ASSERT_FALSE(::testing::Test::HasFatalFailure());
    seconds.push_back(all / createdPerRun);
  }
  PrintMedian(name, seconds);
}

TEST(Speed, OfCreatingAndReleasingAComponent) {
  Held<IClassFactory> factory;  // keeps the library in the process
  ASSERT_EQ(S_OK, CoGetClassObject(CLSID_QBDataExchange, CLSCTX_INPROC_SERVER, nullptr, IID_IClassFactory,
                                   factory.ReceiveAny()));
  MeasureCreating("create", [&] {
    Exchange exchange;
    factory->CreateInstance(nullptr, __uuidof(_QBDataExchange), exchange.ReceiveAny());
    return exchange;
  });
  MeasureCreating("createThroughRegistry", NewExchange);
}

TEST(Speed, OfAnImportOfAccounts) {
  const RecordedImport import{"1.1", "ald", "none"};
  const Replaying recording(Utf16(import.Name()));
  std::vector<double> seconds;
  std::vector<double> withHost;
  for (std::size_t run = 0; run < Runs(); ++run) {
    const auto plan = std::make_shared<PlanState>("recordings\\ald.kpf");
    const Exchange exchange = NewExchange();
    Configure(exchange, import, NewHostPlan(plan).Get());
    exchange->put_IncludeIncomeAccounts(VARIANT_FALSE);
    exchange->put_IncludePastPerformance(VARIANT_FALSE);
    VARIANT_BOOL imported = VARIANT_FALSE;
    withHost.push_back(SecondsOf([&] { EXPECT_EQ(S_OK, exchange->Go(&imported)); }));
    seconds.push_back(withHost.back() - plan->time.count());
    ASSERT_EQ(VARIANT_TRUE, imported);
    ASSERT_TRUE(import.Cells() == plan->tables.Cells());  // too long to be shown
  }
  PrintMedian("import", seconds);
  PrintMedian("importWithHost", withHost);
}

}  // namespace
}  // namespace krnqb::testing
