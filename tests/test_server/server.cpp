#include "test_server/server.h"

#include <windows.h>

#include <atomic>
#include <utility>
#include <vector>

namespace krnqb::testing {
namespace {

std::atomic<long> uses{0};

class ClassFactory final : public IClassFactory {
 public:
  explicit ClassFactory(ServedClass served) : served_(std::move(served)) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID identifier, void** object) override {
    *object = nullptr;
    if (!IsEqualIID(identifier, IID_IUnknown) && !IsEqualIID(identifier, IID_IClassFactory)) {
      return E_NOINTERFACE;
    }
    AddRef();
    *object = static_cast<IClassFactory*>(this);
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++references_); }
  ULONG STDMETHODCALLTYPE Release() override {
    const long left = --references_;
    if (left == 0) delete this;
    return static_cast<ULONG>(left);
  }

  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID identifier, void** object) override {
    *object = nullptr;
    if (outer != nullptr) return CLASS_E_NOAGGREGATION;
    return served_.create(identifier, object);
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override {
    uses += lock ? 1 : -1;
    return S_OK;
  }

 private:
  ~ClassFactory() = default;

  ServedClass served_;
  std::atomic<long> references_{1};
  ServerUse use_;
};

std::wstring ClassKey(const CLSID& identifier) {
  std::wstring text(39, L'\0');
  StringFromGUID2(identifier, text.data(), static_cast<int>(text.size()));
  text.resize(38);
  return L"CLSID\\" + text;
}

LSTATUS WriteKey(const std::wstring& key, const wchar_t* name, const std::wstring& value) {
  HKEY opened = nullptr;
  const std::wstring path = L"Software\\Classes\\" + key;
  LSTATUS status =
      RegCreateKeyExW(HKEY_LOCAL_MACHINE, path.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &opened, nullptr);
  if (status != ERROR_SUCCESS) return status;
  status = RegSetValueExW(opened, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()),
                          static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
  RegCloseKey(opened);
  return status;
}

std::wstring OwnPath() {
  std::wstring path(32768, L'\0');
  path.resize(GetModuleFileNameW(OwnModule(), path.data(), static_cast<DWORD>(path.size())));
  return path;
}

}  // namespace

HMODULE OwnModule() {
  HMODULE module = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                     reinterpret_cast<LPCWSTR>(&uses), &module);
  return module;
}

ServerUse::ServerUse() noexcept {
  ++uses;
}

ServerUse::~ServerUse() {
  --uses;
}

}  // namespace krnqb::testing

using namespace krnqb::testing;

STDAPI DllGetClassObject(REFCLSID identifier, REFIID interfaceIdentifier, void** object) {
  *object = nullptr;
  for (const ServedClass& served : TheServedClasses()) {
    if (!IsEqualCLSID(identifier, served.identifier)) continue;
    auto* factory = new ClassFactory(served);
    const HRESULT result = factory->QueryInterface(interfaceIdentifier, object);
    factory->Release();
    return result;
  }
  return CLASS_E_CLASSNOTAVAILABLE;
}

STDAPI DllCanUnloadNow() {
  return uses == 0 ? S_OK : S_FALSE;
}

STDAPI DllRegisterServer() {
  const ServedClass served = TheServedClasses().front();
  const std::wstring key = ClassKey(served.identifier);
  std::vector<std::pair<std::wstring, std::pair<const wchar_t*, std::wstring>>> entries{
      {key + L"\\InprocServer32", {nullptr, OwnPath()}},
      {key + L"\\InprocServer32", {L"ThreadingModel", L"Apartment"}}};
  if (!served.programName.empty()) {
    entries.push_back({served.programName + L"\\CLSID", {nullptr, key.substr(6)}});
  }
  for (const auto& [name, value] : entries) {
    if (WriteKey(name, value.first, value.second) != ERROR_SUCCESS) return E_ACCESSDENIED;
  }
  return S_OK;
}

STDAPI DllUnregisterServer() {
  const ServedClass served = TheServedClasses().front();
  const std::wstring root = L"Software\\Classes\\";
  RegDeleteTreeW(HKEY_LOCAL_MACHINE, (root + ClassKey(served.identifier)).c_str());
  if (!served.programName.empty()) {
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, (root + served.programName).c_str());
  }
  return S_OK;
}
