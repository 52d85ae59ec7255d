#include "com/calls/installed_classes.h"

#include <request_processor.h>

#include <array>
#include <optional>
#include <string>
#include <utility>

#include "com/calls/named_processor.h"
#include "com/calls/request_processor_calls.h"
#include "com/values/com_pointer.h"
#include "com/values/error_mapping.h"
#include "com/values/text.h"
#include "qbxml/forwarding_processor.h"

namespace krnqb::com {
namespace {

constexpr const wchar_t* laterClass = L"QBXMLRP2.RequestProcessor";
constexpr DWORD contexts = CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER;

// Throws the result as its own number: a run-time error would hide it from the user. The usual reason reads
// the same on every system, whatever its language.
void RequireSuccess(HRESULT result) {
  if (FAILED(result))
    throw Error(result, result == REGDB_E_CLASSNOTREG ? "Class not registered" : ResultText(result));
}

// COM for this thread as long as the object lives.
class Apartment {
 public:
  Apartment() {
    const HRESULT result = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    initialised_ = SUCCEEDED(result);
    // A thread that already uses COM in its own way can use it here too.
    if (result != RPC_E_CHANGED_MODE) RequireSuccess(result);
  }
  ~Apartment() {
    if (initialised_) CoUninitialize();
  }
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;

 private:
  bool initialised_ = false;
};

struct KeptApartment {
  std::unique_ptr<Apartment> apartment;
};

// A processor that keeps its apartment. Bases are destroyed in reverse order: the processor is released
// first.
class ApartmentProcessor final : private KeptApartment, public ForwardingProcessor {
 public:
  ApartmentProcessor(std::unique_ptr<Apartment> kept, std::unique_ptr<RequestProcessor> inner) noexcept
      : KeptApartment{std::move(kept)}, ForwardingProcessor(std::move(inner)) {}
};

std::unique_ptr<RequestProcessor> InApartment(std::unique_ptr<RequestProcessor> (*create)()) {
  auto apartment = std::make_unique<Apartment>();
  auto processor = create();
  return std::make_unique<ApartmentProcessor>(std::move(apartment), std::move(processor));
}

std::unique_ptr<RequestProcessor> CreateEarlyBound() {
  std::int32_t result = S_OK;
  auto processor = CreateInstalledProcessor(result);
  RequireSuccess(result);
  return processor;
}

std::unique_ptr<RequestProcessor> CreateNamed() {
  CLSID identifier{};
  HRESULT result = CLSIDFromProgID(laterClass, &identifier);
  // The system's text of an unknown name is about how names are written.
  if (result == CO_E_CLASSSTRING) result = REGDB_E_CLASSNOTREG;
  RequireSuccess(result);
  void* created = nullptr;
  RequireSuccess(CoCreateInstance(identifier, nullptr, contexts, __uuidof(IDispatch), &created));
  return NamedProcessor(ComPointer<IDispatch>::Adopt(static_cast<IDispatch*>(created)));
}

std::wstring TextOfClass(const CLSID& identifier) {
  std::array<wchar_t, 39> text{};
  StringFromGUID2(identifier, text.data(), static_cast<int>(text.size()));
  return text.data();
}

// The text in the default value of a key of classes, as programs of one width see it; nullopt if it is
// missing.
std::optional<std::wstring> ClassValue(const std::wstring& key, REGSAM view) {
  HKEY opened = nullptr;
  if (RegOpenKeyExW(HKEY_CLASSES_ROOT, key.c_str(), 0, KEY_READ | view, &opened) != ERROR_SUCCESS)
    return std::nullopt;
  std::array<wchar_t, 1024> text{};
  DWORD size = sizeof(text) - sizeof(wchar_t);
  DWORD type = REG_NONE;
  const LSTATUS status =
      RegQueryValueExW(opened, nullptr, nullptr, &type, reinterpret_cast<BYTE*>(text.data()), &size);
  RegCloseKey(opened);
  if (status != ERROR_SUCCESS || type != REG_SZ) return std::nullopt;
  return std::wstring(text.data());
}

bool HasServer(const std::wstring& identifier, REGSAM view) {
  const std::wstring key = L"CLSID\\" + identifier;
  return ClassValue(key + L"\\InprocServer32", view) || ClassValue(key + L"\\LocalServer32", view);
}

constexpr REGSAM ownView = sizeof(void*) == 8 ? KEY_WOW64_64KEY : KEY_WOW64_32KEY;
constexpr REGSAM otherView = sizeof(void*) == 8 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;

bool OnlyInOtherView(const std::wstring& identifier) {
  return HasServer(identifier, otherView) && !HasServer(identifier, ownView);
}

// Windows has one list of names for both widths, but not every system that runs its programs does.
bool NamedOnlyInOtherView() {
  const std::wstring key = std::wstring(laterClass) + L"\\CLSID";
  auto identifier = ClassValue(key, ownView);
  if (!identifier) identifier = ClassValue(key, otherView);
  return identifier && OnlyInOtherView(*identifier);
}

}  // namespace

std::vector<ProcessorClass> InstalledProcessorClasses() {
  const std::wstring identifier = TextOfClass(__uuidof(QuickBooksRequestProcessor));
  return {{.name = "QuickBooks 2002/2003 " + Utf8(identifier),
           .create = [] { return InApartment(CreateEarlyBound); },
           .onlyForOtherWidth = [identifier] { return OnlyInOtherView(identifier); }},
          {.name = Utf8(laterClass),
           .create = [] { return InApartment(CreateNamed); },
           .onlyForOtherWidth = NamedOnlyInOtherView}};
}

}  // namespace krnqb::com
