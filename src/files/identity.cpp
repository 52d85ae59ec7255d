#include "files/identity.h"

#include <system_error>

#include "files/status.h"

namespace krnqb::files {
namespace {

namespace fs = std::filesystem;

constexpr int mostLinks = 40;  // as the system follows

std::optional<FileIdentity> IdentityFrom(const FileStatus& status) {
  if (status.type == FileType::CharacterDevice) return std::nullopt;
  return FileIdentity{status.stamp.device, status.stamp.number, {}};
}

std::optional<FileIdentity> IdentityOfNewFile(const fs::path& file) {
  FileStatus folder;
  const fs::path parent = file.has_parent_path() ? file.parent_path() : fs::path(".");
  if (!file.has_filename() || StatusOf(parent, folder)) return std::nullopt;
  return FileIdentity{folder.stamp.device, folder.stamp.number, ComparedName(file)};
}

}  // namespace

std::optional<FileIdentity> IdentityOf(const fs::path& file) {
  FileStatus status;
  if (!StatusOf(file, status)) return IdentityFrom(status);
  return IdentityOfNewFile(LinkTarget(file));
}

std::optional<FileIdentity> IdentityOf(int descriptor) noexcept {
  FileStatus status;
  if (StatusOf(descriptor, status)) return std::nullopt;
  return IdentityFrom(status);
}

fs::path LinkTarget(const fs::path& file) {
  fs::path target = file;
  std::error_code failure;
  for (int links = 0; links < mostLinks && fs::is_symlink(target, failure); ++links) {
    // An absolute target replaces the folder.
    target = target.parent_path() / fs::read_symlink(target, failure);
    if (failure) return file;
  }
  return target;
}

}  // namespace krnqb::files
