#include <gtest/gtest.h>

#include <map>
#include <set>
#include <sstream>

#include <fmt/format.h>

#include "build_paths.h"
#include "cli/workplace.h"
#include "golden.h"
#include "plan_file/changes.h"
#include "plan_file/file.h"
#include "plan_file/listing.h"

// Every import of a recorded exchange changes exactly the cells listed in its golden file.

namespace krnqb::cli {
namespace {

using krnqb::tests::ExpectGolden;
using plan_file::ChangeListing;
using plan_file::CompareTables;
using plan_file::PlanFile;
using tests::ReadText;
using tests::RunProgram;
using tests::Workplace;
using tests::WriteText;
using Words = std::vector<std::string>;

struct RecordedImport {
  std::string company;
  std::string product;
  std::string balances;
  std::string processorVersion;
  bool pastPerformance = false;

  std::string Name() const {
    return fmt::format("{}-{}-{}-{}{}", company, processorVersion, product, balances,
                       pastPerformance ? "-past" : "");
  }
};

void PrintTo(const RecordedImport& import, std::ostream* out) {
  *out << import.Name();
}

std::vector<RecordedImport> AllImports() {
  std::vector<RecordedImport> imports;
  for (const std::string version : {"1.1", "2.0"}) {
    for (const std::string product : {"ald", "bri", "cor"}) {
      for (const std::string balances : {"none", "planned", "actual", "all"}) {
        for (const bool past : {false, true})
          imports.push_back({"nursery", product, balances, version, past});
      }
    }
    for (const std::string company : {"print-shop", "bookkeeper"})
      imports.push_back({company, "ald", "all", version, true});
  }
  return imports;
}

Words Arguments(const RecordedImport& import, const std::string& plan) {
  Words words{"import",
              "--replay",
              fmt::format("{}/{}-{}.jsonl", krnqb::tests::RecordingsFolder(), import.company,
                          import.processorVersion),
              "--plan",
              plan,
              "--expenses",
              "--income",
              "--balances",
              import.balances,
              "--growth-income",
              "10",
              "--growth-cogs",
              "7",
              "--growth-expenses",
              "3",
              "--quiet"};
  if (import.product == "bri") words.emplace_back("--select-all-expenses");
  if (import.pastPerformance) words.emplace_back("--past-performance");
  return words;
}

// Lists the rows that an import added, one per line: table, block, row and cells, separated by tabs.
std::string AddedRows(const PlanFile& plan, const std::vector<plan_file::TableChange>& changes) {
  std::set<std::string> added;
  for (const plan_file::TableChange& table : changes) {
    for (const plan_file::RowChange& row : table.added)
      added.insert(fmt::format("{}\t{}\t{}\t", table.id, row.block, row.row));
  }
  std::map<std::string, std::string> rows;
  std::istringstream cells(plan_file::CellListing(plan));
  for (std::string line; std::getline(cells, line);) {
    const std::size_t text = line.rfind('\t');
    const std::string place = line.substr(0, line.rfind('\t', text - 1) + 1);
    if (added.contains(place)) rows[place] += line.substr(text);
  }
  std::string listing;
  for (const auto& [place, texts] : rows) listing += fmt::format("row\t{}{}\n", place, texts.substr(1));
  return listing;
}

class ChangedCellsGolden : public testing::TestWithParam<RecordedImport> {};

TEST_P(ChangedCellsGolden, MatchTheRecordedImport) {
  const Workplace place;
  const std::string before = place / (GetParam().product + ".kpf");
  const std::string plan = place / "plan.kpf";
  WriteText(plan, ReadText(before));
  const tests::ProgramRun run = RunProgram(Arguments(GetParam(), plan));
  ASSERT_EQ(run.code, 0) << run.err;
  const std::shared_ptr<PlanFile> imported = PlanFile::Open(plan);
  const std::vector<plan_file::TableChange> changes = CompareTables(*PlanFile::Open(before), *imported);
  ExpectGolden(fmt::format("{}/{}.txt", krnqb::tests::ChangesFolder(), GetParam().Name()),
               ChangeListing(changes) + AddedRows(*imported, changes));
}

INSTANTIATE_TEST_SUITE_P(Imports, ChangedCellsGolden, testing::ValuesIn(AllImports()));

}  // namespace
}  // namespace krnqb::cli
