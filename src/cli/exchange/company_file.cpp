#include "cli/exchange/company_file.h"

#include <fmt/format.h>

#include "support/error_handling.h"
#include "support/path_text.h"

namespace krnqb::cli {

company::Interruption FollowInterrupts(const InterruptWatch& interrupts) {
  return [&interrupts] { return interrupts.ListenedAndRequested(); };
}

Failure CompanyFailure(std::string_view whatFailed, const Error& error, std::string_view whatToDo) {
  if (error.Kind() == ErrorKind::Unspecified) return {ExitCode::Failed, error};
  return {ExitCode::Failed, whatFailed, error, whatToDo};
}

company::CompanyFile OpenCompany(const std::string& path, company::FileAccess access,
                                 const InterruptWatch& interrupts) {
  try {
    return company::CompanyFile::Open(PathFrom(path), access, FollowInterrupts(interrupts));
  } catch (...) {
    throw CompanyFailure("opening the company failed", CaughtError(),
                         "check the path, or create a company with krnqb company new");
  }
}

std::optional<std::string> ChecksumWarning(const std::string& path, bool hasChecksums) {
  if (hasChecksums) return std::nullopt;
  return fmt::format(
      "the company file {0} has no checksums, so damage may go unnoticed; add them with krnqb company check "
      "--fix {0}",
      path);
}

}  // namespace krnqb::cli
