#include "files/csv_text.h"

namespace krnqb::files {
namespace {

bool LooksLikeFormula(std::string_view text) noexcept {
  const std::size_t first = text.find_first_not_of(" \t\r\n");
  constexpr std::string_view signs = "=+-@";
  return first != std::string_view::npos && signs.find(text[first]) != std::string_view::npos;
}

}  // namespace

CsvLine& CsvLine::Text(std::string_view text) {
  AppendField(LooksLikeFormula(text) ? "'" : "", text);
  return *this;
}

CsvLine& CsvLine::Figure(std::string_view figure) {
  AppendField({}, figure);
  return *this;
}

void CsvLine::AppendField(std::string_view before, std::string_view field) {
  if (any_) fields_ += ',';
  any_ = true;
  const bool blanksAround = field.starts_with(' ') || field.ends_with(' ');
  if (!blanksAround && field.find_first_of(",\"\r\n") == std::string_view::npos) {
    fields_.append(before).append(field);
    return;
  }
  fields_.append("\"").append(before);
  for (const char character : field) {
    if (character == '"') fields_ += '"';
    fields_ += character;
  }
  fields_ += '"';
}

}  // namespace krnqb::files
