#include "bench/stopwatch.h"

#include <sys/resource.h>

namespace krnqb::bench {
namespace {

rusage Usage() noexcept {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage;
}

std::chrono::duration<double> Seconds(const timeval& time) noexcept {
  return std::chrono::seconds(time.tv_sec) + std::chrono::microseconds(time.tv_usec);
}

}  // namespace

Elapsed& Elapsed::operator+=(const Elapsed& other) noexcept {
  wall += other.wall;
  cpu += other.cpu;
  return *this;
}

Elapsed Stopwatch::Now() noexcept {
  const rusage usage = Usage();
  return {std::chrono::steady_clock::now().time_since_epoch(),
          Seconds(usage.ru_utime) + Seconds(usage.ru_stime)};
}

std::int64_t PeakMemory() noexcept {
  // The C library declares this field as a union of two types of the same size.
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-union-access)
  return Usage().ru_maxrss * std::int64_t{1024};
}

}  // namespace krnqb::bench
