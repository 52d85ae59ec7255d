#include "host/plan.h"
#include "test_processor/texts.h"
#include "typed_plan.gen.h"

namespace krnqb::testing {
namespace {

constexpr HRESULT subscriptOutOfRange = static_cast<HRESULT>(0x800A0009);

/// Base of the three typed objects: reference counting, and late-bound calls through the type library in the
/// program.
template <typename Interface>
class TypedObject : public Interface {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID identifier, void** object) override {
    *object = nullptr;
    if (!IsEqualIID(identifier, IID_IUnknown) && !IsEqualIID(identifier, IID_IDispatch) &&
        !IsEqualIID(identifier, __uuidof(Interface))) {
      return E_NOINTERFACE;
    }
    AddRef();
    *object = static_cast<Interface*>(this);
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++references_); }
  ULONG STDMETHODCALLTYPE Release() override {
    const long left = --references_;
    if (left == 0) delete this;
    return static_cast<ULONG>(left);
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    *count = 1;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT /*index*/, LCID /*locale*/, ITypeInfo** result) override {
    Held<ITypeInfo> shared = information_;
    *result = shared.Get();
    (*result)->AddRef();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID /*reserved*/, LPOLESTR* names, UINT count, LCID /*locale*/,
                                          DISPID* identifiers) override {
    return information_->GetIDsOfNames(names, count, identifiers);
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID identifier, REFIID /*reserved*/, LCID /*locale*/, WORD flags,
                                   DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                                   UINT* argument) override {
    // Automation refuses a variant by reference for a text by reference; Visual Basic's own objects do too.
    for (UINT index = 0; index < parameters->cArgs; ++index) {
      if (parameters->rgvarg[index].vt == (VT_BYREF | VT_VARIANT)) return DISP_E_TYPEMISMATCH;
    }
    return information_->Invoke(static_cast<Interface*>(this), identifier, flags, parameters, result,
                                exception, argument);
  }

 protected:
  TypedObject() {
    wchar_t path[MAX_PATH];
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    Held<ITypeLib> library;
    if (SUCCEEDED(LoadTypeLibEx(path, REGKIND_NONE, library.Receive()))) {
      library->GetTypeInfoOfGuid(__uuidof(Interface), information_.Receive());
    }
  }
  virtual ~TypedObject() = default;

 private:
  long references_ = 1;
  Held<ITypeInfo> information_;
};

using State = std::shared_ptr<PlanState>;

class TypedTable final : public TypedObject<ITypedTable> {
 public:
  TypedTable(State state, std::string id) : state_(std::move(state)), id_(std::move(id)) {}
  HRESULT STDMETHODCALLTYPE Serialize(BSTR* result) override {
    *result = NewText(state_->tables.Table(id_).Xml());
    return S_OK;
  }

 private:
  State state_;
  std::string id_;
};

class TypedData final : public TypedObject<ITypedData> {
 public:
  explicit TypedData(State state) : state_(std::move(state)) {}
  HRESULT STDMETHODCALLTYPE tables(BSTR* id, IDispatch** result) override {
    *result = nullptr;
    const std::string asked = Utf8(*id);
    if (!state_->tables.Table(asked)) return subscriptOutOfRange;
    *result = new TypedTable(state_, asked);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Deserialize(BSTR* text) override {
    state_->calls.emplace_back("Deserialize");
    const HRESULT taken = state_->tables.Take(Utf8(*text));
    SysReAllocString(text, L"left by the host");
    return taken;
  }

 private:
  State state_;
};

class TypedPlan final : public TypedObject<ITypedPlan> {
 public:
  explicit TypedPlan(State state) : state_(std::move(state)) {}
  HRESULT STDMETHODCALLTYPE get_Data(IDispatch** result) override {
    *result = new TypedData(state_);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE OpenPlan(BSTR* file, VARIANT_BOOL* result) override {
    state_->openedPlan.assign(*file, SysStringLen(*file));
    *result = VARIANT_TRUE;
    return S_OK;
  }

 private:
  State state_;
};

}  // namespace

Held<IDispatch> NewTypedPlan(const State& state) {
  return Held<IDispatch>(new TypedPlan(state));
}

}  // namespace krnqb::testing
