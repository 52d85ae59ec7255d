// The session, the versions and the company check, through automation.
#include <gtest/gtest.h>

#include "host/component.h"
#include "qbxml/request_catalogue.h"
#include "test_processor/texts.h"

namespace krnqb::testing {
namespace {

using Answers = std::vector<std::pair<int, std::string>>;

TEST(Session, ReadsTheCompanysPathAndTheProcessorsVersions) {
  const Answering answers(2, UsualAnswers());
  const LateBound exchange = NewLateBoundExchange();
  exchange.Let(L"QBCompany", L"C:\\elsewhere.qbw");
  EXPECT_EQ(L"C:\\Books\\test.qbw", exchange.Read(L"QBCompany").value.AsText());
  EXPECT_EQ(2, exchange.Read(L"QBMajorVersion").value.AsLong());
  EXPECT_EQ(0, exchange.Read(L"QBMinorVersion").value.AsLong());
  EXPECT_EQ(4, exchange.Read(L"QBStartingMonth").value.AsLong());
  EXPECT_EQ(0, exchange.Read(L"ErrorNumber").value.AsLong());
}

struct Check {
  const char* what;
  Answers answers;
  std::wstring path;
  long number;
  std::wstring description;
};

TEST(Session, ReportsAFailedCompanyCheck) {
  const std::string versions = UsualAnswers().at(0).second;
  const std::vector<Check> checks{
      {"no company record",
       {{100, versions}, {101, "<QBXML/>"}},
       L"C:\\set.qbw",
       -2147221404,
       L"To perform the import you need to provide the QuickBooks fiscal year start month."},
      {"another language",
       {{100, versions},
        {101, "<QBXML><CompanyRet><FirstMonthFiscalYear>Avril</FirstMonthFiscalYear></CompanyRet></QBXML>"}},
       L"C:\\set.qbw",
       -2147221504,
       L"To perform the import from QuickBooks Pro you need the United States version of QuickBooks Pro and "
       L"an English regional setting locale."},
      {"an old version",
       {{100, "<QBXML><SupportedQBXMLVersion>1.0</SupportedQBXMLVersion></QBXML>"},
        {101, UsualAnswers().at(1).second}},
       L"",
       -2147221504,
       L"Your QuickBooks must be updated to R2."}};
  for (const Check& check : checks) {
    SCOPED_TRACE(check.what);
    const Answering answers(1, check.answers);
    const LateBound exchange = NewLateBoundExchange();
    exchange.Let(L"QBCompany", L"C:\\set.qbw");
    EXPECT_EQ(check.path, exchange.Read(L"QBCompany").value.AsText());
    EXPECT_EQ(check.number, exchange.Read(L"ErrorNumber").value.AsLong());
    EXPECT_EQ(check.description, exchange.Read(L"ErrorDescription").value.AsText());
  }
}

TEST(Session, SkipsTheCheckIfTheHostSetTheFiscalMonth) {
  const Answering answers(1, {UsualAnswers().at(0), {101, "<QBXML/>"}});
  const LateBound exchange = NewLateBoundExchange();
  exchange.Let(L"QBStartingMonth", Value(7));
  EXPECT_EQ(L"C:\\Books\\test.qbw", exchange.Read(L"QBCompany").value.AsText());
  EXPECT_EQ(7, exchange.Read(L"QBStartingMonth").value.AsLong());
}

TEST(Session, ComparesVersionsExactly) {
  const Answering answers(1, UsualAnswers());
  const LateBound exchange = NewLateBoundExchange();
  EXPECT_EQ(VT_BOOL, exchange.Call(L"IsSDKVersionSupported", {L"1.1"}).value.Type());
  EXPECT_EQ(-1, exchange.Call(L"IsSDKVersionSupported", {L"1.1"}).value.AsLong());
  EXPECT_EQ(0, exchange.Call(L"IsSDKVersionSupported", {L"1.10"}).value.AsLong());
  const Outcome quoted = exchange.Call(L"IsSDKVersionSupported", {L"1\""});
  EXPECT_EQ(DISP_E_EXCEPTION, quoted.result);
  EXPECT_EQ(E_FAIL, quoted.exception.scode);
}

TEST(Session, SendsARequestVerbatimAndReturnsTheResponseText) {
  Answers recorded = UsualAnswers();
  recorded.emplace_back(50, "<answer>caf\u00e9</answer>");
  const Answering answers(1, recorded);
  const LateBound exchange = NewLateBoundExchange();
  const std::wstring request = Utf16(BuildRequest(50, "", ""));
  const Outcome answer = exchange.Call(L"QbSerialize", {Value(request)});
  EXPECT_EQ(VT_BSTR, answer.value.Type());
  EXPECT_EQ(L"<answer>caf\u00e9</answer>", answer.value.AsText());
  Value variable(request);
  EXPECT_EQ(L"<answer>caf\u00e9</answer>",
            exchange.Call(L"QbSerialize", {Value::Reference(variable)}).value.AsText());
  const Outcome unknown = exchange.Call(L"QbSerialize", {L"<none/>"});
  EXPECT_EQ(DISP_E_EXCEPTION, unknown.result);
  EXPECT_EQ(E_FAIL, unknown.exception.scode);
  EXPECT_EQ(L"the recording holds no answer to the request <none/>", unknown.description);
}

TEST(Session, SendsNoRequestThatIsNoText) {
  const Answering answers(1, UsualAnswers());
  const LateBound exchange = NewLateBoundExchange();
  EXPECT_TRUE(exchange.Call(L"QbSerialize", {Value()}).value.IsEmpty());
  const Outcome nothing = exchange.Call(L"QbSerialize", {Value(static_cast<IDispatch*>(nullptr))});
  EXPECT_EQ(DISP_E_EXCEPTION, nothing.result);
  EXPECT_EQ(RunTimeError(91), nothing.exception.scode);
  const Outcome object = exchange.Call(L"QbSerialize", {Value(NamedObject::Make().Get())});
  EXPECT_EQ(DISP_E_EXCEPTION, object.result);
  EXPECT_EQ(RunTimeError(13), object.exception.scode);
}

TEST(Session, FailsTheVersionCheckIfQuickBooksIsUnreachable) {
  const Variable refused(L"KRNQB_REFUSED_CALL", L"creation");
  const Variable number(L"KRNQB_REFUSAL_NUMBER", L"80040154");
  const LateBound exchange = NewLateBoundExchange();
  const Outcome supported = exchange.Call(L"IsSDKVersionSupported");
  EXPECT_EQ(DISP_E_EXCEPTION, supported.result);
  EXPECT_EQ(RunTimeError(91), supported.exception.scode);
  EXPECT_EQ(429, exchange.Read(L"ErrorNumber").value.AsLong());
}

}  // namespace
}  // namespace krnqb::testing
