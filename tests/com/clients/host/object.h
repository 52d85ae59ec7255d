#pragma once

#include <functional>
#include <string>
#include <vector>

#include "host/com_values.h"

namespace krnqb::testing {

/// Base of the tests' own objects: reference counting and QueryInterface.
class HostObject : public IDispatch {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID identifier, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** information) override;

  /// Returns the number of existing objects of this kind.
  static long Alive();

 protected:
  HostObject();
  virtual ~HostObject();
  /// The interface that the object implements besides IUnknown and IDispatch.
  IID further = IID_IDispatch;

 private:
  long references_ = 1;
};

/// The arguments of a call in declaration order, and its result.
struct HostCall {
  std::vector<VARIANT*> arguments;
  WORD flags;
  VARIANT* result;       ///< may be null
  EXCEPINFO* exception;  ///< may be null
};

/// An object whose members are functions, available only through IDispatch.
class NamedObject final : public HostObject {
 public:
  using Function = std::function<HRESULT(const HostCall&)>;

  static Held<NamedObject> Make() { return Held<NamedObject>(new NamedObject); }

  /// Adds a member that accepts calls with any of these flags; other calls get DISP_E_MEMBERNOTFOUND. The
  /// member named "" is the default member.
  void Add(const std::wstring& name, WORD accepted, Function function);

  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                                          DISPID* identifiers) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID identifier, REFIID reserved, LCID locale, WORD flags,
                                   DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                                   UINT* argument) override;

 private:
  struct Member {
    std::wstring name;
    WORD accepted;
    Function function;
  };
  NamedObject() = default;

  std::vector<Member> members_;
};

/// Sets a text or an object as a call's result.
HRESULT GiveText(const HostCall& call, std::wstring_view text);
HRESULT GiveObject(const HostCall& call, IDispatch* object);

/// Fails as automation objects do: with an EXCEPINFO.
HRESULT Raise(const HostCall& call, SCODE code, WORD shortCode, const wchar_t* description);

}  // namespace krnqb::testing
