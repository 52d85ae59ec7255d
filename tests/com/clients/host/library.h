#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include "host/com_values.h"

namespace krnqb::testing {

/// The DLL as this process loaded it.
class Library {
 public:
  Library() : module_(LoadLibraryW(L"KRN6_QB2002.dll")) { EXPECT_NE(nullptr, module_); }
  ~Library() { FreeLibrary(module_); }
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;

  HRESULT CanUnload() const {
    return reinterpret_cast<HRESULT(STDAPICALLTYPE*)()>(
        reinterpret_cast<void*>(GetProcAddress(module_, "DllCanUnloadNow")))();
  }
  HRESULT ClassObject(REFCLSID identifier, REFIID interfaceIdentifier, void** object) const {
    return reinterpret_cast<HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**)>(reinterpret_cast<void*>(
        GetProcAddress(module_, "DllGetClassObject")))(identifier, interfaceIdentifier, object);
  }
  template <typename Interface>
  Held<Interface> New(REFCLSID identifier) const {
    Held<IClassFactory> factory;
    Held<Interface> object;
    EXPECT_EQ(S_OK, ClassObject(identifier, IID_IClassFactory, factory.ReceiveAny()));
    EXPECT_EQ(S_OK, factory->CreateInstance(nullptr, __uuidof(Interface), object.ReceiveAny()));
    return object;
  }

 private:
  HMODULE module_;
};

}  // namespace krnqb::testing
