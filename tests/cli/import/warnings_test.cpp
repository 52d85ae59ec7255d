#include <gtest/gtest.h>

#include "cli/import/notices/warning_advice.h"
#include "cli/import/recording_editor.h"

// The warnings of an import as a user sees them.

namespace krnqb::cli {
namespace {

using tests::ProgramRun;
using tests::ReadText;
using tests::RecordingLines;
using tests::RunProgram;
using tests::With;
using tests::Words;
using tests::Workplace;
using tests::WriteText;

const Words amounts = {"--expenses", "--income", "--balances", "all"};

std::size_t Count(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
  return count;
}

class PrintedWarnings : public testing::Test {
 protected:
  PrintedWarnings() { place.NurseryYear(); }
  ProgramRun Import(const Words& more) const {
    return RunProgram(place.ImportArguments("ald.kpf", With(amounts, more)));
  }
  const Workplace place;
};

constexpr const char* payroll =
    "Payroll Expenses (2,214.80 over months 1 to 12, without 26,200.00 in its sub-accounts)";

TEST_F(PrintedWarnings, AreOneSentenceEachOnStandardError) {
  const ProgramRun run = Import({});
  EXPECT_EQ(run.code, 0);
  EXPECT_EQ(
      Count(run.err, "krnqb: warning: accounts without transactions in the period show today's balance"), 1U);
  EXPECT_EQ(Count(run.err, payroll), 1U) << run.err;
  EXPECT_EQ(Count(run.out, "warning"), 0U);
}

TEST_F(PrintedWarnings, ArePrintedWhenQuietOrAsJsonToo) {
  for (const char* option : {"--quiet", "--json"}) {
    const ProgramRun run = Import({option});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(Count(run.err, payroll), 1U) << option;
  }
}

TEST_F(PrintedWarnings, AreAbsentFromAnImportOfAccounts) {
  const ProgramRun run = RunProgram(place.ImportArguments("ald.kpf", {"--expenses", "--income"}));
  EXPECT_EQ(run.code, 0);
  EXPECT_EQ(run.err, "");
}

TEST_F(PrintedWarnings, KeepAStrictImportFromBeingWritten) {
  // Expenses alone: nothing that was requested is left out, but months are spread balances.
  const std::string before = ReadText(place / "ald.kpf");
  const Words arguments = {"--expenses", "--balances", "all", "--import-start", "1999-01", "--strict"};
  const ProgramRun run = RunProgram(place.ImportArguments("ald.kpf", arguments));
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(Count(run.err, "krnqb: warning: QuickBooks has no amounts in the twelve months from 1999-01\n"),
            1U);
  EXPECT_EQ(Count(run.err, "the plan would differ from the books; nothing was written (--strict)"), 1U);
  EXPECT_EQ(ReadText(place / "ald.kpf"), before);
}

// A processor of version 16, whose program lists qbXML 1.0 and 1.1.
TEST_F(PrintedWarnings, AreNotNeededForAProcessorOfAnotherVersion) {
  const std::string recording = place / "exchange.jsonl";
  const std::string replayed = place / "replayed.kpf";
  WriteText(replayed, ReadText(place / "ald.kpf"));
  const ProgramRun imported = Import({"--record", recording});
  ASSERT_EQ(imported.code, 0) << imported.err;
  std::string edited;
  for (auto& line : RecordingLines(recording)) {
    if (line.contains("major")) line["major"] = 16;
    edited += line.dump() + '\n';
  }
  WriteText(recording, edited);
  const ProgramRun run = RunProgram(With({"import", "--replay", recording, "--plan", replayed}, amounts));
  EXPECT_EQ(run.code, 0) << run.err;
  EXPECT_EQ(run.err, imported.err);
  EXPECT_EQ(ReadText(replayed), ReadText(place / "ald.kpf"));
}

TEST(WarningAdvice, NamesARemedyWhereTheCommandLineHasOne) {
  const auto advice = [](WarningCode code) { return WarningAdvice({code, {{.code = code, .name = "X"}}}); };
  EXPECT_NE(advice(WarningCode::UnsupportedProcessor).find("; import with --amounts-from"),
            std::string::npos);
  EXPECT_EQ(advice(WarningCode::NameWithQuote),
            WarningText({WarningCode::NameWithQuote, {{.code = WarningCode::NameWithQuote, .name = "X"}}}));
}

}  // namespace
}  // namespace krnqb::cli
