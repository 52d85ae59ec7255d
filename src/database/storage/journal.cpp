#include "database/storage/journal.h"

#include <sqlite3.h>

#include <array>

namespace krnqb::database {
namespace {

// A journal that names another file ends with this.
constexpr std::array<unsigned char, 8> endMark = {0xd9, 0xd5, 0x05, 0xf9, 0x20, 0xa1, 0x63, 0xd7};
constexpr sqlite3_int64 headerSize = 28;  // the header of every journal begins with the same mark

}  // namespace

bool NamesAnotherFile(sqlite3_file* journal) noexcept {
  sqlite3_int64 size = 0;
  if (journal->pMethods->xFileSize(journal, &size) != SQLITE_OK) return true;
  if (size < headerSize) return false;
  std::array<unsigned char, endMark.size()> end{};
  const auto length = static_cast<sqlite3_int64>(end.size());
  if (journal->pMethods->xRead(journal, end.data(), static_cast<int>(length), size - length) != SQLITE_OK) {
    return true;
  }
  return end == endMark;
}

}  // namespace krnqb::database
