#include "cli/workplace.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <sstream>

#include "build_paths.h"
#include "cli/run_krnqb.h"
#include "fakes/fixed_clock.h"
#include "json_schema.h"

namespace krnqb::cli::tests {

namespace fs = std::filesystem;

namespace {

// The program expects its process to end soon and leaves interrupts without effect; a test's process goes on.
class KeptInterrupts {
 public:
  KeptInterrupts() {
    for (std::size_t index = 0; index < signals.size(); ++index) {
      sigaction(signals[index], nullptr, &actions_[index]);
    }
  }
  ~KeptInterrupts() {
    for (std::size_t index = 0; index < signals.size(); ++index) {
      sigaction(signals[index], &actions_[index], nullptr);
    }
  }
  KeptInterrupts(const KeptInterrupts&) = delete;
  KeptInterrupts& operator=(const KeptInterrupts&) = delete;

 private:
  static constexpr std::array signals{SIGINT, SIGTERM, SIGHUP};
  std::array<struct sigaction, signals.size()> actions_{};
};

bool Contains(const Words& words, std::string_view word) {
  return std::ranges::find(words, word) != words.end();
}

// The journal is complete once the import has succeeded.
void ExpectValidJournal(const Words& arguments) {
  const auto option = std::ranges::find(arguments, "--journal");
  if (option == arguments.end() || option + 1 == arguments.end() || !fs::is_regular_file(*(option + 1)))
    return;
  std::istringstream lines(ReadText(*(option + 1)));
  for (std::string line; std::getline(lines, line);) {
    EXPECT_EQ(krnqb::tests::SchemaViolation("journal", line), "") << line;
  }
}

}  // namespace

std::string SchemaOf(const Words& arguments) {
  const auto word = [&](std::size_t index) { return index < arguments.size() ? arguments[index] : ""; };
  const Words alone{"import", "accounts", "companies", "explain", "reconcile", "doctor", "summary"};
  if (Contains(alone, word(0))) return word(0);
  const Words pairs{"company info", "company check", "company profit-and-loss",
                    "plan show",    "plan history",  "plan diff"};
  if (Contains(pairs, word(0) + ' ' + word(1))) return word(0) + '-' + word(1);
  return "failure";
}

ProgramRun RunProgram(const std::vector<std::string>& arguments) {
  return RunProgram(arguments, {.clock = JanuaryClock(), .errorIsTerminal = false});
}

ProgramRun RunProgram(const std::vector<std::string>& arguments, const Surroundings& surroundings) {
  const KeptInterrupts interrupts;
  std::ostringstream out;
  std::ostringstream err;
  const int code = RunKrnqb(arguments, out, err, surroundings);
  const bool help = Contains(arguments, "--help") || Contains(arguments, "-h");
  if (Contains(arguments, "--json") && !help) {
    EXPECT_EQ(krnqb::tests::SchemaViolation(SchemaOf(arguments), out.str()), "") << out.str();
  }
  if (code == 0 || code == 3) ExpectValidJournal(arguments);
  return {code, out.str(), err.str()};
}

Words With(Words words, const Words& more) {
  words.insert(words.end(), more.begin(), more.end());
  return words;
}

std::shared_ptr<Clock> JanuaryClock() {
  return std::make_shared<fakes::FixedClock>(
      LocalDateTime{.year = 2003, .month = 1, .day = 15, .hour = 12, .minute = 0, .second = 0});
}

std::string Replaced(std::string text, std::string_view part, std::string_view replacement) {
  const std::size_t position = text.find(part);
  if (position == std::string::npos) {
    ADD_FAILURE() << "no \"" << part << "\" in the text";
    return text;
  }
  return text.replace(position, part.size(), replacement);
}

std::string WithoutStamps(std::string text) {
  constexpr std::string_view begin = "<lastsavedid>";
  constexpr std::string_view end = "</lastsavedid>";
  for (std::size_t stamp = 0; (stamp = text.find(begin, stamp)) != std::string::npos;) {
    const std::size_t stampEnd = text.find(end, stamp);
    if (stampEnd == std::string::npos) break;
    text.erase(stamp, stampEnd + end.size() - stamp);
  }
  return text;
}

Workplace::Workplace() {
  for (const std::string product : {"ald", "bri", "cor"}) {
    const std::string sample = krnqb::tests::SamplesFolder() + "/plans/nursery-" + product + ".kpf";
    WriteText(folder_ / (product + ".kpf"), ReadText(sample));
  }
}

std::string Workplace::Nursery(std::string_view processorVersion) const {
  const std::string file = *this / "nursery.qbw";
  const ProgramRun made = RunProgram({"company", "new", file, "--name", "Nursery", "--fiscal-month",
                                      "January", "--processor", std::string(processorVersion)});
  EXPECT_EQ(made.code, 0) << made.err;
  const ProgramRun loaded =
      RunProgram({"company", "load", file, krnqb::tests::SamplesFolder() + "/nursery/accounts.xml",
                  krnqb::tests::SamplesFolder() + "/nursery/company.xml",
                  krnqb::tests::SamplesFolder() + "/nursery/items.xml"});
  EXPECT_EQ(loaded.code, 0) << loaded.err;
  return file;
}

std::string Workplace::NurseryYear(std::string_view processorVersion) const {
  return SampleCompany("nursery", processorVersion);
}

std::string Workplace::SampleCompany(const std::string& sample, std::string_view processorVersion) const {
  const std::string file = *this / (sample + ".qbw");
  const ProgramRun made = RunProgram({"company", "new", file, "--name", "Sample", "--fiscal-month", "January",
                                      "--processor", std::string(processorVersion)});
  EXPECT_EQ(made.code, 0) << made.err;
  std::vector<std::string> loading{"company", "load", file};
  for (const auto& document : fs::directory_iterator(fs::path(krnqb::tests::SamplesFolder()) / sample)) {
    loading.push_back(document.path().string());
  }
  std::ranges::sort(loading.begin() + 3, loading.end());
  const ProgramRun loaded = RunProgram(loading);
  EXPECT_EQ(loaded.code, 0) << loaded.err;
  return file;
}

std::vector<std::string> Workplace::ImportArguments(std::string_view plan,
                                                    const std::vector<std::string>& more) const {
  std::vector<std::string> arguments{"import", "--company", *this / "nursery.qbw", "--plan", *this / plan};
  arguments.insert(arguments.end(), more.begin(), more.end());
  return arguments;
}

}  // namespace krnqb::cli::tests
