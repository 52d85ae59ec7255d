#include "files/output_buffer.h"

#include "krnqb/error.h"

namespace krnqb::files {

OutputBuffer::OutputBuffer(const FileDescriptor& file, InterruptQuery interrupted,
                           FileOperations& operations) noexcept
    : file_(file), interrupted_(std::move(interrupted)), operations_(operations) {
  setp(part_.data(), part_.data() + part_.size());
}

OutputBuffer::~OutputBuffer() {
  sync();
}

OutputBuffer::int_type OutputBuffer::overflow(int_type character) {
  if (sync() != 0) return traits_type::eof();
  if (traits_type::eq_int_type(character, traits_type::eof())) return traits_type::not_eof(character);
  return sputc(traits_type::to_char_type(character));
}

int OutputBuffer::sync() {
  try {
    Write();
  } catch (const Error&) {
    failure_ = std::make_error_code(std::errc::interrupted);
  }
  setp(part_.data(), part_.data() + part_.size());
  return failure_ ? -1 : 0;
}

void OutputBuffer::Write() {
  std::string_view contents(pbase(), static_cast<std::size_t>(pptr() - pbase()));
  while (!contents.empty() && !failure_) WriteReady(contents);
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
