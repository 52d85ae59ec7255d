#include <gtest/gtest.h>

#include <cstdlib>
#include <set>

#include "cli/import/recording_editor.h"
#include "cli/living_quickbooks.h"

namespace krnqb::cli {
namespace {

using tests::LivingQuickBooks;
using tests::ProgramRun;
using tests::ReadText;
using tests::RecordingLines;
using tests::RunProgram;
using tests::With;
using tests::WithoutStamps;
using tests::Words;
using tests::Workplace;
using tests::WriteText;

Words RecordCompany(const Workplace& place, const Words& more = {}) {
  return With({"record", "--company", place / "nursery.qbw", "--plan-start", "2003-01", "--out",
               place / "books.jsonl", "--quiet"},
              more);
}

// Imports from the company and from the recording, and compares the plans.
void ExpectSameImport(const Workplace& place, const std::string& plan, const Words& more) {
  SCOPED_TRACE(testing::Message() << plan << ' ' << testing::PrintToString(more));
  const std::string live = place / "live.kpf";
  const std::string replayed = place / "replayed.kpf";
  for (const std::string& copy : {live, replayed}) WriteText(copy, ReadText(place / plan));
  const Words contents = With({"--balances", "all", "--quiet"}, more);
  const ProgramRun one =
      RunProgram(With({"import", "--company", place / "nursery.qbw", "--plan", live}, contents));
  const ProgramRun other =
      RunProgram(With({"import", "--replay", place / "books.jsonl", "--plan", replayed}, contents));
  ASSERT_EQ(one.code, 0) << one.err;
  EXPECT_EQ(other.code, 0) << other.err;
  EXPECT_EQ(other.err, one.err);
  EXPECT_NE(ReadText(live), ReadText(place / plan));
  EXPECT_EQ(WithoutStamps(ReadText(replayed)), WithoutStamps(ReadText(live)));
}

struct Books {
  std::string version;
  std::string path;
  std::string plan;
  std::string start;  // of the import that is compared every time; nightly all of them are
};

void PrintTo(const Books& books, std::ostream* out) {
  *out << books.version << ' ' << books.path << ' ' << books.plan;
}

class RecordedBooks : public testing::TestWithParam<Books> {};

TEST_P(RecordedBooks, AnswerTheImportsOfTheSpanLikeTheCompany) {
  const Workplace place;
  place.NurseryYear(GetParam().version);
  const ProgramRun run = RunProgram(RecordCompany(place, {"--from", "2001-11", "--to", "2003-01"}));
  ASSERT_EQ(run.code, 0) << run.err;
  EXPECT_EQ(run.out, "");
  EXPECT_FALSE(std::filesystem::exists(place / "books.jsonl.part"));
  const bool nightly = std::getenv("KRNQB_NIGHTLY") != nullptr;  // NOLINT(concurrency-mt-unsafe)
  const Words starts = nightly ? Words{"2001-11", "2001-12", "2002-01", "2002-02"} : Words{GetParam().start};
  const std::string last = GetParam().plan == "bri.kpf" ? "--select-all-expenses" : "--past-performance";
  for (const std::string& start : starts) {
    ExpectSameImport(
        place, GetParam().plan,
        {"--expenses", "--income", last, "--import-start", start, "--amounts-from", GetParam().path});
  }
}

INSTANTIATE_TEST_SUITE_P(VersionsAndProducts, RecordedBooks,
                         testing::Values(Books{"1.1", "transactions", "ald.kpf", "2001-12"},
                                         Books{"1.1", "transactions", "bri.kpf", "2001-11"},
                                         Books{"1.1", "transactions", "cor.kpf", "2002-02"},
                                         Books{"2.0", "transactions", "ald.kpf", "2002-02"},
                                         Books{"2.0", "transactions", "bri.kpf", "2002-01"},
                                         Books{"2.0", "transactions", "cor.kpf", "2001-12"},
                                         Books{"2.0", "reports", "ald.kpf", "2001-12"},
                                         Books{"2.0", "reports", "bri.kpf", "2002-02"},
                                         Books{"2.0", "reports", "cor.kpf", "2001-11"}));

TEST(Record, AnswersImportsOfLess) {
  const Workplace place;
  place.NurseryYear("1.1");
  ASSERT_EQ(RunProgram(RecordCompany(place)).code, 0);
  ExpectSameImport(place, "ald.kpf", {"--income"});
  ExpectSameImport(place, "cor.kpf", {"--expenses", "--fiscal-month", "July"});
}

TEST(Record, AsksForEachRequestOnce) {
  const Workplace place;
  const auto quickBooks = std::make_shared<LivingQuickBooks>();
  quickBooks->openCompany = place.NurseryYear("2.0");
  quickBooks->majorVersion = 6;
  quickBooks->minorVersion = 0;
  const ProgramRun run =
      RunProgram({"record", "--quickbooks", "--plan-start", "2003-01", "--out", place / "books.jsonl"},
                 With(quickBooks));
  ASSERT_EQ(run.code, 0) << run.err;
  const std::set<std::string> distinct(quickBooks->requests.begin(), quickBooks->requests.end());
  EXPECT_EQ(distinct.size(), quickBooks->requests.size());
  EXPECT_EQ(quickBooks->sessions, 1);
  const auto lines = RecordingLines(place / "books.jsonl");
  ASSERT_EQ(lines.size(), distinct.size() + 1);
  EXPECT_EQ(lines[0].dump(), R"({"exchange":1,"company":")" + quickBooks->openCompany +
                                 R"(","major":6,"minor":0,"span":{"from":"2002-01","to":"2002-12",)"
                                 R"("plan_start":"2003-01"}})");
  EXPECT_EQ(run.out,
            "Recording January 2002 to December 2002 for plans from January 2003, from the company that is "
            "open in QuickBooks, in " +
                (place / "books.jsonl") + ".\nRecorded " + std::to_string(distinct.size()) +
                " answers; amounts can be imported from transactions and from reports.\n");
}

TEST(Record, CanBeLoadedIntoACompanyThatAnswersTheSameImport) {
  const Workplace place;
  place.NurseryYear("1.1");
  ASSERT_EQ(RunProgram(RecordCompany(place)).code, 0);
  const std::string loaded = place / "loaded.qbw";
  ASSERT_EQ(RunProgram({"company", "new", loaded, "--name", "Loaded", "--fiscal-month", "March",
                        "--processor", "1.1"})
                .code,
            0);
  const ProgramRun load = RunProgram({"company", "load", loaded, place / "books.jsonl"});
  ASSERT_EQ(load.code, 0) << load.err;
  EXPECT_EQ(load.err, "");
  EXPECT_EQ(load.out.find((place / "books.jsonl") + ": added "), 0U) << load.out;
  const Words contents{"--expenses", "--income", "--past-performance", "--balances", "all", "--quiet"};
  const std::string fromCompany = place / "company.kpf";
  const std::string fromLoaded = place / "loaded.kpf";
  for (const std::string& plan : {fromCompany, fromLoaded}) WriteText(plan, ReadText(place / "ald.kpf"));
  EXPECT_EQ(
      RunProgram(With({"import", "--company", place / "nursery.qbw", "--plan", fromCompany}, contents)).code,
      0);
  EXPECT_EQ(RunProgram(With({"import", "--company", loaded, "--plan", fromLoaded}, contents)).code, 0);
  EXPECT_EQ(WithoutStamps(ReadText(fromLoaded)), WithoutStamps(ReadText(fromCompany)));
}

TEST(Record, NamesWhatItHoldsIfAnImportAsksForMore) {
  const Workplace place;
  place.NurseryYear("1.1");
  ASSERT_EQ(RunProgram(RecordCompany(place)).code, 0);
  const ProgramRun run = RunProgram({"import", "--replay", place / "books.jsonl", "--plan", place / "ald.kpf",
                                     "--expenses", "--balances", "all", "--import-start", "2001-01"});
  EXPECT_EQ(run.code, 1);
  EXPECT_NE(
      run.err.find("it holds imports of January 2002 to December 2002 into plans from January 2003, but "
                   "the import asks for expense accounts with amounts from transactions (January to "
                   "December 2001, product ald)"),
      std::string::npos)
      << run.err;
}

TEST(Record, ReconcilesAPlanWithItsTransactions) {
  const Workplace place;
  place.NurseryYear("1.1");
  ASSERT_EQ(RunProgram(RecordCompany(place)).code, 0);
  ASSERT_EQ(
      RunProgram(place.ImportArguments("ald.kpf", {"--expenses", "--income", "--balances", "all"})).code, 0);
  const ProgramRun run =
      RunProgram({"reconcile", "--replay", place / "books.jsonl", "--plan", place / "ald.kpf"});
  EXPECT_EQ(run.code, 4) << run.err;  // the plan has two rows Rent
  EXPECT_NE(run.out.find("  Plant Sales             28,611.15   28,611.15        0.00\n"), std::string::npos)
      << run.out;
  EXPECT_NE(run.out.find("Total expenses            49,954.45   38,344.45   11,610.00\n"), std::string::npos);
}

TEST(Record, ShowsProgressOnATerminal) {
  const Workplace place;
  place.NurseryYear("1.1");
  Surroundings terminal{.clock = tests::JanuaryClock(), .errorIsTerminal = true};
  Words arguments = RecordCompany(place);
  arguments.pop_back();
  const ProgramRun run = RunProgram(arguments, terminal);
  ASSERT_EQ(run.code, 0) << run.err;
  EXPECT_NE(run.err.find("reading expenses, March 2002"), std::string::npos) << run.err;
}

}  // namespace
}  // namespace krnqb::cli
