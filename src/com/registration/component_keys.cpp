#include "com/registration/component_keys.h"

#include <krn6_qb2002.h>
#include <ole2.h>

#include <array>
#include <cstring>
#include <exception>
#include <optional>

#include "com/registration/component_classes.h"
#include "com/registration/registry_changes.h"
#include "krnqb/error.h"

namespace krnqb::com {
namespace {

constexpr bool is64Bit = sizeof(void*) == 8;
constexpr const wchar_t* ownPlatform = is64Bit ? L"win64" : L"win32";
constexpr const wchar_t* otherPlatform = is64Bit ? L"win32" : L"win64";
constexpr const wchar_t* libraryVersion = L"1.0";
constexpr const wchar_t* libraryDescription = L"Korrin Software Data Exchange Component for QuickBooks 2002";
constexpr RegistryHive allUsers = RegistryHive::LocalMachine;
constexpr RegistryHive oneUser = RegistryHive::CurrentUser;

// The system's type-library marshallers for dual interfaces and for dispinterfaces.
constexpr const wchar_t* dualMarshaller = L"{00020424-0000-0000-C000-000000000046}";
constexpr const wchar_t* dispatchMarshaller = L"{00020420-0000-0000-C000-000000000046}";

// The keys above those of classes, interfaces and type libraries.
constexpr std::array groups{L"CLSID", L"Interface", L"TypeLib"};

struct RegisteredInterface {
  const IID& interfaceId;
  const wchar_t* name;
  const wchar_t* marshaller;
};

const std::array interfaces{
    RegisteredInterface{__uuidof(_QBDataExchange), L"_QBDataExchange", dualMarshaller},
    RegisteredInterface{__uuidof(__QBDataExchange), L"__QBDataExchange", dispatchMarshaller},
    RegisteredInterface{__uuidof(_QBKRNEnums), L"_QBKRNEnums", dualMarshaller},
    RegisteredInterface{__uuidof(_cSubtotals), L"_cSubtotals", dualMarshaller},
    RegisteredInterface{__uuidof(_QBCollection), L"_QBCollection", dualMarshaller},
};

std::wstring TextOfIdentifier(const GUID& identifier) {
  std::array<wchar_t, 40> text{};
  StringFromGUID2(identifier, text.data(), static_cast<int>(text.size()));
  return text.data();
}

// Collects the keys and marks the shared ones.
class Table {
 public:
  explicit Table(std::vector<RegisteredKey>& keys) : keys_(keys) {}

  void Key(const std::wstring& path, const std::wstring& value = {}) {
    keys_.push_back({path, {}, value, isShared_});
  }
  void Value(const std::wstring& path, const std::wstring& name, const std::wstring& value) {
    keys_.push_back({path, name, value, isShared_});
  }
  // Sets whether the keys added from now on are shared.
  void Shared(bool shared) { isShared_ = shared; }

 private:
  std::vector<RegisteredKey>& keys_;
  bool isShared_ = false;
};

void AddProgramNames(Table& table, const ComponentClass& componentClass) {
  const std::wstring name = componentClass.programName;
  const std::wstring versioned = name + L".1";
  const std::wstring classId = TextOfIdentifier(componentClass.classId);
  table.Shared(true);
  table.Key(versioned, componentClass.description);
  table.Key(versioned + L"\\CLSID", classId);
  table.Key(name, componentClass.description);
  table.Key(name + L"\\CLSID", classId);
  table.Key(name + L"\\CurVer", versioned);
  table.Shared(false);
}

void AddClass(Table& table, const ComponentClass& componentClass, const std::wstring& path) {
  const std::wstring key = L"CLSID\\" + TextOfIdentifier(componentClass.classId);
  const std::wstring name = componentClass.programName;
  table.Key(key, componentClass.description);
  table.Key(key + L"\\InprocServer32", path);
  table.Value(key + L"\\InprocServer32", L"ThreadingModel", L"Apartment");
  table.Key(key + L"\\ProgID", name + L".1");
  table.Key(key + L"\\VersionIndependentProgID", name);
  table.Key(key + L"\\TypeLib", TextOfIdentifier(LIBID_KRN6_QB2002));
  table.Key(key + L"\\Version", libraryVersion);
  table.Key(key + L"\\Programmable");
}

void AddInterface(Table& table, const RegisteredInterface& registered) {
  const std::wstring key = L"Interface\\" + TextOfIdentifier(registered.interfaceId);
  table.Key(key, registered.name);
  table.Key(key + L"\\ProxyStubClsid32", registered.marshaller);
  table.Key(key + L"\\TypeLib", TextOfIdentifier(LIBID_KRN6_QB2002));
  table.Value(key + L"\\TypeLib", L"Version", libraryVersion);
}

std::wstring TypeLibraryKey() {
  return L"TypeLib\\" + TextOfIdentifier(LIBID_KRN6_QB2002);
}

// Both architectures see the type library's keys; each registers its own file in them.
void AddTypeLibrary(Table& table, const std::wstring& path) {
  const std::wstring version = TypeLibraryKey() + L"\\" + libraryVersion;
  table.Shared(true);
  table.Key(TypeLibraryKey());
  table.Key(version, libraryDescription);
  table.Key(version + L"\\FLAGS", L"0");
  table.Key(version + L"\\HELPDIR", path.substr(0, path.find_last_of(L'\\')));
  table.Key(version + L"\\0");
  table.Shared(false);
  table.Key(version + L"\\0\\" + ownPlatform, path);
}

// Removes inner keys first, so that each key is empty by the time it is removed.
void RemoveKeys(RegistryWriter& registry, RegistryHive hive, const Registration& registration) {
  const bool otherStays = registry.Has(hive, registration.otherServerKey);
  for (auto key = registration.keys.rbegin(); key != registration.keys.rend(); ++key) {
    if (key->isShared && otherStays) continue;
    if (key->HasValue()) registry.RemoveValue(hive, key->path, key->name);
    registry.RemoveEmptyKey(hive, key->path);
  }
  // A user who had no classes had none of these keys.
  for (const wchar_t* group : groups) registry.RemoveEmptyKey(hive, group);
}

void WriteKey(RegistryChanges& changes, const RegisteredKey& key) {
  changes.Create(key.path);
  if (key.HasValue()) changes.Write(key.path, key.name, key.value);
}

// Returns whether the hive names the registration's own DLL.
bool IsOwn(RegistryWriter& registry, RegistryHive hive, const Registration& registration) {
  const std::optional<StoredValue> stored = registry.Read(hive, registration.ownServerKey, {});
  if (!stored) return false;
  std::wstring path(stored->bytes.size() / sizeof(wchar_t), L'\0');
  std::memcpy(path.data(), stored->bytes.data(), path.size() * sizeof(wchar_t));
  path.erase(path.find_last_not_of(L'\0') + 1);
  const std::wstring& own = registration.libraryPath;
  return CompareStringOrdinal(path.c_str(), static_cast<int>(path.size()), own.c_str(),
                              static_cast<int>(own.size()), TRUE) == CSTR_EQUAL;
}

// Returns whether the first key of a registration can be written for all users. Changes nothing if it cannot.
bool IsMachineWritable(RegistryWriter& registry, const RegisteredKey& first) {
  RegistryChanges trial(registry, allUsers);
  try {
    WriteKey(trial, first);
    return true;
  } catch (const Error&) {
    return false;
  }
}

}  // namespace

Registration RegistrationOf(const std::wstring& libraryPath) {
  Registration registration;
  registration.libraryPath = libraryPath;
  Table table(registration.keys);
  for (const ComponentClass& componentClass : ComponentClasses()) {
    AddClass(table, componentClass, libraryPath);
    AddProgramNames(table, componentClass);
  }
  for (const RegisteredInterface& registered : interfaces) AddInterface(table, registered);
  AddTypeLibrary(table, libraryPath);

  const std::wstring platforms = TypeLibraryKey() + L"\\" + libraryVersion + L"\\0\\";
  registration.ownServerKey = platforms + ownPlatform;
  registration.otherServerKey = platforms + otherPlatform;
  return registration;
}

void Register(RegistryWriter& registry, const Registration& registration, RegistryHive hive) {
  RegistryChanges changes(registry, hive);
  for (const RegisteredKey& key : registration.keys) WriteKey(changes, key);
  changes.Keep();
}

void Register(RegistryWriter& registry, const Registration& registration) {
  const bool forAllUsers = IsMachineWritable(registry, registration.keys.front());
  Register(registry, registration, forAllUsers ? allUsers : oneUser);
}

void Unregister(RegistryWriter& registry, const Registration& registration) {
  std::exception_ptr refusal;
  for (const RegistryHive hive : {allUsers, oneUser}) {
    try {
      if (registry.Has(hive, registration.ownServerKey)) RemoveKeys(registry, hive, registration);
    } catch (const Error&) {
      // A user may remove an own registration even where the machine's may not be touched.
      if (refusal == nullptr) refusal = std::current_exception();
    }
  }
  if (refusal != nullptr) std::rethrow_exception(refusal);
}

void Unregister(RegistryWriter& registry, const Registration& registration, RegistryHive hive) {
  if (IsOwn(registry, hive, registration)) RemoveKeys(registry, hive, registration);
}

}  // namespace krnqb::com
