#include "cli/program/child_process.h"

#include <cstdlib>
#include <filesystem>

#include "cli/workplace.h"

namespace krnqb::cli::tests {
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

// The background jobs of a shell, and what they start, ignore interrupts; this program must receive them.
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

int StatusOf(int status) {
  return WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status);
}

}  // namespace

ChildProcess::ChildProcess(const std::vector<std::string>& arguments, Output output) {
  Pipe out = MakePipe();
  Pipe err = MakePipe();
  if (output == Output::Blocked) filling_ = Fill(out.writeEnd);
  std::vector<std::string> words{KRNQB_PROGRAM};
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
  if (failure != 0) throw std::runtime_error("krnqb does not start");
  output_ = std::move(out.readEnd);
  errors_ = std::move(err.readEnd);
}

ChildProcess::~ChildProcess() {
  if (process_ <= 0) return;
  Signal(SIGKILL);
  Wait();
}

std::string ChildProcess::ReadLine() {
  std::string line;
  char character = 0;
  while (::read(output_.Number(), &character, 1) == 1 && character != '\n') line += character;
  return line;
}

void ChildProcess::Signal(int number) const {
  ::kill(process_, number);
}

void ChildProcess::CloseOutput() {
  output_ = FileDescriptor();
}

int ChildProcess::Wait() {
  int status = 0;
  ::waitpid(process_, &status, 0);
  process_ = -1;
  return StatusOf(status);
}

std::string ChildProcess::Drain() {
  return ReadToEnd(output_).substr(filling_);
}

std::string ChildProcess::Errors() {
  return ReadToEnd(errors_);
}

ShellRun RunShell(const std::string& folder, const std::string& command) {
  const std::string programFolder = std::filesystem::path(KRNQB_PROGRAM).parent_path().string();
  const Workplace outputs;
  WriteText(outputs / "command.sh",
            "cd '" + folder + "' || exit 99\nPATH='" + programFolder + "':$PATH\n" + command + "\n");
  const std::string line =
      "sh '" + (outputs / "command.sh") + "' >'" + (outputs / "out") + "' 2>'" + (outputs / "err") + "'";
  const int status = std::system(line.c_str());
  return {krnqb::tests::ExitStatus(status), ReadText(outputs / "out"), ReadText(outputs / "err")};
}

}  // namespace krnqb::cli::tests
