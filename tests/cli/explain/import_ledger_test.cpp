#include <gtest/gtest.h>
#include <sys/stat.h>

#include "cli/explain/ledger_proof.h"
#include "cli/workplace.h"
#include "ledger/file.h"
#include "limited_files.h"
#include "plan_file/history/digest.h"

namespace krnqb::cli {
namespace {

using krnqb::tests::LimitedFiles;
using tests::LedgerListing;
using tests::ProgramRun;
using tests::ReadText;
using tests::RunProgram;
using tests::With;
using tests::Words;
using tests::Workplace;

class ImportLedger : public testing::Test {
 protected:
  ImportLedger() { place.NurseryYear(); }

  ProgramRun Import(const Words& more) const {
    return RunProgram(place.ImportArguments(
        "ald.kpf", With({"--expenses", "--income", "--balances", "all", "--ledger", ledger}, more)));
  }
  ledger::LedgerFacts Facts() const { return ledger::LedgerFile::Open(ledger).Facts(); }

  const Workplace place;
  const std::string plan = place / "ald.kpf";
  const std::string ledger = place / "nursery.kql";
};

TEST_F(ImportLedger, BelongsToTheVersionThatIsWritten) {
  const ProgramRun run = Import({});
  EXPECT_EQ(run.code, 0) << run.err;
  EXPECT_NE(run.out.find("To see what a figure is made of: krnqb explain " + ledger + " --row NAME\n"),
            std::string::npos)
      << run.out;
  const ledger::LedgerFacts facts = Facts();
  EXPECT_EQ(facts.planDigest, plan_file::DigestOf(ReadText(plan)));
  EXPECT_EQ(facts.planVersion, "written");
  EXPECT_EQ(facts.plan, plan);
  EXPECT_EQ(facts.when, "2003-01-15T12:00:00");
  EXPECT_EQ(facts.companyName, "Hollow Creek Nursery");
  EXPECT_EQ(facts.product, "ald");
  EXPECT_EQ(facts.periodFrom, "2002-01");
  EXPECT_EQ(facts.periodTo, "2002-12");
  EXPECT_NE(std::ranges::find(facts.options, "--balances all"), facts.options.end());
}

TEST_F(ImportLedger, OfAnUnchangedPlanBelongsToItsVersion) {
  Import({});
  const std::string first = LedgerListing(ledger);
  const std::string before = ReadText(plan);
  EXPECT_EQ(Import({}).code, 0);
  EXPECT_EQ(ReadText(plan), before);
  EXPECT_EQ(Facts().planVersion, "unchanged");
  EXPECT_EQ(Facts().planDigest, plan_file::DigestOf(before));
  EXPECT_EQ(LedgerListing(ledger), first);
}

TEST_F(ImportLedger, OfADryRunBelongsToTheVersionThatWouldBeWritten) {
  const std::string before = ReadText(plan);
  const ProgramRun run = Import({"--dry-run"});
  EXPECT_NE(run.out.find("Dry run: the plan was not written.\n"), std::string::npos) << run.out;
  EXPECT_EQ(ReadText(plan), before);
  const ledger::LedgerFacts dry = Facts();
  EXPECT_EQ(dry.planVersion, "dry-run");
  const std::string listing = LedgerListing(ledger);
  Import({});
  EXPECT_EQ(LedgerListing(ledger), listing);
  EXPECT_EQ(Facts().planDigest, dry.planDigest);
}

TEST_F(ImportLedger, ChangesNothingInThePlan) {
  Import({});
  const Workplace other;
  other.NurseryYear();
  RunProgram(other.ImportArguments("ald.kpf", {"--expenses", "--income", "--balances", "all"}));
  EXPECT_EQ(tests::WithoutStamps(ReadText(other / "ald.kpf")), tests::WithoutStamps(ReadText(plan)));
}

TEST_F(ImportLedger, RefusesToReplaceAnotherKindOfFile) {
  tests::WriteText(ledger,
                   "the notes of a whole year, and not a ledger at all: they have to stay, whatever "
                   "is typed on a command line that names them by mistake");
  const std::string before = ReadText(plan);
  const std::string notes = ReadText(ledger);
  const ProgramRun run = Import({});
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.err, "krnqb: writing the ledger failed: " + ledger +
                         " is another kind of file, and only an earlier ledger is overwritten; the plan was "
                         "not written; give another file with --ledger, or import without it\n");
  EXPECT_EQ(ReadText(plan), before);
  EXPECT_EQ(ReadText(ledger), notes);
}

TEST_F(ImportLedger, OfAFailedImportIsNotWritten) {
  const ProgramRun run = RunProgram(
      place.ImportArguments("ald.kpf", {"--expenses", "--balances", "all", "--strict", "--ledger", ledger}));
  EXPECT_EQ(run.code, 1);
  EXPECT_FALSE(std::filesystem::exists(ledger));
  EXPECT_FALSE(std::filesystem::exists(ledger + ".tmp"));
}

TEST_F(ImportLedger, ThatCannotBeWrittenLeavesThePlanUnchanged) {
  const std::string before = ReadText(plan);
  ProgramRun run;
  {
    const LimitedFiles limited(100'000);  // room for the plan, not for the ledger
    run = Import({});
  }
  EXPECT_EQ(run.code, 1);
  EXPECT_NE(run.err.find("krnqb: writing the ledger failed: "), std::string::npos) << run.err;
  EXPECT_NE(run.err.find("the plan was not written"), std::string::npos) << run.err;
  EXPECT_EQ(ReadText(plan), before);
  EXPECT_FALSE(std::filesystem::exists(ledger));
  EXPECT_FALSE(std::filesystem::exists(ledger + ".tmp"));
}

TEST_F(ImportLedger, IsTheEarlierOneIfThePlanCannotBeSaved) {
  Import({});
  const std::string earlier = ReadText(ledger);
  std::filesystem::copy_file(place / "cor.kpf", plan, std::filesystem::copy_options::overwrite_existing);
  std::filesystem::remove_all(plan + ".history");
  tests::WriteText(plan + ".history", "a file in the place of the history");
  const std::string before = ReadText(plan);
  const ProgramRun run = Import({});
  EXPECT_EQ(run.code, 1) << run.out;
  EXPECT_EQ(ReadText(plan), before);
  EXPECT_EQ(ReadText(ledger), earlier);
  EXPECT_FALSE(std::filesystem::exists(ledger + ".previous"));
}

TEST_F(ImportLedger, IsInTheJsonOutput) {
  const ProgramRun run = Import({"--json"});
  EXPECT_NE(run.out.find("\"ledger\": \"" + ledger + '"'), std::string::npos) << run.out;
}

}  // namespace
}  // namespace krnqb::cli
