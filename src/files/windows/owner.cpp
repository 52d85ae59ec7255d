#include "files/owner.h"

namespace krnqb::files {

// New files have the permissions of their folder, and so those of the plan beside them.
void KeepOwner(const FileDescriptor& /*file*/, const std::filesystem::path& /*pattern*/) noexcept {}

void KeepFolderOwner(const std::filesystem::path& /*folder*/,
                     const std::filesystem::path& /*pattern*/) noexcept {}

}  // namespace krnqb::files
