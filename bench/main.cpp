#include <fmt/format.h>
#include <malloc.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "bench/answer_runs.h"
#include "bench/import_run.h"

namespace {

constexpr std::string_view usage =
    "usage: krnqb_bench import COMPANY PLAN [--requests FILE] [--months YYYY-MM[,YYYY-MM]...]\n"
    "       krnqb_bench parse COMPANY REQUESTS\n"
    "       krnqb_bench events COMPANY REQUESTS\n"
    "       krnqb_bench queries COMPANY REQUESTS\n"
    "       krnqb_bench responses COMPANY REQUESTS FOLDER\n"
    "\n"
    "Measures one task per process, so that its peak memory is its own: an import without the request\n"
    "processor, parsing the same answers into documents or into events, or answering. Prints lines \"NAME "
    "VALUE\": wall and CPU seconds,\n"
    "bytes. REQUESTS is a file with the requests of an import, written by --requests.\n";

using Arguments = std::vector<std::string_view>;

std::set<std::string> Months(std::string_view list) {
  std::set<std::string> months;
  while (!list.empty()) {
    const std::size_t end = std::min(list.find(','), list.size());
    months.emplace(list.substr(0, end));
    list.remove_prefix(std::min(end + 1, list.size()));
  }
  return months;
}

bool Import(const Arguments& arguments) {
  if (arguments.size() < 3 || arguments.size() % 2 == 0) return false;
  krnqb::bench::ImportRun run{.company = arguments[1], .plan = arguments[2], .requestFile = {}, .months = {}};
  for (std::size_t index = 3; index < arguments.size(); index += 2) {
    if (arguments[index] == "--requests") {
      run.requestFile = arguments[index + 1];
    } else if (arguments[index] == "--months") {
      run.months = Months(arguments[index + 1]);
    } else {
      return false;
    }
  }
  krnqb::bench::RunImport(run);
  return true;
}

bool Run(const Arguments& arguments) {
  const std::string_view mode = arguments.empty() ? "" : arguments[0];
  if (mode == "import") return Import(arguments);
  if (mode == "parse" && arguments.size() == 3) {
    krnqb::bench::RunParse(arguments[1], arguments[2]);
  } else if (mode == "events" && arguments.size() == 3) {
    krnqb::bench::RunEvents(arguments[1], arguments[2]);
  } else if (mode == "queries" && arguments.size() == 3) {
    krnqb::bench::RunQueries(arguments[1], arguments[2]);
  } else if (mode == "responses" && arguments.size() == 4) {
    krnqb::bench::RunResponses(arguments[1], arguments[2], arguments[3]);
  } else {
    return false;
  }
  return true;
}

}  // namespace

int main(int count, char** values) {
  // As in krnqb: large blocks go back to the system at once.
  mallopt(M_MMAP_THRESHOLD, 1 << 20);
  try {
    if (Run(Arguments(values + 1, values + count))) return 0;
    fmt::print(stderr, "{}", usage);
    return 2;
  } catch (const std::exception& failure) {
    fmt::print(stderr, "krnqb_bench: {}\n", failure.what());
    return 1;
  }
}
