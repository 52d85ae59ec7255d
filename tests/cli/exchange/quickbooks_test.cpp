#include <gtest/gtest.h>

#include "cli/import/recording_editor.h"
#include "cli/living_quickbooks.h"
#include "qbxml/request_catalogue.h"

namespace krnqb::cli {
namespace {

using tests::LivingQuickBooks;
using tests::ProgramRun;
using tests::ReadText;
using tests::RunProgram;
using tests::With;
using tests::WithoutStamps;
using tests::Words;
using tests::Workplace;
using tests::WriteText;

std::shared_ptr<LivingQuickBooks> Opened(const std::string& company, std::int16_t major, std::int16_t minor) {
  auto quickBooks = std::make_shared<LivingQuickBooks>();
  quickBooks->openCompany = company;
  quickBooks->majorVersion = major;
  quickBooks->minorVersion = minor;
  return quickBooks;
}

const Words everything{"--expenses", "--income", "--past-performance", "--balances", "all"};

struct Source {
  std::string company;  // the qbXML that the company answers up to
  std::int16_t major;
  std::int16_t minor;
  std::string words;  // "from transactions" or "from reports"
};

void PrintTo(const Source& source, std::ostream* out) {
  *out << source.company << " behind " << source.major << '.' << source.minor;
}

class QuickBooksImport : public testing::TestWithParam<Source> {};

TEST_P(QuickBooksImport, IsThatOfTheCompanyFile) {
  const Workplace place;
  const std::string company = place.NurseryYear(GetParam().company);
  const auto quickBooks = Opened(company, GetParam().major, GetParam().minor);
  const std::string live = place / "live.kpf";
  const std::string replayed = place / "replayed.kpf";
  for (const std::string& copy : {live, replayed}) WriteText(copy, ReadText(place / "ald.kpf"));
  ASSERT_EQ(RunProgram(With({"import", "--company", company, "--plan", place / "ald.kpf"}, everything)).code,
            0);
  const ProgramRun run = RunProgram(
      With({"import", "--quickbooks", "--plan", live, "--record", place / "exchange.jsonl", "--json"},
           everything),
      With(quickBooks));
  ASSERT_EQ(run.code, 0) << run.err;
  EXPECT_EQ(WithoutStamps(ReadText(live)), WithoutStamps(ReadText(place / "ald.kpf")));
  EXPECT_NE(run.out.find("\"path\": \"" + company + "\""), std::string::npos) << run.out.substr(0, 2000);
  EXPECT_NE(run.out.find("\"amounts_from\": \"" + GetParam().words + "\""), std::string::npos);
  // Nothing is asked that the component does not ask for itself.
  EXPECT_EQ(std::count(quickBooks->requests.begin(), quickBooks->requests.end(), BuildRequest(100, {}, {})),
            4);
  // The recording takes the same way.
  const ProgramRun replay = RunProgram(
      With({"import", "--replay", place / "exchange.jsonl", "--plan", replayed, "--quiet"}, everything));
  ASSERT_EQ(replay.code, 0) << replay.err;
  EXPECT_EQ(WithoutStamps(ReadText(replayed)), WithoutStamps(ReadText(live)));
}

INSTANTIATE_TEST_SUITE_P(Processors, QuickBooksImport,
                         testing::Values(Source{"1.1", 1, 1, "transactions"}, Source{"2.0", 2, 0, "reports"},
                                         Source{"2.0", 6, 0, "reports"},
                                         Source{"1.1", 6, 0, "transactions"}));

TEST(QuickBooksImport, TakesTheChosenPath) {
  const Workplace place;
  const auto quickBooks = Opened(place.NurseryYear("2.0"), 6, 0);
  const ProgramRun run = RunProgram(
      With({"import", "--quickbooks", "--plan", place / "ald.kpf", "--amounts-from", "transactions"},
           everything),
      With(quickBooks));
  ASSERT_EQ(run.code, 0) << run.err;
  EXPECT_EQ(
      run.out.find("Importing expense and income accounts and past performance from the company that is "
                   "open in QuickBooks, January to December 2002, into "),
      0U)
      << run.out;
  for (const std::string& request : quickBooks->requests)
    EXPECT_EQ(request.find("ReportQueryRq"), std::string::npos);
}

TEST(QuickBooksImport, OpensTheGivenCompany) {
  const Workplace place;
  const auto quickBooks = Opened("nothing is open", 1, 1);
  const std::string company = place.NurseryYear("1.1");
  const ProgramRun run = RunProgram(
      {"import", "--quickbooks", company, "--plan", place / "ald.kpf", "--expenses"}, With(quickBooks));
  ASSERT_EQ(run.code, 0) << run.err;
  EXPECT_EQ(run.out.find("Importing expense accounts from " + company + " in QuickBooks, "), 0U) << run.out;
}

TEST(QuickBooksQuestions, AreAnsweredAsByTheCompanyFile) {
  const Workplace place;
  const std::string company = place.NurseryYear("1.1");
  const auto quickBooks = Opened(company, 6, 0);
  for (const Words& question : {Words{"accounts", "income"}, Words{"accounts", "expense", "--json"}}) {
    const ProgramRun run = RunProgram(With(question, {"--quickbooks"}), With(quickBooks));
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(run.out, RunProgram(With(question, {"--company", company})).out);
  }
  EXPECT_EQ(RunProgram({"supports", "2.0", "--quickbooks"}, With(quickBooks)).out, "no\n");
  EXPECT_EQ(RunProgram({"supports", "1.1", "--quickbooks", company}, With(quickBooks)).out, "yes\n");
}

TEST(QuickBooksReconciliation, ComparesThePlanWithWhatQuickBooksAnswers) {
  const Workplace place;
  for (const std::string version : {"1.1", "2.0"}) {
    SCOPED_TRACE(version);
    const auto quickBooks = Opened(place.SampleCompany("print-shop", version), 6, 0);
    WriteText(place / "plan.kpf", ReadText(place / "ald.kpf"));
    std::filesystem::remove_all(place / "plan.kpf.history");
    ASSERT_EQ(RunProgram({"import", "--quickbooks", "--plan", place / "plan.kpf", "--expenses", "--income",
                          "--balances", "all"},
                         With(quickBooks))
                  .code,
              0);
    const ProgramRun run =
        RunProgram({"reconcile", "--quickbooks", "--plan", place / "plan.kpf", "--json"}, With(quickBooks));
    EXPECT_EQ(run.err, "");
    EXPECT_NE(run.out.find("open in QuickBooks"), std::string::npos) << run.out.substr(0, 500);
    EXPECT_EQ(run.out.find("\"books\": \"the reports of QuickBooks\"") != std::string::npos, version == "2.0")
        << run.out.substr(0, 500);
    std::filesystem::remove(place / "print-shop.qbw");
  }
}

TEST(QuickBooks, IsNamedWithEveryClassThatCannotBeCreated) {
  const auto missing = [](const std::string& name, bool otherWidth) {
    return ProcessorClass{.name = name,
                          .create = []() -> std::unique_ptr<RequestProcessor> {
                            throw Error(-2147221164, "Class not registered.");
                          },
                          .onlyForOtherWidth = [otherWidth] { return otherWidth; }};
  };
  const Workplace place;
  const auto errorWith = [&](bool otherWidth) {
    Surroundings surroundings{.clock = tests::JanuaryClock()};
    surroundings.processorClasses = [=] {
      return std::vector<ProcessorClass>{missing("First", false), missing("Second", otherWidth)};
    };
    const ProgramRun run =
        RunProgram({"import", "--quickbooks", "--plan", place / "ald.kpf", "--expenses"}, surroundings);
    EXPECT_EQ(run.code, 1);
    EXPECT_FALSE(std::filesystem::exists(place / "ald.kpf.lock"));
    return run.err;
  };
  const std::string begin =
      "krnqb: opening QuickBooks failed: no request processor can be created: First: Class not registered "
      "(80040154), Second: Class not registered (80040154); ";
  EXPECT_EQ(errorWith(false),
            begin + "install QuickBooks on this machine, or import a recording with --replay\n");
  EXPECT_EQ(errorWith(true), begin +
                                 "use the 32-bit krnqb.exe, because Second is registered for 32-bit programs "
                                 "only\n");
}

// There is no QuickBooks on this system.
TEST(QuickBooks, IsSaidToRunOnWindows) {
  const Workplace place;
  const std::string sentence =
      "krnqb: opening QuickBooks failed: QuickBooks runs on Windows; make a recording there with krnqb "
      "record "
      "and import it here with --replay\n";
  for (const Words& arguments :
       {Words{"import", "--quickbooks", "--plan", place / "ald.kpf", "--expenses"},
        Words{"accounts", "income", "--quickbooks"}, Words{"supports", "1.1", "--quickbooks"},
        Words{"reconcile", "--quickbooks", "--plan", place / "ald.kpf"},
        Words{"record", "--quickbooks", "C:\\a.qbw", "--plan-start", "2003-01", "--out",
              place / "a.jsonl"}}) {
    const ProgramRun run = RunProgram(arguments);
    EXPECT_EQ(run.code, 1) << arguments[0];
    EXPECT_EQ(run.err, sentence) << arguments[0];
  }
}

TEST(QuickBooks, IsNotAskedBesideACompanyFileOrARecording) {
  const Workplace place;
  const auto errorOf = [](const Words& arguments) { return RunProgram(arguments).err; };
  const Words import{"import", "--plan", place / "ald.kpf", "--expenses", "--quickbooks"};
  EXPECT_EQ(errorOf(With(import, {"--company", "a.qbw"})),
            "krnqb: wrong usage: --company and --quickbooks are both given; give one of them\n");
  EXPECT_EQ(errorOf(With(import, {"--replay", "a.jsonl"})),
            "krnqb: wrong usage: --quickbooks and --replay are both given; give one of them\n");
  EXPECT_EQ(errorOf({"accounts", "income"}),
            "krnqb: wrong usage: no company is given; give --company FILE, or --quickbooks on Windows\n");
  EXPECT_EQ(errorOf({"supports", "1.1"}),
            "krnqb: wrong usage: no company is given; give --company FILE, or --quickbooks on Windows\n");
}

}  // namespace
}  // namespace krnqb::cli
