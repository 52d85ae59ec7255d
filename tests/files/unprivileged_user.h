#pragma once

#include <unistd.h>

namespace krnqb::files {

/// For its lifetime, an administrator's process has the permissions of a user who owns no files. Others keep
/// theirs.
class UnprivilegedUser {
 public:
  UnprivilegedUser() : user_(::geteuid()) {
    constexpr uid_t nobody = 65534;
    if (user_ == 0) restricted_ = ::seteuid(nobody) == 0;
  }
  ~UnprivilegedUser() {
    if (user_ == 0 && restricted_) restricted_ = ::seteuid(user_) != 0;
  }
  UnprivilegedUser(const UnprivilegedUser&) = delete;
  UnprivilegedUser& operator=(const UnprivilegedUser&) = delete;

  /// Returns whether permissions are checked at all.
  bool Restricted() const noexcept { return restricted_; }

 private:
  const uid_t user_;
  bool restricted_ = user_ != 0;
};

}  // namespace krnqb::files
