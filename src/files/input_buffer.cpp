#include "files/input_buffer.h"

namespace krnqb::files {

InputBuffer::int_type InputBuffer::underflow() {
  const std::size_t length = input_.Read(part_);
  setg(part_.data(), part_.data(), part_.data() + length);
  return length == 0 ? traits_type::eof() : traits_type::to_int_type(part_.front());
}

InputBuffer::pos_type InputBuffer::seekoff(off_type offset, std::ios_base::seekdir from,
                                           std::ios_base::openmode which) {
  const std::optional<std::uint64_t> end = input_.Position();
  if (!end || from == std::ios_base::end) return pos_type(off_type(-1));
  const auto current = static_cast<off_type>(*end) - (egptr() - gptr());
  const bool tells = from == std::ios_base::cur && offset == 0;
  return tells ? pos_type(current) : seekpos((from == std::ios_base::cur ? current : 0) + offset, which);
}

InputBuffer::pos_type InputBuffer::seekpos(pos_type position, std::ios_base::openmode /*which*/) {
  const off_type offset(position);
  if (!input_.Position() || offset < 0) return pos_type(off_type(-1));
  input_.Seek(static_cast<std::uint64_t>(offset));
  setg(part_.data(), part_.data(), part_.data());
  return position;
}

}  // namespace krnqb::files
