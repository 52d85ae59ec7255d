#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string_view>
#include <system_error>

#include "files/descriptor.h"

namespace krnqb::files {

/// The steps by which a file is replaced, each a call or two of the system. Every step reports its failure as
/// an error code; none throws for it. A test stands in for the system here to let a step fail.
class FileOperations {
 public:
  virtual ~FileOperations() = default;

  /// Whether `file` may be changed; a file that its owner protected against writing may not.
  virtual std::error_code CheckWritable(const std::filesystem::path& file) = 0;

  /// Creates an empty file for writing, with at most the permissions `mode`, and claims it until `file` is
  /// closed. A file of that name that nobody claims was left behind by a process that was killed, and is
  /// replaced; one that is claimed gives EBUSY.
  virtual std::error_code CreateTemporary(const std::filesystem::path& temporary, mode_t mode,
                                          FileDescriptor& file) = 0;

  /// Gives `file` the permissions of the file `pattern` and, as far as the system allows, its owner and
  /// group.
  virtual std::error_code KeepOwnerAndMode(const FileDescriptor& file,
                                           const std::filesystem::path& pattern) = 0;

  /// Writes the whole contents.
  virtual std::error_code Write(const FileDescriptor& file, std::string_view contents) = 0;

  /// Waits until the file's contents are on the disk.
  virtual std::error_code Sync(const FileDescriptor& file) = 0;

  /// Makes `backup` a second name of `file`, or a copy where the file system has no second names. An earlier
  /// backup is replaced in one go.
  virtual std::error_code KeepPrevious(const std::filesystem::path& file,
                                       const std::filesystem::path& backup) = 0;

  /// Gives the file `from` the name `to`, replacing a file of that name in one go.
  virtual std::error_code Rename(const std::filesystem::path& from, const std::filesystem::path& to) = 0;

  /// Gives the file `from` the name `to` unless that name is taken, which gives EEXIST.
  virtual std::error_code RenameToNew(const std::filesystem::path& from, const std::filesystem::path& to) = 0;

  /// Waits until the folder's names are on the disk.
  virtual std::error_code SyncFolder(const std::filesystem::path& folder) = 0;

  /// Removes a file if it is there.
  virtual void Remove(const std::filesystem::path& file) noexcept = 0;
};

/// The steps as the system takes them.
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
  /// Gives `file` a second name; fails where the name is taken and where the file system has no second names.
  virtual std::error_code AddName(const std::filesystem::path& file, const std::filesystem::path& name);
};

}  // namespace krnqb::files
