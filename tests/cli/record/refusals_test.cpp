#include <gtest/gtest.h>

#include "cli/living_quickbooks.h"

namespace krnqb::cli {
namespace {

using tests::LivingQuickBooks;
using tests::ProgramRun;
using tests::ReadText;
using tests::RunProgram;
using tests::With;
using tests::Words;
using tests::Workplace;
using tests::WriteText;

struct Refusing {
  explicit Refusing(std::string part, std::string_view version = "2.0") {
    quickBooks->openCompany = place.NurseryYear(version);
    quickBooks->majorVersion = version == "2.0" ? 2 : 1;
    quickBooks->minorVersion = version == "2.0" ? 0 : 1;
    quickBooks->refusedPart = std::move(part);
  }
  ProgramRun Record() const {
    return RunProgram({"record", "--quickbooks", "--plan-start", "2003-01", "--out", out}, With(quickBooks));
  }

  Workplace place;
  std::string out = place / "books.jsonl";
  std::shared_ptr<LivingQuickBooks> quickBooks = std::make_shared<LivingQuickBooks>();
};

TEST(RecordedRefusal, IsAnAnswerThatAReplayRepeats) {
  const Refusing refusing("<AccountTypeFilter>RetainedEarnings<");
  const ProgramRun run = refusing.Record();
  ASSERT_EQ(run.code, 0) << run.err;
  EXPECT_NE(run.out.find(" of them refusals; amounts can be imported from transactions and from reports.\n"),
            std::string::npos)
      << run.out;
  const Words contents{"--expenses", "--income", "--past-performance", "--balances", "all",
                       "--dry-run",  "--quiet"};
  const ProgramRun live =
      RunProgram(With({"import", "--quickbooks", "--plan", refusing.place / "ald.kpf"}, contents),
                 With(refusing.quickBooks));
  const ProgramRun replayed =
      RunProgram(With({"import", "--replay", refusing.out, "--plan", refusing.place / "ald.kpf"}, contents));
  EXPECT_EQ(live.code, 1);
  EXPECT_EQ(replayed.code, live.code);
  EXPECT_EQ(replayed.err, live.err);
}

TEST(RecordedRefusal, OfAllReportsLeavesTheTransactions) {
  const Refusing refusing("<GeneralSummaryReportQueryRq>");
  const ProgramRun run = refusing.Record();
  ASSERT_EQ(run.code, 0) << run.err;
  EXPECT_EQ(run.err.find("krnqb: warning: no amounts can be imported from reports: "), 0U) << run.err;
  EXPECT_NE(run.out.find("; amounts can be imported from transactions.\n"), std::string::npos) << run.out;
}

TEST(RecordedRefusal, OfTheAccountsEndsTheRecordingAndIsAskedAgain) {
  const Refusing refusing("<AccountQueryRq requestID=\"4\">", "1.1");
  const ProgramRun run = refusing.Record();
  EXPECT_EQ(run.code, 1);
  EXPECT_FALSE(std::filesystem::exists(refusing.out));
  refusing.quickBooks->refusedPart.clear();
  const ProgramRun again = refusing.Record();
  EXPECT_EQ(again.code, 0) << again.err;
  EXPECT_EQ(again.out.find("refusals"), std::string::npos) << again.out;
}

TEST(Record, RefusesWhatItWouldOverwrite) {
  const Workplace place;
  const std::string company = place.Nursery();
  const std::string out = place / "books.jsonl";
  WriteText(out, "kept");
  const auto record = [&](const std::string& file) {
    return RunProgram({"record", "--company", company, "--plan-start", "2003-01", "--out", file});
  };
  EXPECT_EQ(record(out).err,
            "krnqb: recording failed: " + out + " exists; remove it, or give another --out\n");
  EXPECT_EQ(ReadText(out), "kept");
  std::filesystem::rename(company, out + "2.part");
  const ProgramRun run =
      RunProgram({"record", "--company", out + "2.part", "--plan-start", "2003-01", "--out", out + "2"});
  EXPECT_EQ(run.code, 2);
  EXPECT_EQ(run.err, "krnqb: wrong usage: --company " + out +
                         "2.part would be the unfinished recording of --out " + out +
                         "2; give another --out\n");
}

TEST(Record, LeavesNothingIfTheCompanyCannotBeOpened) {
  const Workplace place;
  const ProgramRun run = RunProgram(
      {"record", "--company", place / "none.qbw", "--plan-start", "2003-01", "--out", place / "books.jsonl"});
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.err.find("krnqb: opening the company failed: "), 0U) << run.err;
  EXPECT_FALSE(std::filesystem::exists(place / "books.jsonl.part"));
  EXPECT_FALSE(std::filesystem::exists(place / "books.jsonl"));
}

TEST(Record, RequiresOneCompany) {
  const Workplace place;
  const Words more{"--plan-start", "2003-01", "--out", place / "books.jsonl"};
  EXPECT_EQ(RunProgram(With({"record"}, more)).err,
            "krnqb: wrong usage: no company is given; give --company FILE, or --quickbooks on Windows\n");
  EXPECT_EQ(RunProgram(With({"record", "--company", "a", "--quickbooks"}, more)).err,
            "krnqb: wrong usage: --company and --quickbooks are both given; give one of them\n");
}

}  // namespace
}  // namespace krnqb::cli
