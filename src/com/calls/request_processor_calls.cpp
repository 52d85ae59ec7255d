#include "com/calls/request_processor_calls.h"

#include <request_processor.h>

#include "com/values/com_pointer.h"
#include "com/values/error_mapping.h"
#include "com/values/text.h"
#include "qbxml/processor_creation.h"

namespace krnqb::com {
namespace {

class InstalledProcessor final : public RequestProcessor {
 public:
  explicit InstalledProcessor(ComPointer<IQuickBooksRequestProcessor> processor)
      : processor_(std::move(processor)) {}

  std::string ProcessRequest(std::string_view ticket, std::string_view request) override {
    const Bstr ticketText(ticket);
    const Bstr requestText(request);
    Bstr response;
    Call([&] { return processor_->ProcessRequest(ticketText.get(), requestText.get(), response.Receive()); });
    return Utf8(TextOf(response.get()));
  }

  void OpenConnection(std::string_view applicationIdentifier, std::string_view applicationName) override {
    const Bstr identifier(applicationIdentifier);
    const Bstr name(applicationName);
    Call([&] { return processor_->OpenConnection(identifier.get(), name.get()); });
  }

  std::string BeginSession(std::string_view companyFile, std::int32_t fileMode) override {
    const Bstr file(companyFile);
    Bstr ticket;
    Call([&] { return processor_->BeginSession(file.get(), fileMode, ticket.Receive()); });
    return Utf8(TextOf(ticket.get()));
  }

  std::string GetCurrentCompanyFileName(std::string_view ticket) override {
    const Bstr ticketText(ticket);
    Bstr file;
    Call([&] { return processor_->GetCurrentCompanyFileName(ticketText.get(), file.Receive()); });
    return Utf8(TextOf(file.get()));
  }

  std::int16_t MajorVersion() override {
    long version = 0;
    Call([&] { return processor_->get_MajorVersion(&version); });
    return LowWord(version);
  }

  std::int16_t MinorVersion() override {
    long version = 0;
    Call([&] { return processor_->get_MinorVersion(&version); });
    return LowWord(version);
  }

 private:
  // A processor that writes 16 bits leaves the upper half 0; one that writes 32 may set it.
  static std::int16_t LowWord(long version) noexcept { return static_cast<std::int16_t>(version & 0xFFFF); }

  template <typename Method>
  void Call(Method&& method) {
    ForgetErrors();
    const HRESULT result = method();
    if (FAILED(result)) throw ErrorOf(result, *processor_.get(), __uuidof(IQuickBooksRequestProcessor));
  }

  ComPointer<IQuickBooksRequestProcessor> processor_;
};

class InstalledProcessors final : public RequestProcessorFactory {
 public:
  std::unique_ptr<RequestProcessor> Create() override {
    std::int32_t result = S_OK;
    auto processor = CreateInstalledProcessor(result);
    if (processor == nullptr) throw CreationError(ErrorOf(result), result);
    return processor;
  }
};

}  // namespace

std::unique_ptr<RequestProcessor> CreateInstalledProcessor(std::int32_t& result) {
  void* created = nullptr;
  constexpr DWORD contexts = CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER;
  result = CoCreateInstance(__uuidof(QuickBooksRequestProcessor), nullptr, contexts,
                            __uuidof(IQuickBooksRequestProcessor), &created);
  if (FAILED(result)) return nullptr;
  return std::make_unique<InstalledProcessor>(
      ComPointer<IQuickBooksRequestProcessor>::Adopt(static_cast<IQuickBooksRequestProcessor*>(created)));
}

std::shared_ptr<RequestProcessorFactory> InstalledRequestProcessors() {
  return std::make_shared<InstalledProcessors>();
}

}  // namespace krnqb::com
