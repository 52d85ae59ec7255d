#include "cli/import/notices/warning_advice.h"

namespace krnqb::cli {
namespace {

std::string_view Remedy(WarningCode code) {
  switch (code) {
    case WarningCode::UnsupportedProcessor:
      return "; import with --amounts-from transactions or --amounts-from reports";
    case WarningCode::PastFromToday:
      return "; a company that answers with reports has the balances of each period";
    default:
      return "";
  }
}

bool IsOmission(WarningCode code) noexcept {
  return code == WarningCode::UnsupportedProcessor || code == WarningCode::TablesNotLoaded;
}

}  // namespace

std::string WarningAdvice(const Warning& warning) {
  return WarningText(warning) + std::string(Remedy(warning.code));
}

std::vector<std::string> WarningSentences(const ImportReport& report) {
  std::vector<std::string> sentences;
  for (const Warning& warning : report.Warnings()) {
    if (!IsOmission(warning.code)) sentences.push_back(WarningAdvice(warning));
  }
  return sentences;
}

}  // namespace krnqb::cli
