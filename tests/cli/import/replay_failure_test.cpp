#include <gtest/gtest.h>

#include <algorithm>
#include <nlohmann/json.hpp>

#include "cli/import/recording_editor.h"

namespace krnqb::cli {
namespace {

using tests::ProgramRun;
using tests::ReadText;
using tests::RunProgram;
using tests::Workplace;
using tests::WriteText;
using Words = std::vector<std::string>;

class ReplayThatLacksAnswers : public testing::Test {
 protected:
  void SetUp() override {
    place.Nursery();
    ASSERT_EQ(
        RunProgram(place.ImportArguments("ald.kpf", {"--income", "--dry-run", "--record", recording})).code,
        0);
  }
  ProgramRun Replay(const Words& more, const std::string& plan = "ald.kpf") const {
    Words words = {"import", "--replay", recording, "--plan", place / plan, "--quiet"};
    words.insert(words.end(), more.begin(), more.end());
    return RunProgram(words);
  }
  std::string Sentence(const std::string& lacking) const {
    return "krnqb: import failed: the recording " + recording + " has no answer to " + lacking +
           "; give the options with which it was recorded, or record the company again; nothing was "
           "written\n";
  }

  const Workplace place;
  const std::string recording = place / "exchange.jsonl";
  const std::string held = "income accounts without amounts (January to December 2002, product ald)";
};

TEST_F(ReplayThatLacksAnswers, SaysWhatTheRecordingHoldsAndWhatIsAskedFor) {
  const std::string before = ReadText(place / "ald.kpf");
  const ProgramRun run = Replay({"--expenses"});
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.err,
            Sentence("request 4 (expense accounts): it holds " + held +
                     ", but the import asks for expense accounts without amounts (January to December "
                     "2002, product ald)"));
  EXPECT_EQ(ReadText(place / "ald.kpf"), before);
}

TEST_F(ReplayThatLacksAnswers, NamesPeriodFiscalMonthAndPastPerformance) {
  const ProgramRun run = Replay({"--income", "--past-performance", "--balances", "actual", "--import-start",
                                 "2001-07", "--fiscal-month", "7"});
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.err.find("krnqb: import failed: the recording " + recording + " has no answer to "), 0U)
      << run.err;
  EXPECT_NE(run.err.find(": it holds " + held +
                         ", but the import asks for income accounts and past performance with amounts from "
                         "transactions (July 2001 to June 2002, product ald, fiscal year from July); "),
            std::string::npos)
      << run.err;
  EXPECT_EQ(std::ranges::count(run.err, '\n'), 1) << run.err;
}

TEST_F(ReplayThatLacksAnswers, SaysSoOfARecordingThatDoesNotSayWhatItHolds) {
  const std::string text = ReadText(recording);
  const std::size_t import = text.find(",\"import\":");
  WriteText(recording, text.substr(0, import) + text.substr(text.find("}}", import) + 1));
  const ProgramRun run = Replay({"--expenses"});
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(
      run.err,
      Sentence("request 4 (expense accounts): it does not say what it was recorded for; the import asks "
               "for expense accounts without amounts (January to December 2002, product ald)"));
}

TEST_F(ReplayThatLacksAnswers, SaysThatARecordingOfTheSameImportIsShortened) {
  const std::string text = ReadText(recording);
  WriteText(recording, text.substr(0, text.rfind("\n", text.size() - 2) + 1));
  const ProgramRun run = Replay({"--income"});
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.err, Sentence("request 1 (income accounts): it was recorded for the same import, " + held));
}

TEST_F(ReplayThatLacksAnswers, SaysSoWhenExpenseAccountsCannotBeSelected) {
  const ProgramRun run = Replay({"--expenses", "--select-all-expenses"}, "bri.kpf");
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.err,
            Sentence("request 4 (expense accounts): it holds " + held +
                     ", but the import asks for expense accounts without amounts (January to December "
                     "2002, product bri)"));
}

TEST_F(ReplayThatLacksAnswers, SaysSoInJson) {
  const ProgramRun run = Replay({"--expenses", "--json"});
  const auto object = nlohmann::json::parse(run.out);
  EXPECT_EQ(object.at("result"), "failed");
  EXPECT_EQ(object.at("error_description").get<std::string>().find("the recording " + recording), 0U);
  EXPECT_EQ(object.at("incomplete"), nlohmann::json::array());
}

// Records an import with amounts from a company without transactions, and replays it without one answer.
TEST(ReplayWithoutOneMonth, IsWrittenIfIncompleteIsAccepted) {
  const Workplace place;
  place.Nursery();
  const std::string recording = place / "exchange.jsonl";
  const Words importing = {"--expenses", "--balances", "actual", "--quiet"};
  Words words = place.ImportArguments("ald.kpf", importing);
  words.insert(words.end(), {"--dry-run", "--record", recording});
  ASSERT_EQ(RunProgram(words).code, 0);
  tests::EditRecording(recording, "<FromTxnDate>2002-03-01", [](auto& line) { line["request"] = "other"; });
  Words replaying = {"import", "--replay", recording, "--plan", place / "ald.kpf"};
  replaying.insert(replaying.end(), importing.begin(), importing.end());
  const ProgramRun refused = RunProgram(replaying);
  EXPECT_EQ(refused.code, 1);
  EXPECT_NE(
      refused.err.find(" has no answer to request 10 (bills) for 2002-03-01 to 2002-03-31: it was recorded "
                       "for the same import, expense accounts with amounts from transactions "),
      std::string::npos)
      << refused.err;
  EXPECT_EQ(std::ranges::count(refused.err, '\n'), 1) << refused.err;
  replaying.emplace_back("--accept-incomplete");
  const ProgramRun accepted = RunProgram(replaying);
  EXPECT_EQ(accepted.code, 3);
  EXPECT_NE(
      accepted.err.find("krnqb: incomplete: request 10 (bills) for 2002-03-01 to 2002-03-31: refused: the "
                        "recording holds no answer to the request <BillQueryRq requestID=\"10\">\n"),
      std::string::npos)
      << accepted.err;
}

}  // namespace
}  // namespace krnqb::cli
