#include "com/values/text.h"

#include "krnqb/error.h"

namespace krnqb::com {

std::wstring_view TextOf(BSTR text) noexcept {
  return text == nullptr ? std::wstring_view() : std::wstring_view(text, SysStringLen(text));
}

Bstr::Bstr(std::wstring_view text) : value_(SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {
  if (value_ == nullptr) throw Error(error_number::outOfMemory);
}

}  // namespace krnqb::com
