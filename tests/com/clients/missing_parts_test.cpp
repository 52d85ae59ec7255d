// Components that a machine may lack. The suite removes them before it starts these tests.
#include <gtest/gtest.h>

#include "host/client_sink.h"
#include "host/component.h"
#include "test_processor/texts.h"

namespace krnqb::testing {
namespace {

TEST(WithoutDocuments, ElementsAreNothing) {
  CLSID identifier{};
  Held<IUnknown> document;
  CLSIDFromProgID(L"MSXML2.DOMDocument.6.0", &identifier);
  ASSERT_HRESULT_FAILED(
      CoCreateInstance(identifier, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, document.ReceiveAny()));
  auto answers = UsualAnswers();
  answers.emplace_back(1, AccountsAnswer(1, {"Sales"}));
  answers.emplace_back(4, AccountsAnswer(4, {"Rent"}));
  const Answering answering(1, answers);
  const LateBound exchange = NewLateBoundExchange();
  exchange.Let(L"KRNProduct", Value(2));
  exchange.Set(L"KRNPlanData", Value(NewHostPlan(std::make_shared<PlanState>("recordings\\bri.kpf")).Get()));
  for (const wchar_t* member : {L"QBIncomeAccounts", L"QBExpenseAccounts", L"SelectedExpenses"}) {
    const Outcome read = exchange.Read(member);
    EXPECT_EQ(S_OK, read.result);
    EXPECT_EQ(VT_DISPATCH, read.value.Type());
    EXPECT_FALSE(read.value.AsObject());
  }
}

TEST(WithoutDocuments, ImportsStillWork) {
  for (const RecordedImport& import :
       {RecordedImport{"1.1", "ald", "all"}, RecordedImport{"2.0", "cor", "all"}}) {
    const Replaying recording(Utf16(import.Name()));
    const auto plan = std::make_shared<PlanState>("recordings\\" + import.product + ".kpf");
    const auto sink = ClientSink::Make();
    const Exchange exchange = NewExchange();
    const Connection connection(exchange.Get(), sink.Get());
    Configure(exchange, import, NewHostPlan(plan).Get());
    VARIANT_BOOL imported = VARIANT_FALSE;
    EXPECT_EQ(S_OK, exchange->Go(&imported));
    EXPECT_EQ(import.Cells(), plan->tables.Cells());
    EXPECT_EQ(import.Events(), sink->events);
  }
}

TEST(WithoutProcessor, AnImportReportsTheMissingProcessor) {
  const auto sink = ClientSink::Make();
  const LateBound exchange = NewLateBoundExchange();
  const Connection connection(exchange.Get(), sink.Get());
  exchange.Let(L"IncludeExpenseAccounts", Value(true));
  for (int time = 1; time <= 2; ++time) {
    const Outcome imported = exchange.Call(L"Go");
    EXPECT_EQ(S_OK, imported.result);
    EXPECT_EQ(0, imported.value.AsLong());
    EXPECT_EQ(429, exchange.Read(L"ErrorNumber").value.AsLong());
    EXPECT_EQ(
        L"You must have a U.S. version of one of the following Quickbooks 2002 or 2003 products to "
        L"perform this import:  Quickbooks Premier, Quickbooks Premier Accountant Edition, or "
        L"QuickBooks Pro.",
        exchange.Read(L"ErrorDescription").value.AsText());
    EXPECT_EQ((std::vector<std::string>{"ProgressBarChange 20 Processing..."}), sink->events);
    sink->events.clear();
  }
}

TEST(WithoutProcessor, TheRestStillWorks) {
  const LateBound exchange = NewLateBoundExchange();
  const Outcome answer = exchange.Call(L"QbSerialize", {L"<request/>"});
  EXPECT_EQ(S_OK, answer.result);
  EXPECT_TRUE(answer.value.IsEmpty());
  EXPECT_EQ(L"<tables>\r\n\r\n</tables>",
            exchange.Call(L"KRNDeserialize", {L"<AccountQueryRs requestID=\"3\"/>"}).value.AsText());
}

}  // namespace
}  // namespace krnqb::testing
