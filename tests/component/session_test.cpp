#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

#include "expected_sequences.h"
#include "fakes/test_host.h"
#include "thrown_error.h"

namespace krnqb {
namespace {

using expected::Sequence;
using fakes::TestHost;
using fakes::TextOf;

constexpr auto openLine = "OpenConnection KRN6_QB2002.dll, Korrin Software Data Exchange Component";
constexpr auto beginLine = "BeginSession \"\" 2";

TEST(QbSerialize, OpensTheSessionAndReturnsTheResponseText) {
  TestHost host;
  host.quickBooks->answers["7"] = "any text, \xC3\xA9";
  EXPECT_EQ(TextOf(host.component.QbSerialize(Variant("<X requestID=\"7\"/>"))), "any text, \xC3\xA9");
  EXPECT_EQ(host.journal->Text(), expected::OpensSession() + "ProcessRequest 7\n");
  EXPECT_EQ(host.quickBooks->requests.back(), "<X requestID=\"7\"/>");
}

TEST(QbSerialize, SendsNothingElseInAnOpenSession) {
  TestHost host;
  host.component.QbSerialize(Variant("<X requestID=\"7\"/>"));
  host.journal->Clear();
  host.component.QbSerialize(Variant("<X requestID=\"8\"/>"));
  EXPECT_EQ(host.journal->Text(), expected::Asks("8"));
}

TEST(QbSerialize, SendsTheTextOfANumber) {
  TestHost host;
  host.component.QbSerialize(Variant(std::int16_t{5}));
  EXPECT_EQ(host.quickBooks->requests.back(), "5");
}

TEST(QbSerialize, ReturnsEmptyWhenQuickBooksIsUnreachable) {
  TestHost host;
  host.journal->Fail("create processor", Error(error_number::cannotCreateObject));
  EXPECT_TRUE(host.component.QbSerialize(Variant("<X requestID=\"7\"/>")).IsEmpty());
  EXPECT_EQ(host.journal->Text(), "create processor\n");
}

TEST(QbSerialize, RaisesTheErrorOfAnOpenSession) {
  TestHost host;
  host.journal->Fail("ProcessRequest 7", Error(-2147220480, "the request could not be parsed"));
  const auto error = tests::ErrorOf([&host] { host.component.QbSerialize(Variant("<X requestID=\"7\"/>")); });
  ASSERT_TRUE(error.has_value());
  EXPECT_EQ(error->Number(), -2147220480);
  EXPECT_EQ(error->Description(), "the request could not be parsed");
  EXPECT_EQ(host.component.ErrorNumber(), 0);
  host.journal->Clear();
  host.component.QbSerialize(Variant("<X requestID=\"8\"/>"));
  EXPECT_EQ(host.journal->Text(), expected::Asks("8")) << "the session stays open";
}

TEST(QbSerialize, RaisesForAValueWithoutText) {
  TestHost host;
  EXPECT_EQ(tests::NumberThrownBy([&host] { host.component.QbSerialize(Variant(ObjectReference())); }), 91);
  EXPECT_EQ(
      tests::NumberThrownBy([&host] { host.component.QbSerialize(Variant(XmlElement::Parse("<a/>"))); }), 13);
}

TEST(QbSerialize, ChecksTheSessionBeforeTheText) {
  TestHost host;
  EXPECT_EQ(tests::NumberThrownBy([&host] { host.component.QbSerialize(Variant(ObjectReference())); }), 91);
  EXPECT_EQ(host.journal->Text(), expected::OpensSession());
}

TEST(QbSerialize, ReturnsEmptyWithoutASessionForAnyValue) {
  TestHost host;
  host.journal->Fail("create processor", Error(error_number::cannotCreateObject));
  Variant answer("not empty");
  EXPECT_EQ(tests::NumberThrownBy([&] { answer = host.component.QbSerialize(Variant(ObjectReference())); }),
            0);
  EXPECT_TRUE(answer.IsEmpty());
  EXPECT_EQ(host.component.ErrorNumber(), 429);
}

TEST(QbSerialize, RaisesOtherExceptionsAsInternalErrorOrOutOfMemory) {
  TestHost host;
  host.journal->OnOccurrence("ProcessRequest 7", 1, [] { throw std::runtime_error("x"); });
  host.journal->OnOccurrence("ProcessRequest 7", 2, [] { throw std::bad_alloc(); });
  for (const std::int32_t number : {51, 7}) {
    try {
      host.component.QbSerialize(Variant("<X requestID=\"7\"/>"));
      ADD_FAILURE() << "nothing was raised";
    } catch (const Error& error) {
      EXPECT_EQ(error.Number(), number);
    } catch (const std::exception& other) {
      ADD_FAILURE() << "raised an exception other than Error: " << other.what();
    }
  }
}

TEST(Session, ReportsThatNoProductIsInstalledWhenNoProcessorCanBeCreated) {
  TestHost host;
  host.journal->Fail("create processor", Error(error_number::cannotCreateObject));
  EXPECT_EQ(host.component.QBCompany(), "");
  EXPECT_EQ(host.component.ErrorNumber(), 429);
  EXPECT_EQ(
      host.component.ErrorDescription(),
      "You must have a U.S. version of one of the following Quickbooks 2002 or 2003 products to perform this "
      "import:  Quickbooks Premier, Quickbooks Premier Accountant Edition, or QuickBooks Pro.");
}

TEST(Session, WithoutAProcessorFactoryIsTheSameAsWithoutAProduct) {
  TestHost host;
  OutsideWorld world = host.World();
  world.processors = nullptr;
  QBDataExchange component(world);
  EXPECT_EQ(component.QBCompany(), "");
  EXPECT_EQ(component.ErrorNumber(), 429);
}

TEST(Session, ReportsThatTheCompanyFileMustBeOpen) {
  TestHost host;
  host.journal->Fail(beginLine, Error(-2147220458, "own words of the processor"));
  EXPECT_EQ(host.component.QBCompany(), "");
  EXPECT_EQ(host.component.ErrorNumber(), -2147220458);
  EXPECT_EQ(host.component.ErrorDescription(),
            "Your QuickBooks company file must be open to perform this import.");
}

struct RefusalCase {
  const char* name;
  const char* line;
  std::function<void()> refuse;
  std::int32_t number;
  const char* description;
};

class SessionRefusal : public testing::TestWithParam<RefusalCase> {};

TEST_P(SessionRefusal, IsReportedWithNumberAndDescription) {
  TestHost host;
  host.journal->On(GetParam().line, GetParam().refuse);
  EXPECT_EQ(host.component.QBCompany(), "");
  EXPECT_EQ(host.component.ErrorNumber(), GetParam().number);
  EXPECT_EQ(host.component.ErrorDescription(), GetParam().description);
  host.journal->Heal();
  EXPECT_EQ(host.component.QBCompany(), "C:\\Companies\\Nursery.qbw") << "the next operation opens a session";
}

INSTANTIATE_TEST_SUITE_P(
    Places, SessionRefusal,
    testing::Values(
        RefusalCase{"Connection", openLine, [] { throw Error(-2147220472, "Could not start."); }, -2147220472,
                    "Error (-2147220472): Could not start."},
        RefusalCase{"Session", beginLine, [] { throw Error(-2147220448, "Access was refused."); },
                    -2147220448, "Error (-2147220448): Access was refused."},
        RefusalCase{"CompanyFileNotOpenAtTheConnection", openLine, [] { throw Error(-2147220458, "x"); },
                    -2147220458, "Your QuickBooks company file must be open to perform this import."},
        RefusalCase{"OtherErrorAtCreation", "create processor", [] { throw Error(70, "Permission denied"); },
                    70, "Error (70): Permission denied"},
        RefusalCase{"EmptyDescription", beginLine, [] { throw Error(-2147220478, ""); }, -2147220478,
                    "Error (-2147220478): "},
        RefusalCase{"OutOfMemory", beginLine, [] { throw std::bad_alloc(); }, 7, "Error (7): Out of memory"},
        RefusalCase{"AnotherException", beginLine, [] { throw std::runtime_error("x"); }, 51,
                    "Error (51): Internal error"}),
    [](const testing::TestParamInfo<RefusalCase>& parameter) { return parameter.param.name; });

TEST(Session, KeepsTheUnusedProcessorAndTriesItFirst) {
  TestHost host;
  host.journal->Fail(beginLine, Error(-2147220458, "x"));
  host.component.StartingMonth();
  EXPECT_EQ(host.journal->Text(), expected::Connects() + expected::Lines({beginLine}));
  host.journal->Clear();
  host.component.StartingMonth();
  EXPECT_EQ(host.journal->Text(), Sequence({expected::FindsSession(), expected::ReplacesProcessor(),
                                            expected::Lines({beginLine})}));
}

TEST(Session, HasNoProcessorWhenNoneCanBeCreated) {
  TestHost host;
  host.journal->Fail("create processor", Error(error_number::cannotCreateObject));
  host.component.StartingMonth();
  host.component.StartingMonth();
  EXPECT_EQ(host.journal->Text(), "create processor\ncreate processor\n");
}

TEST(Session, IsNotOpenWhileNoCompanyFileIs) {
  TestHost host;
  host.component.StartingMonth();
  host.journal->Clear();
  host.quickBooks->company = "";
  host.component.StartingMonth();
  EXPECT_EQ(host.journal->Text(), Sequence({expected::FindsSession(), expected::ReplacesProcessor(),
                                            expected::Lines({beginLine})}));
}

TEST(Session, PassesThePathThatTheHostStored) {
  TestHost host;
  host.component.QBCompany(
      "D:\\B\xC3\xBC"
      "cher\\Shop.qbw");
  host.component.StartingMonth();
  EXPECT_EQ(host.journal->Text(), expected::OpensSession("D:\\B\xC3\xBC"
                                                         "cher\\Shop.qbw"));
}

TEST(Session, LostDuringAnImportIsReopenedWithTheCompanysPath) {
  TestHost host;
  host.component.IncludeExpenseAccounts(true);
  host.journal->FailOccurrence("GetCurrentCompanyFileName", 4, Error(-2147220479, "the connection is gone"));
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.journal->Text(),
            Sequence({expected::BeginsFirstPass(), expected::FindsSession(), expected::ReplacesProcessor(),
                      expected::Lines({"BeginSession \"C:\\Companies\\Nursery.qbw\" 2", "ProcessRequest 4"}),
                      expected::Progress(80), expected::ReadsExpenseTables(), expected::Progress(100),
                      expected::LoadsExpenseTables(), expected::EndsImport()}));
  EXPECT_EQ(host.component.ErrorNumber(), 0);
}

}  // namespace
}  // namespace krnqb
