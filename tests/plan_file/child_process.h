#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

#include "files/descriptor.h"

namespace krnqb::plan_file {

/// A running plan_write_child. One that still runs at the end of its object's life is killed.
class ChildProcess {
 public:
  explicit ChildProcess(const std::vector<std::string>& arguments);
  ~ChildProcess();
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  /// The next line that the process prints, or what it printed before it ended.
  std::string ReadLine();
  void Kill();
  /// Waits for the end and gives the process's exit status, or minus the signal that ended it.
  int Wait();

 private:
  pid_t process_ = -1;
  files::FileDescriptor output_;
};

}  // namespace krnqb::plan_file
