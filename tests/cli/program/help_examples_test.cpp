#include <gtest/gtest.h>

#include <sstream>

#include "build_paths.h"
#include "cli/help_texts.h"
#include "cli/program/child_process.h"
#include "cli/workplace.h"

namespace krnqb::cli {
namespace {

using tests::ProgramRun;
using tests::RunProgram;
using tests::RunShell;
using tests::Workplace;

// Returns the example commands of a help text, each with its continuation lines.
std::vector<std::string> ExamplesOf(std::string_view text) {
  std::vector<std::string> examples;
  std::istringstream lines{std::string(text)};
  bool continues = false;
  for (std::string line; std::getline(lines, line);) {
    if (continues) {
      examples.back() += '\n' + line;
    } else if (line.starts_with("  krnqb ")) {
      examples.push_back(line.substr(2));
    } else {
      continue;
    }
    continues = line.ends_with('\\');
  }
  return examples;
}

// Creates the files that the examples name, except the file that the example itself creates.
void Prepare(const Workplace& place, const std::string& example) {
  const bool explains = example.find(" explain ") != std::string::npos;
  const bool amounts = example.find("--balances all") != std::string::npos;
  if (explains || amounts) {
    place.NurseryYear();
  } else {
    place.Nursery();
  }
  std::filesystem::create_directory_symlink(krnqb::tests::SamplesFolder(), place / "samples");
  tests::WriteText(place / "accounts.xml", tests::ReadText(place / "samples/nursery/accounts.xml"));
  tests::WriteText(place / "nursery.kpf", tests::ReadText(place / "ald.kpf"));
  ASSERT_EQ(RunProgram(place.ImportArguments("nursery.kpf",
                                             {"--income", "--dry-run", "--record", place / "exchange.jsonl"}))
                .code,
            0);
  if (explains) {
    ASSERT_EQ(RunProgram(place.ImportArguments("nursery.kpf", {"--expenses", "--income", "--balances", "all",
                                                               "--ledger", place / "nursery.kql"}))
                  .code,
              0);
  }
  if (example.find("results") != std::string::npos) {
    std::filesystem::create_directory(place / "results");
    const ProgramRun import = RunProgram(place.ImportArguments("nursery.kpf", {"--income", "--json"}));
    tests::WriteText(place / "results/nursery.json", import.out);
  }
  // Two imports, so that there are earlier versions.
  if (example.find(" plan ") != std::string::npos) {
    for (const char* what : {"--expenses", "--income"}) {
      ASSERT_EQ(RunProgram(place.ImportArguments("nursery.kpf", {what})).code, 0);
    }
  }
  std::istringstream words(example);
  for (std::string word; words >> word;) {
    if (word == "new" && words >> word) std::filesystem::remove(place / word);
  }
}

class HelpExamples : public testing::TestWithParam<std::string_view> {};

TEST_P(HelpExamples, Run) {
  const std::vector<std::string> examples = ExamplesOf(GetParam());
  EXPECT_FALSE(examples.empty());
  for (const std::string& example : examples) {
    const Workplace place;
    Prepare(place, example);
    const tests::ShellRun run = RunShell(place.Folder().string(), example);
    EXPECT_EQ(run.code, 0) << example << '\n' << run.err;
    EXPECT_EQ(run.err, "") << example;
  }
}

INSTANTIATE_TEST_SUITE_P(OfEveryCommand, HelpExamples,
                         testing::Values(help_text::program, help_text::import, help_text::explain,
                                         help_text::doctor, help_text::summary, help_text::accounts,
                                         help_text::companies, help_text::tables, help_text::request,
                                         help_text::supports, help_text::company, help_text::newCompany,
                                         help_text::loadCompany, help_text::companyInfo, help_text::plan,
                                         help_text::newPlan, help_text::showPlan, help_text::planHistory,
                                         help_text::planDiff, help_text::planUndo));

}  // namespace
}  // namespace krnqb::cli
