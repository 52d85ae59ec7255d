#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string_view>
#include <system_error>

#include "files/descriptor.h"

namespace krnqb::files {

/// The steps of replacing a file, each one or two system calls. A step returns its failure as an error code
/// and does not throw. Tests override steps to make them fail.
class FileOperations {
 public:
  virtual ~FileOperations() = default;

  /// Fails if `file` is write-protected.
  virtual std::error_code CheckWritable(const std::filesystem::path& file) = 0;

  /// Creates an empty file for writing, with the permissions `mode` less the umask, and locks it until `file`
  /// is closed. An unlocked file of that name was left by a killed process and is replaced; a locked one
  /// fails with EBUSY.
  virtual std::error_code CreateTemporary(const std::filesystem::path& temporary, mode_t mode,
                                          FileDescriptor& file) = 0;

  /// Copies the permissions of the file `pattern` to `file` and, as far as the system allows, its owner and
  /// group.
  virtual std::error_code KeepOwnerAndMode(const FileDescriptor& file,
                                           const std::filesystem::path& pattern) = 0;

  /// Writes the whole contents.
  virtual std::error_code Write(const FileDescriptor& file, std::string_view contents) = 0;

  /// Flushes the file's contents to the disk.
  virtual std::error_code Sync(const FileDescriptor& file) = 0;

  /// Makes `backup` a hard link to `file`, or a copy where the file system has no hard links. Replaces an
  /// earlier backup atomically.
  virtual std::error_code KeepPrevious(const std::filesystem::path& file,
                                       const std::filesystem::path& backup) = 0;

  /// Renames `from` to `to`, replacing an existing file atomically.
  virtual std::error_code Rename(const std::filesystem::path& from, const std::filesystem::path& to) = 0;

  /// Renames `from` to `to`; fails with EEXIST if `to` exists.
  virtual std::error_code RenameToNew(const std::filesystem::path& from, const std::filesystem::path& to) = 0;

  /// Flushes the folder's entries to the disk.
  virtual std::error_code SyncFolder(const std::filesystem::path& folder) = 0;

  /// Removes a file if it exists.
  virtual void Remove(const std::filesystem::path& file) noexcept = 0;
};

/// The steps as system calls.
class SystemFileOperations : public FileOperations {
 public:
  std::error_code CheckWritable(const std::filesystem::path& file) override;
  std::error_code CreateTemporary(const std::filesystem::path& temporary, mode_t mode,
                                  FileDescriptor& file) override;
  std::error_code KeepOwnerAndMode(const FileDescriptor& file, const std::filesystem::path& pattern) override;
  std::error_code Write(const FileDescriptor& file, std::string_view contents) override;
  std::error_code Sync(const FileDescriptor& file) override;
  std::error_code KeepPrevious(const std::filesystem::path& file,
                               const std::filesystem::path& backup) override;
  std::error_code Rename(const std::filesystem::path& from, const std::filesystem::path& to) override;
  std::error_code RenameToNew(const std::filesystem::path& from, const std::filesystem::path& to) override;
  std::error_code SyncFolder(const std::filesystem::path& folder) override;
  void Remove(const std::filesystem::path& file) noexcept override;

 protected:
  /// Creates a hard link; fails if the name is taken or the file system has no hard links.
  virtual std::error_code AddName(const std::filesystem::path& file, const std::filesystem::path& name);
};

}  // namespace krnqb::files
