#include "cli/console/printable_buffer.h"

#include <utility>

#include "cli/console/control_characters.h"

namespace krnqb::cli {
namespace {

constexpr std::string_view replacement = "\xEF\xBF\xBD";
constexpr std::size_t longestCharacter = 4;
constexpr char32_t firstLeadByte = 0xC0;

}  // namespace

PrintableBuffer::int_type PrintableBuffer::overflow(int_type character) {
  if (traits_type::eq_int_type(character, traits_type::eof())) return traits_type::not_eof(character);
  const char byte = traits_type::to_char_type(character);
  return xsputn(&byte, 1) == 1 ? character : traits_type::eof();
}

std::streamsize PrintableBuffer::xsputn(const char* text, std::streamsize length) {
  const std::string_view added(text, static_cast<std::size_t>(length));
  if (pending_.empty()) {
    Pass(added, false);
  } else {
    const std::string whole = std::exchange(pending_, {}).append(added);
    Pass(whole, false);
  }
  return output_ ? length : 0;
}

int PrintableBuffer::sync() {
  const std::string rest = std::exchange(pending_, {});
  Pass(rest, true);
  output_.flush();
  return output_ ? 0 : -1;
}

// Keeps the end of an incomplete text if more characters can change its meaning.
void PrintableBuffer::Pass(std::string_view text, bool complete) {
  std::string passed;
  passed.reserve(text.size());
  while (!text.empty()) {
    if (const std::size_t plain = PlainLength(text); plain > 0) {
      passed += text.substr(0, plain);
      text.remove_prefix(plain);
      continue;
    }
    const std::string_view before = text;
    const TextPart part = TakePart(text);
    const bool lineFeedMayFollow = part.character == U'\r' && text.empty();
    const bool cut =
        part.IsStrayByte() && before.size() < longestCharacter && part.character >= firstLeadByte;
    if (!complete && (cut || (lineFeedMayFollow && carriageReturns_ == CarriageReturns::AtLineEnds))) {
      pending_ = before;
      break;
    }
    const bool passes = part.character == U'\n' || part.character == U'\t' ||
                        (part.character == U'\r' &&
                         (carriageReturns_ == CarriageReturns::Everywhere || text.starts_with('\n'))) ||
                        !IsControl(part.character);
    passed += passes ? part.bytes : replacement;
  }
  output_ << passed;
}

}  // namespace krnqb::cli
