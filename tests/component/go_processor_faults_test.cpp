#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

#include "expected_sequences.h"
#include "fakes/test_host.h"

// A processor that fails in the middle of an import.

namespace krnqb {
namespace {

using expected::Asks;
using expected::Progress;
using expected::Sequence;
using fakes::TestHost;

/// Returns the journal of a successful import of the expense accounts in a new session, after the company
/// check.
std::string ImportsAgain() {
  return Sequence({Progress(20), expected::Connects(), "BeginSession \"\" 2\n", expected::ReadsCompany(),
                   Progress(40), Asks("100"), Progress(60), Asks("4"), Progress(80),
                   expected::ReadsExpenseTables(), Progress(100), expected::LoadsExpenseTables(),
                   expected::EndsImport()});
}

struct FaultCase {
  const char* name;
  const char* line;
  int occurrence;
  std::string sequence;  // up to the failing question
};

class ProcessorFault : public testing::TestWithParam<FaultCase> {};

TEST_P(ProcessorFault, EndsTheImportWithTheProcessorsError) {
  TestHost host;
  host.component.IncludeExpenseAccounts(true);
  host.journal->FailOccurrence(GetParam().line, GetParam().occurrence,
                               Error(-2147220478, "unexpected, \xC3\xA9"));
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.journal->Text(), GetParam().sequence + "processor released\n");
  EXPECT_EQ(host.component.ErrorNumber(), -2147220478);
  EXPECT_EQ(host.component.ErrorDescription(), "unexpected, \xC3\xA9");

  host.journal->Clear();
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.journal->Text(), ImportsAgain()) << "the component still works";
  EXPECT_EQ(host.component.ErrorNumber(), -2147220478) << "nothing clears the pair";
}

std::string OpeningsOf(std::initializer_list<std::string> further) {
  return Sequence({Progress(20), expected::OpensSession()}) + Sequence(further);
}

INSTANTIATE_TEST_SUITE_P(
    Places, ProcessorFault,
    testing::Values(FaultCase{"VersionCheckOfTheCompany", "ProcessRequest 100", 1, OpeningsOf({Asks("100")})},
                    FaultCase{"CompanyPath", "GetCurrentCompanyFileName", 2,
                              OpeningsOf({Asks("100"), "GetCurrentCompanyFileName\n"})},
                    FaultCase{"MajorVersion", "MajorVersion", 1,
                              OpeningsOf({Asks("100"), "GetCurrentCompanyFileName\nMajorVersion\n"})},
                    FaultCase{"MinorVersion", "MinorVersion", 1, OpeningsOf({expected::ReadsCompany()})},
                    FaultCase{"SecondVersionCheck", "ProcessRequest 100", 2,
                              OpeningsOf({expected::ReadsCompany(), Progress(40), Asks("100")})},
                    FaultCase{"AccountList", "ProcessRequest 4", 1, expected::BeginsFirstPass() + Asks("4")}),
    [](const testing::TestParamInfo<FaultCase>& parameter) { return parameter.param.name; });

struct ListCase {
  const char* request;
  std::string asked;
};

TEST(ProcessorFault, EndsTheImportAtEachListOfEitherPass) {
  const ListCase lists[] = {{"4", Asks("4")},
                            {"1", Asks("4") + Asks("1")},
                            {"2", Asks("4") + Asks("1") + Asks("2")},
                            {"50", expected::AsksAllLists()}};
  const std::string tables =
      Sequence({Progress(80), expected::ReadsExpenseTables(), Progress(100), expected::ReadsSalesTables(),
                expected::LoadsSalesTables(), expected::ReadsSalesTables(), expected::LoadsExpenseTables(),
                expected::LoadsSalesTables(), "XMLprocessing\n", expected::BeginsPassInOpenSession()});
  for (const ListCase& each : lists) {
    for (const int pass : {1, 2}) {
      TestHost host;
      host.component.IncludeExpenseAccounts(true);
      host.component.IncludeIncomeAccounts(true);
      host.component.BalancesImport(BalImport_All);
      host.journal->FailOccurrence(std::string("ProcessRequest ") + each.request, pass,
                                   Error(-2147220479, "x"));
      EXPECT_TRUE(host.component.Go());
      const std::string before = pass == 1 ? "" : expected::AsksAllLists() + tables;
      EXPECT_EQ(host.journal->Text(),
                Sequence({expected::BeginsFirstPass(), before, each.asked, "processor released\n"}));
      EXPECT_EQ(host.component.ErrorNumber(), -2147220479);
    }
  }
}

TEST(ProcessorFault, OfTheCompanyCheckIsReportedAsAMissingMonth) {
  TestHost host;
  host.component.IncludeExpenseAccounts(true);
  host.journal->Fail("ProcessRequest 101", Error(-2147220478, "unexpected"));
  EXPECT_FALSE(host.component.Go());
  EXPECT_EQ(host.journal->Text(), Progress(20) + expected::OpensSession());
  EXPECT_EQ(host.component.ErrorNumber(), -2147221404);
}

TEST(ProcessorFault, OfAnotherKindIsAnInternalErrorOrOutOfMemory) {
  TestHost host;
  host.component.IncludeExpenseAccounts(true);
  host.journal->OnOccurrence("ProcessRequest 4", 1, [] { throw std::runtime_error("x"); });
  host.journal->OnOccurrence("ProcessRequest 4", 2, [] { throw std::bad_alloc(); });
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.component.ErrorNumber(), 51);
  EXPECT_EQ(host.component.ErrorDescription(), "Internal error");
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.component.ErrorNumber(), 7);
  EXPECT_EQ(host.component.ErrorDescription(), "Out of memory");
}

TEST(ProcessorFault, AVersionResponseWithoutAnElementEndsWithError91) {
  TestHost host;
  host.component.IncludeExpenseAccounts(true);
  host.quickBooks->answers["100"] = "no XML";
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.journal->Text(),
            Sequence({Progress(20), expected::OpensSession(), Asks("100"), "processor released\n"}));
  EXPECT_EQ(host.component.ErrorNumber(), 91);
}

}  // namespace
}  // namespace krnqb
