#include "files/output_buffer.h"

#include <algorithm>

#include "krnqb/error.h"

namespace krnqb::files {
namespace {

bool Continues(char byte) noexcept {
  return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

// Returns how many bytes a UTF-8 character has that begins with this byte.
std::size_t CharacterLength(char first) noexcept {
  const auto byte = static_cast<unsigned char>(first);
  if (byte >= 0xF0U) return 4;
  if (byte >= 0xE0U) return 3;
  return byte >= 0xC0U ? 2 : 1;
}

// Returns how many bytes at the end of a UTF-8 text begin a character that is not complete: 0 to 3.
std::size_t IncompleteEnd(std::string_view text) noexcept {
  constexpr std::size_t most = 3;
  for (std::size_t length = 1; length <= std::min(most, text.size()); ++length) {
    const char byte = text[text.size() - length];
    if (!Continues(byte)) return CharacterLength(byte) > length ? length : 0;
  }
  return 0;
}

}  // namespace

OutputBuffer::OutputBuffer(const FileDescriptor& file, InterruptQuery interrupted,
                           FileOperations& operations) noexcept
    : file_(file), interrupted_(std::move(interrupted)), operations_(operations) {
  setp(part_.data(), part_.data() + part_.size());
}

OutputBuffer::~OutputBuffer() {
  sync();
}

OutputBuffer::int_type OutputBuffer::overflow(int_type character) {
  if (Write(Ending::WholeCharacter) != 0) return traits_type::eof();
  if (traits_type::eq_int_type(character, traits_type::eof())) return traits_type::not_eof(character);
  return sputc(traits_type::to_char_type(character));
}

int OutputBuffer::sync() {
  return Write(Ending::Any);
}

int OutputBuffer::Write(Ending ending) {
  std::string_view contents(pbase(), static_cast<std::size_t>(pptr() - pbase()));
  const std::size_t kept = ending == Ending::WholeCharacter ? IncompleteEnd(contents) : 0;
  contents.remove_suffix(kept);
  try {
    while (!contents.empty() && !failure_) WriteReady(contents);
  } catch (const Error&) {
    failure_ = std::make_error_code(std::errc::interrupted);
  }
  std::copy_n(pptr() - kept, kept, part_.data());
  setp(part_.data(), part_.data() + part_.size());
  pbump(static_cast<int>(kept));
  return failure_ ? -1 : 0;
}

void OutputBuffer::WriteReady(std::string_view& contents) {
  std::size_t length = 0;
  // What can be written at once is written even after an interrupt: the user is to read that it stopped.
  WaitFor(file_, Readiness::ToWrite, interrupted_);
  const std::error_code failure = operations_.WritePart(file_, contents, length);
  if (!failure) contents.remove_prefix(length);
  if (failure == std::errc::resource_unavailable_try_again || failure == std::errc::interrupted) return;
  failure_ = failure;
}

}  // namespace krnqb::files
