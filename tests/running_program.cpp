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

// Restores the signals that end a program: background jobs of a shell ignore SIGINT, those of nohup SIGHUP,
// and so do the processes that they start.
struct DefaultInterrupts {
  DefaultInterrupts() {
    sigset_t interrupts;
    sigemptyset(&interrupts);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&interrupts, signal);
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setsigdefault(&attributes, &interrupts);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
  }
  ~DefaultInterrupts() { posix_spawnattr_destroy(&attributes); }
  DefaultInterrupts(const DefaultInterrupts&) = delete;
  DefaultInterrupts& operator=(const DefaultInterrupts&) = delete;

  posix_spawnattr_t attributes{};
};

// Fills a pipe, so that the next write to it blocks. Returns the number of bytes written.
std::size_t Fill(const FileDescriptor& writeEnd) {
  const int flags = ::fcntl(writeEnd.Number(), F_GETFL);
  ::fcntl(writeEnd.Number(), F_SETFL, flags | O_NONBLOCK);
  std::size_t filling = 0;
  while (::write(writeEnd.Number(), "#", 1) == 1) ++filling;
  ::fcntl(writeEnd.Number(), F_SETFL, flags);
  return filling;
}

std::string ReadToEnd(const FileDescriptor& readEnd) {
  std::string text;
  std::array<char, 4096> buffer{};
  for (ssize_t count = 0; (count = ::read(readEnd.Number(), buffer.data(), buffer.size())) > 0;) {
    text.append(buffer.data(), static_cast<std::size_t>(count));
  }
  return text;
}

}  // namespace

int ExitStatus(int waitStatus) noexcept {
  return WIFSIGNALED(waitStatus) ? -WTERMSIG(waitStatus) : WEXITSTATUS(waitStatus);
}

RunningProgram::RunningProgram(const std::string& program, const std::vector<std::string>& arguments,
                               Output output) {
  Pipe out = MakePipe();
  Pipe err = MakePipe();
  if (output == Output::Blocked) filling_ = Fill(out.writeEnd);
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

std::string RunningProgram::Drain() {
  return ReadToEnd(output_).substr(filling_);
}

std::string RunningProgram::Errors() {
  return ReadToEnd(errors_);
}

}  // namespace krnqb::tests
