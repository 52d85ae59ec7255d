#pragma once

#include <windows.h>

#include <atomic>
#include <functional>
#include <memory>
#include <string>

#include "krnqb/request_processor.h"
#include "test_processor.gen.h"
#include "test_processor/orders.h"
#include "test_server/server.h"

namespace krnqb::testing {

/// How a class lets itself be called: by position in its interface or by name, or by name alone.
enum class CalledBy { Position, Name };

/// The request processor's COM object: forwards each call to a processor that answers from a recording,
/// unless told to refuse it.
class TestProcessor final : public ITestProcessor, public ISupportErrorInfo {
 public:
  TestProcessor(Orders orders, CalledBy caller, std::unique_ptr<RequestProcessor> processor);

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID identifier, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;

  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** information) override;
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                                          DISPID* identifiers) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID identifier, REFIID reserved, LCID locale, WORD flags,
                                   DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                                   UINT* argument) override;

  HRESULT STDMETHODCALLTYPE ProcessRequest(BSTR ticket, BSTR request, BSTR* response) override;
  HRESULT STDMETHODCALLTYPE OpenConnection(BSTR applicationIdentifier, BSTR applicationName) override;
  HRESULT STDMETHODCALLTYPE CloseConnection() override;
  HRESULT STDMETHODCALLTYPE BeginSession(BSTR companyFile, int fileMode, BSTR* ticket) override;
  HRESULT STDMETHODCALLTYPE EndSession(BSTR ticket) override;
  HRESULT STDMETHODCALLTYPE GetCurrentCompanyFileName(BSTR ticket, BSTR* companyFile) override;
  HRESULT STDMETHODCALLTYPE get_MajorVersion(short* version) override;
  HRESULT STDMETHODCALLTYPE get_MinorVersion(short* version) override;

  HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID identifier) override;

 private:
  ~TestProcessor() = default;

  /// Performs the call `name` unless it is to be refused; an Error becomes its HRESULT and description.
  HRESULT Answer(const std::string& name, const std::function<void()>& call);
  HRESULT Refuse(HRESULT number, const std::wstring* text) const;
  HRESULT WriteVersion(const std::string& name, short* version, std::int16_t (RequestProcessor::*read)());

  std::atomic<long> references_{1};
  ServerUse use_;
  Orders orders_;
  const CalledBy caller_;
  std::unique_ptr<RequestProcessor> processor_;
  int requests_ = 0;
};

}  // namespace krnqb::testing
