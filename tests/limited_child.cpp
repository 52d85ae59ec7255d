#include "limited_child.h"

#include <malloc.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <new>

// Only a program that is linked with the address sanitizer has it.
extern "C" void __asan_init() __attribute__((weak));  // NOLINT

namespace krnqb::tests {
namespace {

constexpr std::size_t mebibyte = std::size_t{1024} * 1024;
constexpr std::size_t memoryAllowed = 64 * mebibyte;
constexpr double secondsAllowed = 2;
constexpr rlim_t secondsUntilEnd = 20;
constexpr rlim_t addressesUntilEnd = rlim_t{6} * 1024 * mebibyte;

enum ChildResult : int { succeeded, failed, threw };

bool Sanitized() {
  return &__asan_init != nullptr;
}

std::size_t ResidentBytes() {
  std::ifstream statistics("/proc/self/statm");
  std::size_t total = 0;
  std::size_t resident = 0;
  statistics >> total >> resident;
  return resident * static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
}

void Limit(__rlimit_resource resource, rlim_t value) {
  const rlimit limit{value, value};
  ::setrlimit(resource, &limit);
}

[[noreturn]] void RunAsChild(const std::function<bool()>& action) {
  if (!Sanitized()) {
    Limit(RLIMIT_CPU, secondsUntilEnd);
    Limit(RLIMIT_AS, addressesUntilEnd);
  }
  Limit(RLIMIT_CORE, 0);
  int result = threw;
  try {
    result = action() ? succeeded : failed;
  } catch (...) {
    result = threw;
  }
  ::_exit(result);
}

double Seconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

}  // namespace

testing::AssertionResult StaysWithinLimits(std::size_t inputBytes, const std::function<bool()>& action) {
  // Memory that earlier tests have freed would hide what the action takes.
  ::malloc_trim(0);
  const std::size_t residentBefore = ResidentBytes();
  const pid_t child = ::fork();
  if (child < 0) return testing::AssertionFailure() << "no process could be started";
  if (child == 0) RunAsChild(action);
  int status = 0;
  rusage usage{};
  ::wait4(child, &status, 0, &usage);

  const double seconds = Seconds(usage.ru_utime) + Seconds(usage.ru_stime);
  const std::size_t resident = static_cast<std::size_t>(usage.ru_maxrss) * 1024;
  const std::size_t grown = resident > residentBefore ? resident - residentBefore : 0;
  const std::size_t allowed = 10 * inputBytes + memoryAllowed;
  const auto failure = [&] {
    return testing::AssertionFailure()
           << seconds << " s, " << grown / mebibyte << " MiB of " << allowed / mebibyte << " MiB: ";
  };
  if (WIFSIGNALED(status)) return failure() << "ended by signal " << WTERMSIG(status);
  if (WEXITSTATUS(status) == threw) return failure() << "the action threw";
  if (WEXITSTATUS(status) != succeeded) return failure() << "the action failed";
  if (Sanitized()) return testing::AssertionSuccess();
  if (seconds >= secondsAllowed) return failure() << "too slow";
  if (grown > allowed) return failure() << "too much memory";
  return testing::AssertionSuccess() << seconds << " s, " << grown / mebibyte << " MiB";
}

}  // namespace krnqb::tests
