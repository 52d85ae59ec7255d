#include "com/values/error_mapping.h"

#include <array>

#include "com/values/com_pointer.h"
#include "com/values/run_time_errors.h"
#include "com/values/text.h"
#include "support/error_handling.h"

namespace krnqb::com {
namespace {

// Run-time errors are passed as 0x800A0000 plus the number.
constexpr std::uint32_t runTimeErrors = 0x800A0000U;
constexpr std::uint32_t numberMask = 0xFFFFU;

bool IsRunTimeError(HRESULT result) noexcept {
  return (static_cast<std::uint32_t>(result) & ~numberMask) == runTimeErrors;
}

// A failure that comes with its own description is known by its result; one without is known by the run-time
// error that automation has for the result.
std::int32_t NumberOf(HRESULT result, bool isDescribed) {
  if (IsRunTimeError(result))
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(result) & numberMask);
  return isDescribed ? result : RunTimeErrorOf(result).value_or(result);
}

std::string SystemText(std::int32_t number) {
  std::array<wchar_t, 1024> text{};
  constexpr DWORD flags = FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS;
  DWORD length = FormatMessageW(flags, nullptr, static_cast<DWORD>(number), 0, text.data(),
                                static_cast<DWORD>(text.size()), nullptr);
  while (length > 0 && (text[length - 1] == L'\r' || text[length - 1] == L'\n')) --length;
  return Utf8({text.data(), length});
}

// The texts of run-time errors are always English, whatever the system's language.
std::string DescriptionOf(std::int32_t number) {
  const std::string_view runTime = RunTimeErrorText(number);
  if (!runTime.empty()) return std::string(runTime);
  const std::string_view standard = StandardDescription(number);
  const std::string_view unknown = StandardDescription(0);
  if (standard != unknown) return std::string(standard);
  // Small system error codes mean something else, so only HRESULTs are looked up in the system.
  const std::string system = number < 0 ? SystemText(number) : std::string();
  return system.empty() ? std::string(unknown) : system;
}

Error NumberedError(std::int32_t number, std::string description) {
  return {number, description.empty() ? DescriptionOf(number) : std::move(description)};
}

std::string DescriptionFromErrorObject(IUnknown& object, REFIID interfaceId) {
  const auto support = Query<ISupportErrorInfo>(&object);
  if (!support || support->InterfaceSupportsErrorInfo(interfaceId) != S_OK) return {};
  ComPointer<IErrorInfo> information;
  Bstr description;
  if (GetErrorInfo(0, information.Receive()) != S_OK) return {};
  if (FAILED(information->GetDescription(description.Receive()))) return {};
  return Utf8(TextOf(description.get()));
}

HRESULT ResultOfNumber(std::int32_t number) noexcept {
  if (number < 0) return number;
  const auto bits = static_cast<std::uint32_t>(number);
  if (bits == 0 || bits > numberMask) return E_FAIL;
  return static_cast<HRESULT>(runTimeErrors | bits);
}

void LeaveErrorObject(const ErrorSource& source, const Error& error) {
  ComPointer<ICreateErrorInfo> creation;
  if (FAILED(CreateErrorInfo(creation.Receive()))) return;
  const std::wstring description = Wide(error.Description());
  creation->SetGUID(source.interfaceId);
  // The calls copy their texts although their signatures are not const.
  creation->SetSource(const_cast<wchar_t*>(source.name));
  creation->SetDescription(const_cast<wchar_t*>(description.c_str()));
  if (const auto information = Query<IErrorInfo>(creation.get())) SetErrorInfo(0, information.get());
}

}  // namespace

Error ErrorOf(HRESULT result, std::string description) {
  const bool isDescribed = !description.empty();
  return NumberedError(NumberOf(result, isDescribed), std::move(description));
}

Error ErrorOf(HRESULT result, EXCEPINFO& exception) {
  if (exception.pfnDeferredFillIn != nullptr) exception.pfnDeferredFillIn(&exception);
  const Bstr source = Bstr::Adopt(exception.bstrSource);
  const Bstr description = Bstr::Adopt(exception.bstrDescription);
  const Bstr helpFile = Bstr::Adopt(exception.bstrHelpFile);
  const std::string text = Utf8(TextOf(description.get()));
  // Only DISP_E_EXCEPTION describes itself in `exception`; a text beside another result does not change its
  // number.
  if (result != DISP_E_EXCEPTION) return NumberedError(NumberOf(result, false), text);
  if (exception.scode != 0) return ErrorOf(exception.scode, text);
  if (exception.wCode != 0) return ErrorOf(ResultOfNumber(exception.wCode), text);
  return ErrorOf(result, text);
}

Error ErrorOf(HRESULT result, IUnknown& object, REFIID interfaceId) {
  return ErrorOf(result, DescriptionFromErrorObject(object, interfaceId));
}

Error SystemError(DWORD code) {
  const HRESULT result = HRESULT_FROM_WIN32(code);
  return {result, ResultText(result)};
}

std::string ResultText(HRESULT result) {
  const std::string text = SystemText(result);
  return text.empty() ? std::string(StandardDescription(0)) : text;
}

HRESULT ResultOf(const Error& error) noexcept {
  return ResultOfNumber(error.Number());
}

void ForgetErrors() noexcept {
  SetErrorInfo(0, nullptr);
}

HRESULT ReportCaughtError(const ErrorSource& source) noexcept {
  try {
    const Error error = CaughtError();
    LeaveErrorObject(source, error);
    return ResultOf(error);
  } catch (...) {
    return E_OUTOFMEMORY;
  }
}

}  // namespace krnqb::com
