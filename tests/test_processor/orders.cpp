#include "test_processor/orders.h"

namespace krnqb::testing {
namespace {

constexpr HRESULT usualRefusal = static_cast<HRESULT>(0x80040400);

std::optional<std::wstring> Variable(const wchar_t* name) {
  std::wstring value(32767, L'\0');
  SetLastError(ERROR_SUCCESS);
  const DWORD length = GetEnvironmentVariableW(name, value.data(), static_cast<DWORD>(value.size()));
  if (length == 0 && GetLastError() == ERROR_ENVVAR_NOT_FOUND) return std::nullopt;
  value.resize(length);
  return value;
}

HRESULT NumberIn(const std::optional<std::wstring>& text) {
  return text ? static_cast<HRESULT>(std::stoul(*text, nullptr, 16)) : usualRefusal;
}

}  // namespace

Orders ReadOrders() {
  const std::wstring call = Variable(L"KRNQB_REFUSED_CALL").value_or(L"");
  return {.recording = Variable(L"KRNQB_RECORDING").value_or(L""),
          .refusedCall = std::filesystem::path(call).string(),
          .refusalNumber = NumberIn(Variable(L"KRNQB_REFUSAL_NUMBER")),
          .refusalText = Variable(L"KRNQB_REFUSAL_TEXT"),
          .errorsUnsupported = Variable(L"KRNQB_ERRORS_UNSUPPORTED").has_value(),
          .wideVersions = Variable(L"KRNQB_VERSION_BITS") == L"32",
          .callLog = Variable(L"KRNQB_CALL_LOG").value_or(L"")};
}

}  // namespace krnqb::testing
