#include "profit_and_loss/messages.h"

#include <fmt/format.h>

#include <utility>

#include "krnqb/error.h"
#include "support/characters.h"

namespace krnqb::profit_and_loss {
namespace {

constexpr std::size_t longestQuotation = 60;
constexpr std::size_t mostFindings = 100;
constexpr char32_t replacement = 0xFFFD;

bool IsControl(char32_t character) noexcept {
  return character < 0x20 || (character >= 0x7F && character < 0xA0) || character == 0x2028 ||
         character == 0x2029;
}

}  // namespace

std::string Quoted(std::string_view text) {
  std::string quoted = "\"";
  for (std::size_t count = 0; !text.empty(); ++count) {
    if (count == longestQuotation) {
      quoted += "\u2026";
      break;
    }
    const std::string_view before = text;
    const char32_t character = TakeCharacter(text);
    if (character == replacement || IsControl(character)) {
      quoted += "\uFFFD";
    } else {
      quoted += before.substr(0, before.size() - text.size());
    }
  }
  return quoted + '"';
}

std::string PlaceOf(const CapturedReport& report, std::size_t row) {
  return fmt::format("{}: {} {}", report.document, report.rowWord, row);
}

void Refuse(std::string_view place, std::string_view what, std::string_view advice) {
  throw Error(error_number::typeMismatch, fmt::format("{}: {}; {}", place, what, advice));
}

void Findings::Add(std::string sentence) {
  if (sentences_.size() < mostFindings) {
    sentences_.push_back(std::move(sentence));
  } else {
    ++leftOut_;
  }
}

std::vector<std::string> Findings::Take(std::string_view document) {
  if (leftOut_ > 0)
    sentences_.push_back(fmt::format("{}: {} more findings are left out", document, leftOut_));
  leftOut_ = 0;
  return std::exchange(sentences_, {});
}

}  // namespace krnqb::profit_and_loss
