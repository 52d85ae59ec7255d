#include "test_processor/processor.h"

#include <fmt/format.h>

#include <fstream>

#include "krnqb/error.h"
#include "qbxml/exchange_replaying.h"
#include "test_processor/call_log.h"
#include "test_processor/texts.h"

namespace krnqb::testing {
namespace {

constexpr HRESULT runTimeErrors = static_cast<HRESULT>(0x800A0000);

HRESULT ResultOf(const Error& error) {
  return error.Number() < 0 ? error.Number() : runTimeErrors + error.Number();
}

}  // namespace

TestProcessor::TestProcessor(Orders orders, CalledBy caller, std::unique_ptr<RequestProcessor> processor)
    : orders_(std::move(orders)), caller_(caller), processor_(std::move(processor)) {}

ULONG TestProcessor::AddRef() {
  return static_cast<ULONG>(++references_);
}

ULONG TestProcessor::Release() {
  const long left = --references_;
  if (left == 0) {
    LogCall(orders_.callLog, "released");
    delete this;
  }
  return static_cast<ULONG>(left);
}

HRESULT TestProcessor::Answer(const std::string& name, const std::function<void()>& call) {
  if (name == orders_.refusedCall || fmt::format("{}:{}", name, requests_) == orders_.refusedCall) {
    return Refuse(orders_.refusalNumber, orders_.refusalText ? &*orders_.refusalText : nullptr);
  }
  try {
    call();
    return S_OK;
  } catch (const Error& error) {
    const std::wstring description = Utf16(error.Description());
    return Refuse(ResultOf(error), &description);
  } catch (const std::exception&) {
    return E_UNEXPECTED;
  }
}

HRESULT TestProcessor::Refuse(HRESULT number, const std::wstring* text) const {
  if (text == nullptr) return number;
  ICreateErrorInfo* creator = nullptr;
  if (FAILED(CreateErrorInfo(&creator))) return number;
  creator->SetGUID(__uuidof(ITestProcessor));
  creator->SetDescription(const_cast<LPOLESTR>(text->c_str()));
  IErrorInfo* information = nullptr;
  if (SUCCEEDED(creator->QueryInterface(IID_IErrorInfo, reinterpret_cast<void**>(&information)))) {
    SetErrorInfo(0, information);
    information->Release();
  }
  creator->Release();
  return number;
}

HRESULT TestProcessor::ProcessRequest(BSTR ticket, BSTR request, BSTR* response) {
  *response = nullptr;
  ++requests_;
  LogCall(orders_.callLog, "request");
  return Answer("request",
                [&] { *response = NewText(processor_->ProcessRequest(Utf8(ticket), Utf8(request))); });
}

HRESULT TestProcessor::OpenConnection(BSTR applicationIdentifier, BSTR applicationName) {
  const std::string identifier = Utf8(applicationIdentifier);
  const std::string name = Utf8(applicationName);
  LogCall(orders_.callLog, "connection " + identifier + ", " + name);
  return Answer("connection", [&] { processor_->OpenConnection(identifier, name); });
}

HRESULT TestProcessor::CloseConnection() {
  LogCall(orders_.callLog, "connection closed");
  return S_OK;
}

HRESULT TestProcessor::BeginSession(BSTR companyFile, int fileMode, BSTR* ticket) {
  *ticket = nullptr;
  LogCall(orders_.callLog, fmt::format("session \"{}\", mode {}", Utf8(companyFile), fileMode));
  return Answer("session", [&] { *ticket = NewText(processor_->BeginSession(Utf8(companyFile), fileMode)); });
}

HRESULT TestProcessor::EndSession(BSTR /*ticket*/) {
  LogCall(orders_.callLog, "session ended");
  return S_OK;
}

HRESULT TestProcessor::GetCurrentCompanyFileName(BSTR ticket, BSTR* companyFile) {
  *companyFile = nullptr;
  LogCall(orders_.callLog, "company");
  return Answer("company",
                [&] { *companyFile = NewText(processor_->GetCurrentCompanyFileName(Utf8(ticket))); });
}

HRESULT TestProcessor::WriteVersion(const std::string& name, short* version,
                                    std::int16_t (RequestProcessor::*read)()) {
  LogCall(orders_.callLog, name);
  return Answer(name, [&] {
    const std::int16_t value = ((*processor_).*read)();
    if (orders_.wideVersions) {
      const std::int32_t wide = value;
      std::copy_n(reinterpret_cast<const std::byte*>(&wide), sizeof wide,
                  reinterpret_cast<std::byte*>(version));
    } else {
      *version = value;
    }
  });
}

HRESULT TestProcessor::get_MajorVersion(short* version) {
  return WriteVersion("major", version, &RequestProcessor::MajorVersion);
}

HRESULT TestProcessor::get_MinorVersion(short* version) {
  return WriteVersion("minor", version, &RequestProcessor::MinorVersion);
}

HRESULT TestProcessor::InterfaceSupportsErrorInfo(REFIID identifier) {
  return IsEqualIID(identifier, __uuidof(ITestProcessor)) ? S_OK : S_FALSE;
}

namespace {

// A class's `create`. Returns the refusal's number if creation is to be refused, E_FAIL if it fails.
template <CalledBy caller>
HRESULT CreateTestProcessor(REFIID identifier, void** object) {
  const Orders orders = ReadOrders();
  LogCall(orders.callLog, "creation");
  if (orders.refusedCall == "creation") return orders.refusalNumber;
  try {
    auto recording = std::make_unique<std::ifstream>(orders.recording, std::ios::binary);
    auto* made = new TestProcessor(
        orders, caller, ReplayingProcessors(std::move(recording), orders.recording.string())->Create());
    const HRESULT result = made->QueryInterface(identifier, object);
    made->Release();
    return result;
  } catch (const std::exception& error) {
    LogCall(orders.callLog, error.what());
    return E_FAIL;
  }
}

}  // namespace

std::vector<ServedClass> TheServedClasses() {
  const CLSID early{0x2D0E74B6, 0x021A, 0x11D5, {0x90, 0x54, 0x00, 0x50, 0x8B, 0xF7, 0x0A, 0x94}};
  const CLSID later{0x6C3B7E0D, 0x94A1, 0x4E5B, {0x8F, 0x27, 0x51, 0xD0, 0xC9, 0x4A, 0x7E, 0x36}};
  return {{.identifier = early,
           .programName = L"KRN6_TestProcessor.RequestProcessor",
           .create = CreateTestProcessor<CalledBy::Position>},
          {.identifier = later, .programName = {}, .create = CreateTestProcessor<CalledBy::Name>}};
}

}  // namespace krnqb::testing
