#include "com/calls/named_processor.h"

#include <array>
#include <utility>

#include "com/calls/named_calls.h"
#include "com/values/error_mapping.h"
#include "com/values/text.h"
#include "com/values/variant_value.h"
#include "qbxml/closing_processor.h"

namespace krnqb::com {
namespace {

std::string TextIn(VariantValue value) {
  Check(VariantChangeType(&value.Get(), &value.Get(), 0, VT_BSTR));
  return Utf8(TextOf(value.Get().bstrVal));
}

std::int16_t VersionIn(VariantValue value) {
  Check(VariantChangeType(&value.Get(), &value.Get(), 0, VT_I2));
  return value.Get().iVal;
}

class NamedRequestProcessor final : public ClosableProcessor {
 public:
  explicit NamedRequestProcessor(ComPointer<IDispatch> object) : calls_(std::move(object)) {}

  std::string ProcessRequest(std::string_view ticket, std::string_view request) override {
    return TextIn(CallWithTexts(L"ProcessRequest", ticket, request));
  }

  void OpenConnection(std::string_view applicationIdentifier, std::string_view applicationName) override {
    CallWithTexts(L"OpenConnection", applicationIdentifier, applicationName);
  }

  std::string BeginSession(std::string_view companyFile, std::int32_t fileMode) override {
    const VariantValue file = VariantValue::OfText(companyFile);
    VARIANT mode{};
    mode.vt = VT_I4;
    mode.lVal = fileMode;
    const std::array arguments{file.Get(), mode};
    return TextIn(calls_.Call(L"BeginSession", arguments));
  }

  std::string GetCurrentCompanyFileName(std::string_view ticket) override {
    return TextIn(CallWithText(L"GetCurrentCompanyFileName", ticket));
  }

  std::int16_t MajorVersion() override { return VersionIn(calls_.Get(L"MajorVersion")); }
  std::int16_t MinorVersion() override { return VersionIn(calls_.Get(L"MinorVersion")); }

  void EndSession(std::string_view ticket) override { CallWithText(L"EndSession", ticket); }
  void CloseConnection() override { calls_.Call(L"CloseConnection", {}); }

 private:
  VariantValue CallWithText(std::wstring_view name, std::string_view text) const {
    const VariantValue argument = VariantValue::OfText(text);
    return calls_.Call(name, {&argument.Get(), 1});
  }

  VariantValue CallWithTexts(std::wstring_view name, std::string_view first, std::string_view second) const {
    const VariantValue one = VariantValue::OfText(first);
    const VariantValue other = VariantValue::OfText(second);
    const std::array arguments{one.Get(), other.Get()};
    return calls_.Call(name, arguments);
  }

  NamedCalls calls_;
};

}  // namespace

std::unique_ptr<RequestProcessor> NamedProcessor(ComPointer<IDispatch> object) {
  return ClosingProcessor(std::make_unique<NamedRequestProcessor>(std::move(object)));
}

}  // namespace krnqb::com
