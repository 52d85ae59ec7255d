// Complete imports by clients written in C++: the plan's cells and the events must match the command line's.
#include <gtest/gtest.h>

#include <cfloat>

#include "host/client_sink.h"
#include "host/component.h"
#include "test_processor/texts.h"

namespace krnqb::testing {
namespace {

class Imports : public ::testing::TestWithParam<RecordedImport> {};

TEST_P(Imports, EarlyBoundMatchTheCommandLine) {
  const Replaying recording(Utf16(GetParam().Name()));
  const auto plan = std::make_shared<PlanState>("recordings\\" + GetParam().product + ".kpf");
  const auto sink = ClientSink::Make();
  const Exchange exchange = NewExchange();
  const Connection connection(exchange.Get(), sink.Get());
  Configure(exchange, GetParam(), NewHostPlan(plan).Get());

  VARIANT_BOOL imported = VARIANT_FALSE;
  ASSERT_EQ(S_OK, exchange->Go(&imported));
  EXPECT_EQ(VARIANT_TRUE, imported);
  long number = 7;
  exchange->get_ErrorNumber(&number);
  EXPECT_EQ(0, number);
  EXPECT_EQ(GetParam().Cells(), plan->tables.Cells());
  EXPECT_FALSE(GetParam().Cells().empty());
  EXPECT_EQ(GetParam().Events(), sink->events);
}

TEST_P(Imports, LateBoundMatchTheCommandLine) {
  const Replaying recording(Utf16(GetParam().Name()));
  const auto plan = std::make_shared<PlanState>("recordings\\" + GetParam().product + ".kpf");
  const auto sink = ClientSink::Make();
  const LateBound exchange = NewLateBoundExchange();
  const Connection connection(exchange.Get(), sink.Get());
  Configure(exchange, GetParam(), NewHostPlan(plan, MemberKind::Properties).Get());

  const Outcome imported = exchange.Call(L"Go");
  ASSERT_EQ(S_OK, imported.result);
  EXPECT_EQ(VT_BOOL, imported.value.Type());
  EXPECT_EQ(-1, imported.value.AsLong());
  EXPECT_EQ(0, exchange.Read(L"ErrorNumber").value.AsLong());
  EXPECT_EQ(GetParam().Cells(), plan->tables.Cells());
  EXPECT_EQ(GetParam().Events(), sink->events);
}

INSTANTIATE_TEST_SUITE_P(All, Imports, ::testing::ValuesIn(RecordedImports()), [](const auto& tested) {
  std::string name = tested.param.Name();
  for (char& character : name) {
    if (character == '-' || character == '.') character = '_';
  }
  return name;
});

// Imports again with a fresh plan; returns whether the cells match the command line's.
bool ImportsAlike(const RecordedImport& import, const Held<IDispatch>& object, const PlanTables& tables) {
  const Replaying recording(Utf16(import.Name()));
  const Exchange exchange = NewExchange();
  Configure(exchange, import, object.Get());
  VARIANT_BOOL imported = VARIANT_FALSE;
  EXPECT_EQ(S_OK, exchange->Go(&imported));
  long number = 7;
  exchange->get_ErrorNumber(&number);
  Text description;
  exchange->get_ErrorDescription(description.Receive());
  EXPECT_EQ(0, number) << Utf8(description.View());
  return imported == VARIANT_TRUE && import.Cells() == tables.Cells();
}

const RecordedImport whole{"1.1", "ald", "all"};

TEST(ImportsOtherwise, ReadAPlanWithACollectionOfTables) {
  const auto plan = std::make_shared<PlanState>("recordings\\ald.kpf");
  EXPECT_TRUE(ImportsAlike(whole, NewHostPlan(plan, MemberKind::Collection), plan->tables));
}

TEST(ImportsOtherwise, ReadAPlanWithTypedMembers) {
  const auto plan = std::make_shared<PlanState>("recordings\\ald.kpf");
  EXPECT_TRUE(ImportsAlike(whole, NewTypedPlan(plan), plan->tables));
  EXPECT_FALSE(plan->calls.empty());
}

TEST(ImportsOtherwise, AcceptAProcessorThatWritesThirtyTwoBitVersions) {
  const Variable bits(L"KRNQB_VERSION_BITS", L"32");
  const auto plan = std::make_shared<PlanState>("recordings\\ald.kpf");
  EXPECT_TRUE(ImportsAlike({"2.0", "ald", "all"}, NewHostPlan(plan), plan->tables));
}

// Visual Basic and other hosts change the x87 precision; the figures must not depend on it, and the setting
// must be left unchanged.
TEST(ImportsOtherwise, IgnoreASinglePrecisionFloatingPointUnit) {
  unsigned short before = 0;
  asm volatile("fnstcw %0" : "=m"(before));
  const unsigned short single = static_cast<unsigned short>(before & ~0x0300U);
  asm volatile("fldcw %0" : : "m"(single));
  const auto plan = std::make_shared<PlanState>("recordings\\ald.kpf");
  const Exchange exchange = NewExchange();
  const Replaying recording(Utf16(whole.Name()));
  Configure(exchange, whole, NewHostPlan(plan).Get());
  VARIANT_BOOL imported = VARIANT_FALSE;
  const HRESULT result = exchange->Go(&imported);
  unsigned short after = 0;
  asm volatile("fnstcw %0" : "=m"(after));
  asm volatile("fldcw %0" : : "m"(before));
  EXPECT_EQ(S_OK, result);
  EXPECT_EQ(single, after);
  EXPECT_EQ(whole.Cells(), plan->tables.Cells());
}

TEST(ImportsOtherwise, RunTwiceOnOneObject) {
  const Replaying recording(Utf16(whole.Name()));
  const auto first = std::make_shared<PlanState>("recordings\\ald.kpf");
  const auto second = std::make_shared<PlanState>("recordings\\ald.kpf");
  const Exchange exchange = NewExchange();
  VARIANT_BOOL imported = VARIANT_FALSE;
  Configure(exchange, whole, NewHostPlan(first).Get());
  EXPECT_EQ(S_OK, exchange->Go(&imported));
  Configure(exchange, whole, NewHostPlan(second).Get());
  EXPECT_EQ(S_OK, exchange->Go(&imported));
  EXPECT_EQ(whole.Cells(), first->tables.Cells());
  EXPECT_EQ(whole.Cells(), second->tables.Cells());
}

TEST(ImportsOtherwise, CallTheProcessorInOrderAndReleaseIt) {
  const Replaying recording(L"1.1-ald-none");
  DeleteFileW(L"calls.txt");
  const Variable log(L"KRNQB_CALL_LOG", L"calls.txt");
  const auto plan = std::make_shared<PlanState>("recordings\\ald.kpf");
  const Exchange exchange = NewExchange();
  Configure(exchange, {"1.1", "ald", "none"}, NewHostPlan(plan).Get());
  VARIANT_BOOL imported = VARIANT_FALSE;
  ASSERT_EQ(S_OK, exchange->Go(&imported));
  const std::string calls = FileText("calls.txt");
  EXPECT_TRUE(
      calls.starts_with("creation\n"
                        "connection KRN6_QB2002.dll, Korrin Software Data Exchange Component\n"
                        "session \"C:\\Books\\nursery.qbw\", mode 2\n"))
      << calls;
  EXPECT_TRUE(calls.ends_with("released\n")) << calls;
  EXPECT_EQ(std::string::npos, calls.find("session ended"));
  EXPECT_EQ(std::string::npos, calls.find("connection closed"));
}

}  // namespace
}  // namespace krnqb::testing
