#include <fmt/format.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <ostream>
#include <streambuf>

#include "cli/run_krnqb.h"
#include "cli/workplace.h"
#include "faults/failing_memory.h"
#include "faults/strides.h"
#include "ledger/file.h"
#include "plan_file/history/digest.h"

// The command `import` when memory runs out, each run in a process of its own.

namespace krnqb::faults {
namespace {

using cli::tests::ReadText;
using cli::tests::RunProgram;
using cli::tests::Workplace;
using cli::tests::WriteText;

namespace fs = std::filesystem;

// What a process with a failing allocation leaves to the test.
struct Remains {
  bool struck;
  int code;
  long blocks;
  long long databaseBytes;
  char errors[4000];
};

// A stream's buffer that needs no memory of its own.
class FixedBuffer : public std::streambuf {
 public:
  FixedBuffer(char* begin, std::size_t size) { setp(begin, begin + size); }
};

class SharedRemains {
 public:
  SharedRemains()
      : remains_(static_cast<Remains*>(
            ::mmap(nullptr, sizeof(Remains), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0))) {}
  ~SharedRemains() { ::munmap(remains_, sizeof(Remains)); }
  SharedRemains(const SharedRemains&) = delete;
  SharedRemains& operator=(const SharedRemains&) = delete;
  Remains& operator*() const noexcept { return *remains_; }
  Remains* operator->() const noexcept { return remains_; }

 private:
  Remains* remains_;
};

struct CommandCase {
  const char* name;
  Allocator allocator;
  Shortage shortage;
  bool balances;
  bool ledger = false;
};

class CommandOutOfMemory : public testing::TestWithParam<CommandCase> {
 protected:
  CommandOutOfMemory() : plan_(place_ / "ald.kpf"), oldText_(ReadText(plan_)) {
    place_.NurseryYear();
    arguments_ = place_.ImportArguments("ald.kpf", {"--expenses", "--income"});
    if (GetParam().balances) arguments_.insert(arguments_.end(), {"--balances", "all"});
    if (GetParam().ledger) arguments_.insert(arguments_.end(), {"--ledger", ledger_});
    EXPECT_EQ(RunProgram(arguments_).code, 0);
    newText_ = ReadText(plan_);
    EXPECT_NE(newText_, oldText_);
  }

  // Runs the command with a failing allocation. Returns its wait status.
  int RunDisturbed(long number) {
    for (const char* left : {"ald.kpf.bak", "ald.kpf.lock", "ald.kql"}) fs::remove(place_ / left);
    WriteText(plan_, oldText_);
    *remains_ = Remains{};
    const pid_t process = ::fork();
    if (process == 0) {
      try {
        RunInChild(number);
      } catch (...) {
        ::_exit(99);
      }
      ::_exit(0);
    }
    int status = 0;
    ::waitpid(process, &status, 0);
    return status;
  }

  static std::string FromRoot(const std::string& text) { return text.substr(text.find("<plan")); }

  // A plan that is saved has its ledger, any other one has none.
  std::string LedgerProblem() const {
    if (!GetParam().ledger) return {};
    if (fs::exists(ledger_ + ".tmp") || fs::exists(ledger_ + ".previous"))
      return "a part of a ledger is left";
    const bool saved = remains_->code == 0;
    if (fs::exists(ledger_) != saved) return saved ? "the ledger is missing" : "a ledger is left";
    if (!saved) return {};
    try {
      const ledger::LedgerFacts facts = ledger::LedgerFile::Open(ledger_).Facts();
      return facts.planDigest == plan_file::DigestOf(ReadText(plan_)) ? ""
                                                                      : "the ledger is another version's";
    } catch (const Error& error) {
      return error.Description();
    }
  }

  std::string Problem(int status) const {
    std::string text = ReadText(plan_);
    // What is before the root is left out if the XML library, without memory, takes it for malformed.
    const bool sameFromRoot = GetParam().allocator == Allocator::Xml && FromRoot(text) == FromRoot(newText_);
    if (sameFromRoot) text = newText_;
    if (text != oldText_ && text != newText_) return "the plan is torn";
    if (fs::exists(plan_ + ".tmp") || fs::exists(plan_ + ".bak.tmp")) return "a temporary file is left";
    if (text == newText_ && ReadText(plan_ + ".bak") != oldText_) return "the previous version is lost";
    // The XML library does not survive every failure of its own allocations.
    if (!WIFEXITED(status) && GetParam().allocator == Allocator::Xml) return {};
    if (WIFEXITED(status) && WEXITSTATUS(status) != 0) return "an exception left the program";
    if (!WIFEXITED(status)) return fmt::format("the program died of signal {}", WTERMSIG(status));
    if (const std::string ledger = LedgerProblem(); !ledger.empty()) return ledger;
    const std::string_view errors = remains_->errors;
    if (remains_->code == 0 && text != newText_) return "the program reports an import that is not saved";
    if (remains_->code != 0 && remains_->code != 1) return fmt::format("exit code {}", remains_->code);
    if (remains_->code == 1 && std::ranges::count(errors, '\n') == 0)
      return "the program fails without a word";
    if (remains_->code == 1 && text != oldText_)
      return "the program reports a failure after it saved: " + std::string(errors);
    if (remains_->blocks > 0 && GetParam().allocator != Allocator::Xml)
      return fmt::format("{} blocks are left in use", remains_->blocks);
    if (remains_->databaseBytes > 0) return "the database uses memory";
    return {};
  }

 private:
  void RunInChild(long number) {
    const long blocks = BlocksInUse();
    const long long databaseBytes = DatabaseBytesInUse();
    {
      const cli::Surroundings surroundings{.clock = cli::tests::JanuaryClock(), .errorIsTerminal = false};
      static std::array<char, 1 << 18> output;
      FixedBuffer printed(output.data(), output.size());
      FixedBuffer complaints(remains_->errors, sizeof(remains_->errors) - 1);
      std::ostream out(&printed);
      std::ostream err(&complaints);
      FailingMemory memory(GetParam().allocator, number, GetParam().shortage);
      remains_->code = cli::RunKrnqb(arguments_, out, err, surroundings);
      memory.Stop();
      remains_->struck = FailingMemory::Struck();
    }
    remains_->blocks = BlocksInUse() - blocks;
    remains_->databaseBytes = DatabaseBytesInUse() - databaseBytes;
  }

 protected:
  Workplace place_;
  std::string plan_;
  std::string ledger_ = place_ / "ald.kql";
  std::string oldText_;
  std::string newText_;
  std::vector<std::string> arguments_;
  SharedRemains remains_;
};

TEST_P(CommandOutOfMemory, LeavesTheOldPlanAndSaysSo) {
  long tried = 0;
  long died = 0;
  for (long number = 1;; number = Next(number, 12, 4999)) {
    const int status = RunDisturbed(number);
    if (WIFEXITED(status) && !remains_->struck) break;
    ++tried;
    if (!WIFEXITED(status)) ++died;
    EXPECT_EQ(Problem(status), "") << "allocation " << number << ": " << remains_->errors;
  }
  EXPECT_GE(tried, 12);
  EXPECT_EQ(RunProgram(arguments_).code, 0) << "the next import succeeds";
  EXPECT_EQ(ReadText(plan_), newText_);
  if (Nightly()) std::printf("%ld faults, %ld of them fatal to the program\n", tried, died);
}

INSTANTIATE_TEST_SUITE_P(
    Imports, CommandOutOfMemory,
    testing::Values(CommandCase{"NewPassing", Allocator::New, Shortage::Passing, false},
                    CommandCase{"NewLasting", Allocator::New, Shortage::Lasting, false},
                    CommandCase{"BalancesPassing", Allocator::New, Shortage::Passing, true},
                    CommandCase{"LedgerPassing", Allocator::New, Shortage::Passing, true, true},
                    CommandCase{"LedgerDatabasePassing", Allocator::Database, Shortage::Passing, true, true},
                    CommandCase{"LedgerDatabaseLasting", Allocator::Database, Shortage::Lasting, true, true},
                    CommandCase{"DatabasePassing", Allocator::Database, Shortage::Passing, true},
                    CommandCase{"DatabaseLasting", Allocator::Database, Shortage::Lasting, true},
                    CommandCase{"XmlPassing", Allocator::Xml, Shortage::Passing, true},
                    CommandCase{"XmlLasting", Allocator::Xml, Shortage::Lasting, true}),
    [](const testing::TestParamInfo<CommandCase>& test) { return std::string(test.param.name); });

}  // namespace
}  // namespace krnqb::faults
