#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "support/exact_amount.h"

namespace krnqb::cli {

/// A warning of an import.
struct ResultWarning {
  std::string code;          ///< such as "row-twice"
  std::size_t accounts = 0;  ///< that it names
};

/// When a result was written, in seconds and nanoseconds since 1970-01-01 00:00 UTC.
struct WriteTime {
  std::int64_t seconds = 0;
  std::int64_t nanoseconds = 0;

  auto operator<=>(const WriteTime&) const noexcept = default;
};

/// What a file with the result of `krnqb import --json` says. Texts that it does not have are empty.
struct ImportResultFile {
  std::string name;    ///< the file's name without ".json"
  WriteTime written;   ///< the file's last modification; 1970 if unknown
  std::string result;  ///< the import's word, such as "imported"; "unreadable" if the file holds no result
  bool done = false;   ///< whether everything that was asked for was read
  std::string reason;  ///< why it is not done
  std::string remedy;  ///< what to do about that
  std::string companyName;
  std::string companyPath;
  std::string plan;
  std::string periodFrom;  ///< the first day of the twelve months
  std::int64_t rowsAdded = 0;
  std::int64_t cellsChanged = 0;
  std::int64_t formulasCleared = 0;
  std::int64_t amountsLeftOut = 0;
  std::optional<ExactAmount> sumLeftOut = {};  ///< nothing if it is unknown
  std::int64_t milliseconds = 0;               ///< that the import took
  std::vector<ResultWarning> warnings = {};    ///< each code once, in the order of the import
};

/// Parses the text of a result file. If the text is not the result of an import, returns the result
/// "unreadable" with the reason; throws nothing.
ImportResultFile ReadImportResult(std::string_view text);

/// Returns an unreadable result.
ImportResultFile UnreadableResult(std::string reason, std::string remedy);

}  // namespace krnqb::cli
