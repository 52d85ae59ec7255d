// A process for the tests that kill it or take rights from it:
//
//   plan_write_child step PLAN VERSION STEP MOMENT   saves once and kills itself at that step
//   plan_write_child loop PLAN VERSION               saves version after version until it is killed, and
//   prints a
//                                                    line after the first
//   plan_write_child hold PLAN                       claims the plan, prints a line and waits to be killed
//   plan_write_child unprivileged PLAN               saves as a person without special rights
//   plan_write_child limited PLAN                    saves while no file may grow past 200 bytes
//
// A save that fails prints its error and exits with 3.

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <csignal>
#include <string>
#include <vector>

#include "files/lock.h"
#include "krnqb/error.h"
#include "plan_file/file.h"
#include "plan_file/fixture.h"
#include "plan_file/step_operations.h"

namespace krnqb::plan_file {
namespace {

constexpr int failed = 3;
constexpr int wrongUsage = 2;

void Print(std::string line) {
  line += '\n';
  if (::write(STDOUT_FILENO, line.data(), line.size()) < 0) ::_exit(wrongUsage);
}

int Number(const std::string& text) {
  int number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

int SaveUpTo(const std::string& plan, int version, std::string_view step, std::string_view moment) {
  StepOperations operations([&](Step at, Moment when) -> std::error_code {
    if (stepNames[static_cast<std::size_t>(at)] == step &&
        momentNames[static_cast<std::size_t>(when)] == moment) {
      ::kill(::getpid(), SIGKILL);
    }
    return {};
  });
  const files::PlanLock lock(plan);
  const std::shared_ptr<PlanFile> file = PlanFile::Open(plan);
  MarkVersion(*file, version);
  file->Save(operations);
  return 0;
}

[[noreturn]] void SaveForEver(const std::string& plan, int version) {
  const files::PlanLock lock(plan);
  const std::shared_ptr<PlanFile> file = PlanFile::Open(plan);
  for (int saves = 0;; ++saves) {
    MarkVersion(*file, version + saves);
    file->Save();
    if (saves == 0) Print("saved");
  }
}

[[noreturn]] void Hold(const std::string& plan) {
  const files::PlanLock lock(plan);
  Print("held");
  for (;;) ::pause();
}

int SaveOnce(const std::string& plan) {
  const std::shared_ptr<PlanFile> file = PlanFile::Open(plan);
  MarkVersion(*file, 1);
  file->Save();
  return 0;
}

int SaveUnprivileged(const std::string& plan) {
  constexpr unsigned int nobody = 65534;
  if (::geteuid() == 0 && (::setgid(nobody) != 0 || ::setuid(nobody) != 0)) return wrongUsage;
  return SaveOnce(plan);
}

int SaveLimited(const std::string& plan) {
  const rlimit limit{200, 200};
  ::signal(SIGXFSZ, SIG_IGN);
  if (::setrlimit(RLIMIT_FSIZE, &limit) != 0) return wrongUsage;
  return SaveOnce(plan);
}

int Run(const std::vector<std::string>& words) {
  if (words.size() == 5 && words[0] == "step")
    return SaveUpTo(words[1], Number(words[2]), words[3], words[4]);
  if (words.size() == 3 && words[0] == "loop") SaveForEver(words[1], Number(words[2]));
  if (words.size() == 2 && words[0] == "hold") Hold(words[1]);
  if (words.size() == 2 && words[0] == "unprivileged") return SaveUnprivileged(words[1]);
  if (words.size() == 2 && words[0] == "limited") return SaveLimited(words[1]);
  return wrongUsage;
}

}  // namespace
}  // namespace krnqb::plan_file

int main(int count, char** words) {
  try {
    return krnqb::plan_file::Run({words + 1, words + count});
  } catch (const krnqb::Error& error) {
    krnqb::plan_file::Print(error.Description());
    return krnqb::plan_file::failed;
  }
}
