#include "plan_file/child_process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>

#include "krnqb/error.h"

namespace krnqb::plan_file {

ChildProcess::ChildProcess(const std::vector<std::string>& arguments) {
  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) throw Error(error_number::unspecified, "no pipe");
  output_ = files::FileDescriptor(ends[0]);
  const files::FileDescriptor input(ends[1]);

  std::vector<std::string> words{KRNQB_PLAN_WRITE_CHILD};
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<char*> pointers;
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);

  posix_spawn_file_actions_t actions{};
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, input.Number(), STDOUT_FILENO);
  const int failure = ::posix_spawn(&process_, words[0].c_str(), &actions, nullptr, pointers.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  if (failure != 0) throw Error(error_number::unspecified, "plan_write_child does not start");
}

ChildProcess::~ChildProcess() {
  if (process_ <= 0) return;
  Kill();
  Wait();
}

std::string ChildProcess::ReadLine() {
  std::string line;
  char character = 0;
  while (::read(output_.Number(), &character, 1) == 1 && character != '\n') line += character;
  return line;
}

void ChildProcess::Kill() {
  ::kill(process_, SIGKILL);
}

int ChildProcess::Wait() {
  int status = 0;
  ::waitpid(process_, &status, 0);
  process_ = -1;
  return WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status);
}

}  // namespace krnqb::plan_file
