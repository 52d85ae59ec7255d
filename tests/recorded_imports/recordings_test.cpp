#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <sstream>

#include "build_paths.h"
#include "cli/workplace.h"
#include "golden.h"

// The recordings hold every request of the imports of all products, once, with the answer of the sample
// company.

namespace krnqb::cli {
namespace {

using krnqb::tests::ExpectGolden;
using tests::ReadText;
using tests::Replaced;
using tests::RunProgram;
using tests::Workplace;
using tests::WriteText;
using Words = std::vector<std::string>;

struct Recording {
  std::string company;
  std::string processorVersion;
  Words plans;
};

void PrintTo(const Recording& recording, std::ostream* out) {
  *out << recording.company << '-' << recording.processorVersion;
}

// Returns a line without what its import asked for: the answers are those of several imports.
std::string WithoutImport(const std::string& line) {
  const std::size_t import =
      line.starts_with("{\"exchange\":") ? line.find(",\"import\":{") : std::string::npos;
  return import == std::string::npos ? line : line.substr(0, import) + '}';
}

// Appends the lines of another recording of the same company that are not known yet.
void Append(const std::string& file, std::set<std::string>& known, std::string& lines) {
  std::istringstream recording(ReadText(file));
  for (std::string line; std::getline(recording, line);) {
    line = WithoutImport(line);
    if (known.insert(line).second) lines += line + '\n';
  }
}

class RecordingGolden : public testing::TestWithParam<Recording> {};

TEST_P(RecordingGolden, MatchesTheAnswersOfTheSampleCompany) {
  const Workplace place;
  const auto& [company, processorVersion, plans] = GetParam();
  const std::string file = place.SampleCompany(company, processorVersion);
  std::set<std::string> known;
  std::string lines;
  for (const std::string& plan : plans) {
    Words arguments{"import",
                    "--company",
                    file,
                    "--plan",
                    place / (plan + ".kpf"),
                    "--dry-run",
                    "--expenses",
                    "--income",
                    "--balances",
                    "all",
                    "--quiet",
                    "--record",
                    place / "exchange.jsonl"};
    if (plan == "bri") arguments.emplace_back("--select-all-expenses");
    if (plan != "bri") arguments.emplace_back("--past-performance");
    ASSERT_EQ(RunProgram(arguments).code, 0);
    Append(place / "exchange.jsonl", known, lines);
  }
  ExpectGolden(krnqb::tests::RecordingsFolder() + "/" + company + "-" + processorVersion + ".jsonl",
               Replaced(lines, file, company + ".qbw"));
}

INSTANTIATE_TEST_SUITE_P(Samples, RecordingGolden,
                         testing::Values(Recording{"nursery", "1.1", {"ald", "bri", "cor"}},
                                         Recording{"nursery", "2.0", {"ald", "bri", "cor"}},
                                         Recording{"print-shop", "1.1", {"ald"}},
                                         Recording{"print-shop", "2.0", {"ald"}},
                                         Recording{"bookkeeper", "1.1", {"ald"}},
                                         Recording{"bookkeeper", "2.0", {"ald"}}));

}  // namespace
}  // namespace krnqb::cli
