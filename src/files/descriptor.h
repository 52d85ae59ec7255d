#pragma once

#include <sys/types.h>
#include <unistd.h>

#include <filesystem>
#include <utility>

namespace krnqb::files {

/// An open file of the system. Owns its descriptor and closes it at the end of its life, which also gives up
/// a lock that was taken through it.
class FileDescriptor {
 public:
  FileDescriptor() noexcept = default;
  /// Takes an open descriptor over; -1 stands for none.
  explicit FileDescriptor(int descriptor) noexcept : descriptor_(descriptor) {}
  /// Opens a file by the system's flags, and never for the programs that this one starts; `mode` is what a
  /// file that is created may permit. None, with the reason in errno, when that fails.
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

 private:
  int descriptor_ = -1;
};

}  // namespace krnqb::files
