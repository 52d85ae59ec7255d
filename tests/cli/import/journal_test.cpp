#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "cli/workplace.h"

namespace krnqb::cli {
namespace {

using nlohmann::ordered_json;
using tests::ProgramRun;
using tests::ReadText;
using tests::RunProgram;
using tests::With;
using tests::Words;
using tests::Workplace;

const Words amounts = {"--expenses", "--income", "--balances", "all"};

TEST(ImportJournal, ListsEachAmountThatWasLeftOut) {
  const Workplace place;
  place.NurseryYear();
  const std::string journal = place / "journal.jsonl";
  const ProgramRun run =
      RunProgram(place.ImportArguments("ald.kpf", With(amounts, {"--json", "--journal", journal})));
  ASSERT_EQ(run.code, 0) << run.err;
  const ordered_json skipped = ordered_json::parse(run.out).at("skipped");
  std::istringstream lines(ReadText(journal));
  int count = 0;
  for (std::string text; std::getline(lines, text); ++count) {
    const ordered_json line = ordered_json::parse(text);
    EXPECT_EQ(line.at("kind"), "skipped");
    EXPECT_TRUE(skipped.at("reasons").contains(line.at("reason").get<std::string>())) << text;
    EXPECT_FALSE(line.at("transaction").get<std::string>().empty()) << text;
    EXPECT_TRUE(line.contains("amount") && line.contains("request") && line.contains("from")) << text;
  }
  EXPECT_GT(count, 0);
  EXPECT_EQ(skipped.at("count"), count);
}

TEST(ImportJournal, ReportsAFileThatCannotBeWritten) {
  const Workplace place;
  place.NurseryYear();
  const std::string before = ReadText(place / "ald.kpf");
  const auto error = [&](const std::string& file) {
    const ProgramRun run = RunProgram(place.ImportArguments("ald.kpf", With(amounts, {"--journal", file})));
    EXPECT_EQ(run.code, 1) << file;
    return run.err.substr(run.err.find("krnqb: writing"));
  };
  EXPECT_EQ(error("/dev/full"),
            "krnqb: writing the journal failed: /dev/full could not be written completely: No space left on "
            "device; free some disk space and try again, or import without --journal\n");
  EXPECT_EQ(error(place / "none/journal"), "krnqb: writing the journal failed: " + (place / "none/journal") +
                                               ": No such file or directory; choose a file in a folder that "
                                               "you can write to\n");
  EXPECT_EQ(ReadText(place / "ald.kpf"), before);
}

TEST(ImportReport, ListsLeftOutAmountsByReason) {
  const Workplace place;
  place.NurseryYear();
  const ProgramRun run = RunProgram(place.ImportArguments("ald.kpf", amounts));
  EXPECT_EQ(run.code, 0);
  EXPECT_NE(run.out.find("Amounts that an import does not bring into a plan"), std::string::npos) << run.out;
  EXPECT_NE(run.out.find("the item has no account"), std::string::npos) << run.out;
}

TEST(StrictImport, WritesNothingWhenAmountsWereLeftOut) {
  const Workplace place;
  place.NurseryYear();
  const std::string plan = place / "ald.kpf";
  const std::string before = ReadText(plan);
  const ProgramRun run = RunProgram(place.ImportArguments("ald.kpf", With(amounts, {"--strict"})));
  EXPECT_EQ(run.code, 1);
  EXPECT_NE(run.err.find("the plan would differ from the books; nothing was written (--strict)"),
            std::string::npos)
      << run.err;
  EXPECT_EQ(ReadText(plan), before);
}

TEST(StrictImport, WritesNothingWhenAmountsWereLeftOutWithoutAWarning) {
  const Workplace place;
  place.NurseryYear();
  const Words income{"--income", "--balances", "all"};
  EXPECT_EQ(RunProgram(place.ImportArguments("ald.kpf", With(income, {"--dry-run"}))).err, "");
  const ProgramRun run = RunProgram(place.ImportArguments("ald.kpf", With(income, {"--strict"})));
  EXPECT_EQ(run.code, 1);
  EXPECT_NE(run.err.find("nothing was written (--strict)"), std::string::npos) << run.err;
}

TEST(StrictImport, WritesThePlanWhenIncompleteIsAccepted) {
  const Workplace place;
  place.NurseryYear();
  const ProgramRun run =
      RunProgram(place.ImportArguments("ald.kpf", With(amounts, {"--strict", "--accept-incomplete"})));
  EXPECT_EQ(run.code, 3);
}

TEST(StrictImport, SucceedsWhenNothingWasLeftOut) {
  const Workplace place;
  place.NurseryYear();
  EXPECT_EQ(RunProgram(place.ImportArguments("ald.kpf", {"--expenses", "--strict"})).code, 0);
}

}  // namespace
}  // namespace krnqb::cli
