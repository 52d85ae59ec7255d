// The late-bound side of the test processor, implemented with its own type library.
#include "test_processor/processor.h"

namespace krnqb::testing {
namespace {

HRESULT LoadInterface(ITypeInfo** information) {
  *information = nullptr;
  std::wstring path(32768, L'\0');
  path.resize(GetModuleFileNameW(OwnModule(), path.data(), static_cast<DWORD>(path.size())));
  ITypeLib* library = nullptr;
  HRESULT result = LoadTypeLibEx(path.c_str(), REGKIND_NONE, &library);
  if (FAILED(result)) return result;
  result = library->GetTypeInfoOfGuid(__uuidof(ITestProcessor), information);
  library->Release();
  return result;
}

}  // namespace

HRESULT TestProcessor::QueryInterface(REFIID identifier, void** object) {
  *object = nullptr;
  const bool byPosition = IsEqualIID(identifier, __uuidof(ITestProcessor));
  if (byPosition && caller_ == CalledBy::Name) return E_NOINTERFACE;
  if (byPosition || IsEqualIID(identifier, IID_IUnknown) || IsEqualIID(identifier, IID_IDispatch)) {
    *object = static_cast<ITestProcessor*>(this);
  } else if (IsEqualIID(identifier, IID_ISupportErrorInfo) && !orders_.errorsUnsupported) {
    *object = static_cast<ISupportErrorInfo*>(this);
  } else {
    return E_NOINTERFACE;
  }
  AddRef();
  return S_OK;
}

HRESULT TestProcessor::GetTypeInfoCount(UINT* count) {
  *count = 1;
  return S_OK;
}

HRESULT TestProcessor::GetTypeInfo(UINT index, LCID /*locale*/, ITypeInfo** information) {
  return index == 0 ? LoadInterface(information) : DISP_E_BADINDEX;
}

HRESULT TestProcessor::GetIDsOfNames(REFIID /*reserved*/, LPOLESTR* names, UINT count, LCID /*locale*/,
                                     DISPID* identifiers) {
  ITypeInfo* information = nullptr;
  HRESULT result = LoadInterface(&information);
  if (FAILED(result)) return result;
  result = information->GetIDsOfNames(names, count, identifiers);
  information->Release();
  return result;
}

HRESULT TestProcessor::Invoke(DISPID identifier, REFIID /*reserved*/, LCID /*locale*/, WORD flags,
                              DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception, UINT* argument) {
  ITypeInfo* information = nullptr;
  const HRESULT loaded = LoadInterface(&information);
  if (FAILED(loaded)) return loaded;
  SetErrorInfo(0, nullptr);
  const HRESULT answered = information->Invoke(static_cast<ITestProcessor*>(this), identifier, flags,
                                               parameters, result, exception, argument);
  information->Release();
  return answered;
}

}  // namespace krnqb::testing
