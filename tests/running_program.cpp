#include "running_program.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <stdexcept>

namespace krnqb::tests {
namespace {

using files::FileDescriptor;

struct Pipe {
  FileDescriptor readEnd;
  FileDescriptor writeEnd;
};

Pipe MakePipe() {
  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
  return {FileDescriptor(ends[0]), FileDescriptor(ends[1])};
}

// Restores SIGINT, which is ignored in background jobs of a shell and in the processes that they start.
struct DefaultInterrupts {
  DefaultInterrupts() {
    sigset_t interrupts;
    sigemptyset(&interrupts);
    sigaddset(&interrupts, SIGINT);
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setsigdefault(&attributes, &interrupts);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
  }
  ~DefaultInterrupts() { posix_spawnattr_destroy(&attributes); }
  DefaultInterrupts(const DefaultInterrupts&) = delete;
  DefaultInterrupts& operator=(const DefaultInterrupts&) = delete;

  posix_spawnattr_t attributes{};
};

}  // namespace

int ExitStatus(int waitStatus) noexcept {
  return WIFSIGNALED(waitStatus) ? -WTERMSIG(waitStatus) : WEXITSTATUS(waitStatus);
}

RunningProgram::RunningProgram(const std::string& program, const std::vector<std::string>& arguments) {
  Pipe out = MakePipe();
  Pipe err = MakePipe();
  std::vector<std::string> words{program};
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<char*> pointers;
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);

  posix_spawn_file_actions_t actions{};
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, out.writeEnd.Number(), STDOUT_FILENO);
  posix_spawn_file_actions_adddup2(&actions, err.writeEnd.Number(), STDERR_FILENO);
  const DefaultInterrupts interrupts;
  const int failure =
      ::posix_spawn(&process_, words[0].c_str(), &actions, &interrupts.attributes, pointers.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  if (failure != 0) throw std::runtime_error(program + " does not start");
  output_ = std::move(out.readEnd);
  errors_ = std::move(err.readEnd);
}

RunningProgram::~RunningProgram() {
  if (process_ <= 0) return;
  Signal(SIGKILL);
  Wait();
}

std::string RunningProgram::ReadLine() {
  std::string line;
  char character = 0;
  while (::read(output_.Number(), &character, 1) == 1 && character != '\n') line += character;
  return line;
}

void RunningProgram::Signal(int number) const {
  ::kill(process_, number);
}

void RunningProgram::CloseOutput() {
  output_ = FileDescriptor();
}

int RunningProgram::Wait() {
  int status = 0;
  ::waitpid(process_, &status, 0);
  process_ = -1;
  return ExitStatus(status);
}

std::string RunningProgram::Errors() {
  std::string text;
  std::array<char, 4096> buffer{};
  for (ssize_t count = 0; (count = ::read(errors_.Number(), buffer.data(), buffer.size())) > 0;) {
    text.append(buffer.data(), static_cast<std::size_t>(count));
  }
  return text;
}

}  // namespace krnqb::tests
