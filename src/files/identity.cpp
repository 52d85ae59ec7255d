#include "files/identity.h"

#include <sys/stat.h>

#include <system_error>

namespace krnqb::files {
namespace {

namespace fs = std::filesystem;

constexpr int mostLinks = 40;  // as the system follows

std::optional<FileIdentity> IdentityFrom(const struct stat& status) {
  if (S_ISCHR(status.st_mode)) return std::nullopt;
  return FileIdentity{status.st_dev, status.st_ino, {}};
}

std::optional<FileIdentity> IdentityOfNewFile(const fs::path& file) {
  struct stat folder {};
  const fs::path parent = file.has_parent_path() ? file.parent_path() : fs::path(".");
  if (!file.has_filename() || ::stat(parent.c_str(), &folder) != 0) return std::nullopt;
  return FileIdentity{folder.st_dev, folder.st_ino, file.filename().string()};
}

}  // namespace

std::optional<FileIdentity> IdentityOf(const fs::path& file) {
  struct stat status {};
  if (::stat(file.c_str(), &status) == 0) return IdentityFrom(status);
  return IdentityOfNewFile(LinkTarget(file));
}

std::optional<FileIdentity> IdentityOf(int descriptor) noexcept {
  struct stat status {};
  if (::fstat(descriptor, &status) != 0) return std::nullopt;
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
