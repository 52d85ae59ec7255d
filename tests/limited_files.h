#pragma once

#include <sys/resource.h>

#include <csignal>

namespace krnqb::tests {

/// Limits the size of files, in bytes, during its lifetime, so that writing a larger one fails as on a full
/// disk. `handler` receives the signal that the system then sends.
class LimitedFiles {
 public:
  explicit LimitedFiles(rlim_t size, void (*handler)(int) = SIG_IGN)
      : handlerBefore_(std::signal(SIGXFSZ, handler)) {
    ::getrlimit(RLIMIT_FSIZE, &before_);
    rlimit limit = before_;
    limit.rlim_cur = size;
    ::setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~LimitedFiles() {
    ::setrlimit(RLIMIT_FSIZE, &before_);
    std::signal(SIGXFSZ, handlerBefore_);
  }
  LimitedFiles(const LimitedFiles&) = delete;
  LimitedFiles& operator=(const LimitedFiles&) = delete;

 private:
  void (*handlerBefore_)(int);
  rlimit before_{};
};

}  // namespace krnqb::tests
