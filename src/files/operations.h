#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "files/descriptor.h"

namespace krnqb::files {

/// The steps of replacing, reading, writing and locking files and their folders, each one or a few system
/// calls. A step returns its failure as an error code and does not throw. Tests override steps to make them
/// fail.
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

  /// Creates a folder with the permissions `mode` less the umask; fails with EEXIST if the name is taken.
  virtual std::error_code CreateFolder(const std::filesystem::path& folder, mode_t mode) = 0;

  /// Appends the names in a folder, in no particular order, to `names`. Fails if `folder` is a symbolic link,
  /// which is not followed, and with ENOTDIR if it is a file.
  virtual std::error_code ListFolder(const std::filesystem::path& folder,
                                     std::vector<std::string>& names) = 0;

  /// Removes a folder if it exists and is empty.
  virtual void RemoveFolder(const std::filesystem::path& folder) noexcept = 0;

  /// Opens a file for reading without waiting: a named pipe without a writer is opened at once.
  virtual std::error_code OpenForReading(const std::filesystem::path& file, FileDescriptor& opened) = 0;

  /// Reads the next bytes into `part` and sets `length` to their number, 0 at the end of the file. Fails with
  /// EAGAIN if a pipe is empty but has a writer.
  virtual std::error_code Read(const FileDescriptor& file, std::span<char> part, std::size_t& length) = 0;

  /// Sets the number of bytes that precede the next one to be read. Fails with ESPIPE if the file is a pipe.
  virtual std::error_code Seek(const FileDescriptor& file, std::uint64_t position) = 0;

  /// Creates a file that only its owner may read and write, or opens an existing file, which keeps its
  /// permissions, and removes its contents. Does not wait: fails with ENXIO if a named pipe has no reader.
  virtual std::error_code OpenForWriting(const std::filesystem::path& file, FileDescriptor& opened) = 0;

  /// Writes the beginning of `contents` and sets `length` to the number of bytes written. Fails with EAGAIN
  /// if a pipe is full.
  virtual std::error_code WritePart(const FileDescriptor& file, std::string_view contents,
                                    std::size_t& length) = 0;

  /// Closes the file and reports what the system could not write until now.
  virtual std::error_code Close(FileDescriptor& file) = 0;

  /// Opens a file for locking, and creates it if it is missing. A file that may only be read is opened for
  /// reading. Fails with ELOOP if it is a symbolic link, which is not followed, and with EINVAL if it is
  /// neither that nor a regular file.
  virtual std::error_code OpenLockFile(const std::filesystem::path& file, FileDescriptor& opened) = 0;
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
  std::error_code CreateFolder(const std::filesystem::path& folder, mode_t mode) override;
  std::error_code ListFolder(const std::filesystem::path& folder, std::vector<std::string>& names) override;
  void RemoveFolder(const std::filesystem::path& folder) noexcept override;
  std::error_code OpenForReading(const std::filesystem::path& file, FileDescriptor& opened) override;
  std::error_code Read(const FileDescriptor& file, std::span<char> part, std::size_t& length) override;
  std::error_code Seek(const FileDescriptor& file, std::uint64_t position) override;
  std::error_code OpenForWriting(const std::filesystem::path& file, FileDescriptor& opened) override;
  std::error_code WritePart(const FileDescriptor& file, std::string_view contents,
                            std::size_t& length) override;
  std::error_code Close(FileDescriptor& file) override;
  std::error_code OpenLockFile(const std::filesystem::path& file, FileDescriptor& opened) override;

 protected:
  /// Creates a hard link; fails if the name is taken or the file system has no hard links.
  virtual std::error_code AddName(const std::filesystem::path& file, const std::filesystem::path& name);
};

}  // namespace krnqb::files
