#pragma once

#include <sys/types.h>
#include <unistd.h>

#include <filesystem>
#include <system_error>
#include <utility>

namespace krnqb::files {

/// Owns an open file descriptor. The destructor closes it, which also releases a lock taken through it.
class FileDescriptor {
 public:
  FileDescriptor() noexcept = default;
  /// Takes ownership of an open descriptor; -1 means no file.
  explicit FileDescriptor(int descriptor) noexcept : descriptor_(descriptor) {}
  /// Opens a file with the flags of open(2), closed in child processes. `mode` is the permissions of a file
  /// that is created, before the umask. Returns an empty descriptor, with the reason in errno, on failure.
  static FileDescriptor Open(const std::filesystem::path& file, int flags, mode_t mode = 0) noexcept;
  FileDescriptor(FileDescriptor&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    std::swap(descriptor_, other.descriptor_);
    return *this;
  }
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;
  ~FileDescriptor() {
    if (descriptor_ >= 0) ::close(descriptor_);
  }

  explicit operator bool() const noexcept { return descriptor_ >= 0; }
  int Number() const noexcept { return descriptor_; }

  /// Gives up ownership without closing the file, and returns its number.
  int Release() noexcept { return std::exchange(descriptor_, -1); }

  /// Locks the file for this owner alone, without waiting. Fails with EBUSY if another one has locked it.
  std::error_code Lock() const noexcept;

  /// Closes the file, if there is one, and returns the error of close(2).
  std::error_code Close() noexcept;

 private:
  int descriptor_ = -1;
};

}  // namespace krnqb::files
