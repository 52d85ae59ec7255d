#include "files/input_buffer.h"

namespace krnqb::files {

InputBuffer::int_type InputBuffer::underflow() {
  const std::size_t length = input_.Read(part_);
  setg(part_.data(), part_.data(), part_.data() + length);
  return length == 0 ? traits_type::eof() : traits_type::to_int_type(part_.front());
}

}  // namespace krnqb::files
