#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "cli/workplace.h"

namespace krnqb::cli {
namespace {

namespace fs = std::filesystem;

using tests::ProgramRun;
using tests::ReadText;
using tests::RunProgram;
using tests::With;
using tests::Words;
using tests::Workplace;
using tests::WriteText;

class ReconcileReportPage : public testing::Test {
 protected:
  ReconcileReportPage() {
    place.NurseryYear();
    EXPECT_EQ(
        RunProgram(place.ImportArguments("ald.kpf", {"--expenses", "--income", "--balances", "all"})).code,
        0);
  }

  ProgramRun Reconcile(const Words& more) const {
    return RunProgram(With({"reconcile", "--company", company, "--plan", plan}, more));
  }

  const Workplace place;
  const std::string plan = place / "ald.kpf";
  const std::string company = place / "nursery.qbw";
  const std::string report = place / "report.html";
};

void ExpectIn(const std::string& page, const std::vector<std::string>& texts) {
  for (const std::string& text : texts) EXPECT_NE(page.find(text), std::string::npos) << text;
}

TEST_F(ReconcileReportPage, ShowsEveryDifferenceWithItsCauses) {
  const ProgramRun plain = Reconcile({});
  const ProgramRun run = Reconcile({"--report", report});
  EXPECT_EQ(run.code, 4);
  EXPECT_EQ(run.out, plain.out);
  struct stat status {};
  ASSERT_EQ(stat(report.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777U, 0600U);
  ExpectIn(ReadText(report),
           {"<h1>Reconciliation of ald.kpf</h1>", "differs</span> The plan differs from the books",
            "<summary>Expenses, <bdi>Depreciation</bdi>: 7,260.00</summary>", "data-row=\"spread-balance\"",
            "data-row=\"whole\"", "Balances that the loaded transactions of all days do not explain"});
}

TEST_F(ReconcileReportPage, SaysThatThePlanAgrees) {
  EXPECT_EQ(Reconcile({"--tolerance", "1000000", "--report", report}).code, 0);
  ExpectIn(ReadText(report), {"agrees</span> The plan agrees with the books within the tolerance."});
}

TEST_F(ReconcileReportPage, HasALineForEachMonthIfTheyAreAskedFor) {
  EXPECT_EQ(Reconcile({"--months", "--report", report}).code, 4);
  ExpectIn(ReadText(report),
           {"data-row=\"expenses/Depreciation/2002-03\"", "Depreciation</bdi>, March 2002"});
}

TEST_F(ReconcileReportPage, NeverReplacesWhatIsRead) {
  const std::string books = ReadText(company);
  const std::string before = ReadText(plan);
  const std::string statement = place / "books.csv";
  WriteText(statement, "x");
  for (const std::string& file :
       {company, plan, plan + ".bak", plan + ".history", company + "-journal", statement}) {
    const ProgramRun run = Reconcile({"--profit-and-loss", statement, "--report", file});
    EXPECT_EQ(run.code, 2) << file << run.err;
    EXPECT_NE(run.err.find("--report"), std::string::npos) << run.err;
  }
  EXPECT_EQ(ReadText(company), books);
  EXPECT_EQ(ReadText(plan), before);
}

TEST_F(ReconcileReportPage, IsNotLeftHalfWrittenByAFailure) {
  const ProgramRun run =
      RunProgram({"reconcile", "--company", place / "none.qbw", "--plan", plan, "--report", report});
  EXPECT_EQ(run.code, 1);
  EXPECT_FALSE(fs::exists(report));
  EXPECT_FALSE(fs::exists(report + ".tmp"));
}

}  // namespace
}  // namespace krnqb::cli
