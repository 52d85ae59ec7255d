// The exported entry points, called only by COM and by registration programs.
#include <olectl.h>

#include "com/calls/type_library.h"
#include "com/class_factory.h"
#include "com/objects/live_objects.h"
#include "com/registration/component_keys.h"
#include "com/registration/registry_writer.h"
#include "com/server_classes.h"
#include "com/values/error_mapping.h"

STDAPI DllGetClassObject(REFCLSID classId, REFIID interfaceId, void** object) {
  using namespace krnqb::com;
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  for (const ServerClass& serverClass : ServerClasses()) {
    if (serverClass.classId != classId) continue;
    HRESULT found = S_OK;
    const HRESULT made = Guarded({serverClass.programName, IID_IClassFactory}, [&] {
      found = MakeObject<ClassFactory>(serverClass)->QueryInterface(interfaceId, object);
    });
    return FAILED(made) ? made : found;
  }
  return CLASS_E_CLASSNOTAVAILABLE;
}

STDAPI DllCanUnloadNow() {
  return krnqb::com::IsLibraryUnused() ? S_OK : S_FALSE;
}

STDAPI DllRegisterServer() {
  using namespace krnqb::com;
  return Guarded({L"KRN6_QB2002", IID_NULL}, [] {
    const std::unique_ptr<RegistryWriter> registry = SystemRegistryWriter();
    Register(*registry, RegistrationOf(OwnPath()));
  });
}

STDAPI DllUnregisterServer() {
  using namespace krnqb::com;
  return Guarded({L"KRN6_QB2002", IID_NULL}, [] {
    const std::unique_ptr<RegistryWriter> registry = SystemRegistryWriter();
    Unregister(*registry, RegistrationOf(OwnPath()));
  });
}
