#include "spreadsheet/narrow_name.h"

namespace krnqb::spreadsheet {

std::string NarrowName(const std::filesystem::path& file) {
  return file.native();
}

}  // namespace krnqb::spreadsheet
