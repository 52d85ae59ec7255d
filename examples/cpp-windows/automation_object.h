#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "pointers.h"

/// An object of this program that the component calls: its plan, and what receives its events. It lives until
/// the last reference to it is released.
class AutomationObject : public IDispatch {
 public:
  /// A member: takes its arguments in order and returns its result. It may throw _com_error.
  using Member = std::function<_variant_t(const std::vector<_variant_t>&)>;

  /// Creates an object with these members by name. `interfaceId` is the events interface that the object
  /// receives, if any.
  static IDispatchPtr Make(std::map<std::wstring, Member> members, const IID& interfaceId = IID_IDispatch);
  /// Creates an object with these members by dispid.
  static IDispatchPtr Make(std::map<DISPID, Member> members, const IID& interfaceId);

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** information) override;
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                                          DISPID* members) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID reserved, LCID locale, WORD flags,
                                   DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                                   UINT* argument) override;

 private:
  explicit AutomationObject(const IID& interfaceId) : interfaceId_(interfaceId) {}
  virtual ~AutomationObject() = default;

  IID interfaceId_;
  std::map<std::wstring, DISPID> names_;
  std::map<DISPID, Member> members_;
  ULONG references_ = 0;
};
