#pragma once

#include <cstdint>
#include <string_view>

namespace krnqb::database {

/// What a database file is to its users: the words and numbers of the errors about it. "{0}" in a text is the
/// file's path.
struct FileKind {
  std::string_view name;               ///< such as "company file"
  std::string_view plural;             ///< "company files"
  std::string_view writer;             ///< what writes it: "load"
  std::string_view restoreRemedy;      ///< what to do about a file that this program has not written so
  std::string_view damageRemedy;       ///< what to do about damage
  std::string_view journalRemedy;      ///< what to do about a journal that this program has not written
  std::string_view unfinishedWriting;  ///< a whole description: the file has to be put in order first
  std::int32_t cannotOpen = 0;         ///< the error's number if the file cannot be used
  std::int32_t unexpected = 0;         ///< the number of any other failure
};

}  // namespace krnqb::database
