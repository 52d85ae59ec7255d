#pragma once

#include <chrono>
#include <cstdint>

namespace krnqb::bench {

/// Wall time and CPU time (user and system) of this process. On a shared machine CPU time is more reliable.
struct Elapsed {
  std::chrono::duration<double> wall{};
  std::chrono::duration<double> cpu{};

  Elapsed& operator+=(const Elapsed& other) noexcept;
  Elapsed operator-(const Elapsed& other) const noexcept { return {wall - other.wall, cpu - other.cpu}; }
};

/// Measures from its construction.
class Stopwatch {
 public:
  Stopwatch() noexcept : begin(Now()) {}
  Elapsed Read() const noexcept { return Now() - begin; }

 private:
  static Elapsed Now() noexcept;

  Elapsed begin;
};

/// Returns the peak memory of this process, in bytes.
std::int64_t PeakMemory() noexcept;

}  // namespace krnqb::bench
