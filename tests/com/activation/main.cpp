// A host that creates the component through manifests, with nothing registered:
//
//   krnqb_activation_host            relies on the manifest beside the program
//   krnqb_activation_host MANIFEST   activates this manifest while it works
//
// Prints what succeeded and ends with the line "end of the host"; a failure is a line with its HRESULT, and
// the end.
#include <krn6_qb2002.h>
#include <ole2.h>

#include <cstdio>
#include <optional>
#include <thread>

namespace {

struct Failure {
  const char* what;
  HRESULT result;
};

void Check(HRESULT result, const char* what) {
  if (FAILED(result)) throw Failure{what, result};
}

// The manifest is activated in the thread that makes this.
class Activation {
 public:
  explicit Activation(const wchar_t* manifest) {
    if (manifest == nullptr) return;
    ACTCTXW context{};
    context.cbSize = sizeof(context);
    context.lpSource = manifest;
    context_ = CreateActCtxW(&context);
    if (context_ == INVALID_HANDLE_VALUE || !ActivateActCtx(context_, &cookie_)) {
      throw Failure{"the manifest is not activated", HRESULT_FROM_WIN32(GetLastError())};
    }
  }
  Activation(const Activation&) = delete;
  Activation& operator=(const Activation&) = delete;
  ~Activation() {
    if (cookie_ != 0) DeactivateActCtx(0, cookie_);
    if (context_ != INVALID_HANDLE_VALUE) ReleaseActCtx(context_);
  }

 private:
  HANDLE context_ = INVALID_HANDLE_VALUE;
  ULONG_PTR cookie_ = 0;
};

// Sets and reads a property by name, as scripts do.
void UseByName(IDispatch& exchange) {
  wchar_t name[] = L"QBCompany";
  wchar_t* names = name;
  DISPID member = 0;
  Check(exchange.GetIDsOfNames(IID_NULL, &names, 1, LOCALE_NEUTRAL, &member), "QBCompany has no number");
  VARIANT value{};
  value.vt = VT_BSTR;
  value.bstrVal = SysAllocString(L"C:\\Books\\nursery.qbw");
  DISPID put = DISPID_PROPERTYPUT;
  DISPPARAMS written{&value, &put, 1, 1};
  Check(exchange.Invoke(member, IID_NULL, LOCALE_NEUTRAL, DISPATCH_PROPERTYPUT, &written, nullptr, nullptr,
                        nullptr),
        "QBCompany is not set");
  VariantClear(&value);
  DISPPARAMS none{};
  VARIANT read{};
  Check(
      exchange.Invoke(member, IID_NULL, LOCALE_NEUTRAL, DISPATCH_PROPERTYGET, &none, &read, nullptr, nullptr),
      "QBCompany is not read");
  std::printf("by name: %ls\n", read.vt == VT_BSTR ? read.bstrVal : L"no text");
  VariantClear(&read);
}

// Calls the object from another apartment: its interface is passed on by the marshaller that the manifest
// names.
void UseFromAnotherApartment(_QBDataExchange& exchange, const wchar_t* manifest) {
  IStream* stream = nullptr;
  Check(CoMarshalInterThreadInterfaceInStream(__uuidof(_QBDataExchange), &exchange, &stream),
        "the interface is not marshalled");
  const DWORD caller = GetCurrentThreadId();
  std::optional<Failure> failure;
  std::thread other([&] {
    CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    try {
      const Activation activation(manifest);
      _QBDataExchange* proxy = nullptr;
      Check(
          CoGetInterfaceAndReleaseStream(stream, __uuidof(_QBDataExchange), reinterpret_cast<void**>(&proxy)),
          "the interface is not unmarshalled");
      BSTR company = nullptr;
      Check(proxy->get_QBCompany(&company), "QBCompany is not read from another apartment");
      std::printf("from another apartment: %ls\n", company);
      SysFreeString(company);
      proxy->Release();
    } catch (const Failure& caught) {
      failure = caught;
    }
    CoUninitialize();
    PostThreadMessageW(caller, WM_QUIT, 0, 0);
  });
  MSG message{};
  while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
  other.join();
  if (failure) throw *failure;
}

void Run(const wchar_t* manifest) {
  const Activation activation(manifest);
  // A class identifier from a manifest is valid only while the manifest is active.
  _QBDataExchange* exchange = nullptr;
  for (const wchar_t* name : {L"KRN6_QB2002.QBDataExchange.1", L"KRN6_QB2002.QBDataExchange"}) {
    CLSID classId{};
    Check(CLSIDFromProgID(name, &classId), "the program name has no class");
    if (exchange != nullptr) exchange->Release();
    Check(CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, __uuidof(_QBDataExchange),
                           reinterpret_cast<void**>(&exchange)),
          "the object is not created");
  }
  std::printf("created by name\n");
  UseByName(*exchange);
  UseFromAnotherApartment(*exchange, manifest);
  exchange->Release();

  _cSubtotals* subtotals = nullptr;
  Check(CoCreateInstance(__uuidof(::cSubtotals), nullptr, CLSCTX_INPROC_SERVER, __uuidof(_cSubtotals),
                         reinterpret_cast<void**>(&subtotals)),
        "the subtotals are not created");
  double total = -1;
  Check(subtotals->Total(&total), "the total is not read");
  subtotals->Release();
  std::printf("created by class, total %g\n", total);

  ITypeLib* library = nullptr;
  Check(LoadRegTypeLib(LIBID_KRN6_QB2002, 1, 0, LOCALE_NEUTRAL, &library), "the type library is not found");
  std::printf("type library with %u types\n", library->GetTypeInfoCount());
  library->Release();
}

}  // namespace

int wmain(int argumentCount, wchar_t** arguments) {
  CoInitialize(nullptr);
  int code = 0;
  try {
    Run(argumentCount > 1 ? arguments[1] : nullptr);
  } catch (const Failure& failure) {
    std::printf("%s: 0x%08lX\n", failure.what, static_cast<unsigned long>(failure.result));
    code = 1;
  }
  CoUninitialize();
  std::printf("end of the host\n");
  return code;
}
