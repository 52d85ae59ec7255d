// A program for the tests that kill a save or restrict its rights:
//
//   plan_write_child step PLAN VERSION STEP MOMENT   saves once and kills itself at that step
//   plan_write_child loop PLAN VERSION               saves one version after another until killed; prints a
//                                                    line after the first
//   plan_write_child import PLAN VERSION COUNT       imports once, keeping two versions, and kills itself at
//   the
//                                                    moment with that number, counted from 1
//   plan_write_child undo PLAN COUNT                 undoes once and does the same
//   plan_write_child hold PLAN                       locks the plan, prints a line and waits to be killed
//   plan_write_child unprivileged PLAN               saves as an unprivileged user
//   plan_write_child limited PLAN                    saves with a file size limit of 200 bytes
//
// If a save fails, it prints the error and exits with 3.

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <csignal>
#include <string>
#include <vector>

#include "files/lock.h"
#include "files/step_operations.h"
#include "krnqb/error.h"
#include "plan_file/file.h"
#include "plan_file/fixture.h"
#include "plan_file/history/testing.h"

namespace krnqb::plan_file {
namespace {

using files::Moment;
using files::momentNames;
using files::Step;
using files::stepNames;
using files::StepOperations;

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

// Counts the moments before, within and after all steps that change the disk.
class KillingOperations : public StepOperations {
 public:
  explicit KillingOperations(int moment)
      : StepOperations([this](Step /*step*/, Moment /*when*/) { return Pass(); }), moment_(moment) {}

  // A killed process loses nothing that is not flushed.
  std::error_code Sync(const files::FileDescriptor& /*file*/) override {
    Pass();
    return {};
  }
  std::error_code SyncFolder(const std::filesystem::path& /*folder*/) override {
    Pass();
    return {};
  }
  void Remove(const std::filesystem::path& file) noexcept override {
    Pass();
    StepOperations::Remove(file);
    Pass();
  }

 private:
  std::error_code Pass() noexcept {
    if (++passed_ == moment_) ::kill(::getpid(), SIGKILL);
    return {};
  }

  int moment_;
  int passed_ = 0;
};

int ImportUpTo(const std::string& plan, int version, int moment) {
  KillingOperations operations(moment);
  constexpr std::int32_t keep = 2;
  ImportVersion(plan, version, operations, keep);
  return 0;
}

int UndoUpTo(const std::string& plan, int moment) {
  KillingOperations operations(moment);
  Undo(plan, operations);
  return 0;
}

[[noreturn]] void SaveForever(const std::string& plan, int version) {
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
  if (words.size() == 4 && words[0] == "import")
    return ImportUpTo(words[1], Number(words[2]), Number(words[3]));
  if (words.size() == 3 && words[0] == "undo") return UndoUpTo(words[1], Number(words[2]));
  if (words.size() == 3 && words[0] == "loop") SaveForever(words[1], Number(words[2]));
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
