#include "com/calls/argument_preparation.h"

#include <algorithm>
#include <memory>

#include "com/values/error_mapping.h"

namespace krnqb::com {
namespace {

constexpr WORD puts = DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF;

struct FunctionRelease {
  ITypeInfo* information;
  void operator()(FUNCDESC* description) const noexcept { information->ReleaseFuncDesc(description); }
};
using Function = std::unique_ptr<FUNCDESC, FunctionRelease>;

struct AttributesRelease {
  ITypeInfo* information;
  void operator()(TYPEATTR* attributes) const noexcept { information->ReleaseTypeAttr(attributes); }
};
using Attributes = std::unique_ptr<TYPEATTR, AttributesRelease>;

Attributes AttributesOf(ITypeInfo& information) {
  TYPEATTR* attributes = nullptr;
  Check(information.GetTypeAttr(&attributes));
  return Attributes(attributes, AttributesRelease{&information});
}

Function FunctionOf(ITypeInfo& information, DISPID member, WORD flags) {
  const UINT count = AttributesOf(information)->cFuncs;
  for (UINT index = 0; index < count; ++index) {
    FUNCDESC* description = nullptr;
    Check(information.GetFuncDesc(index, &description));
    Function function(description, FunctionRelease{&information});
    if (function->memid == member && (function->invkind & flags) != 0) return function;
  }
  return Function(nullptr, FunctionRelease{&information});
}

// A plain assignment also reaches a property that is declared putref only: hosts assign objects either way.
Function CalledFunction(ITypeInfo& information, DISPID member, WORD flags) {
  Function function = FunctionOf(information, member, flags);
  if (function == nullptr && (flags & DISPATCH_PROPERTYPUT) != 0)
    function = FunctionOf(information, member, DISPATCH_PROPERTYPUTREF);
  if (function == nullptr) throw CallFault{DISP_E_MEMBERNOTFOUND};
  return function;
}

// Returns the VARTYPE of a type's values. The types of the component's own library are enumerations and
// interfaces.
VARTYPE PlainType(ITypeInfo& information, const TYPEDESC& type) {
  if (type.vt != VT_USERDEFINED) return type.vt;
  ComPointer<ITypeInfo> referred;
  Check(information.GetRefTypeInfo(type.hreftype, referred.Receive()));
  return AttributesOf(*referred)->typekind == TKIND_ENUM ? VT_I4 : VT_DISPATCH;
}

bool IsLeftOut(const VARIANT* value) {
  const VARIANT* followed = value == nullptr ? nullptr : Followed(*value);
  return value == nullptr ||
         (followed != nullptr && followed->vt == VT_ERROR && followed->scode == DISP_E_PARAMNOTFOUND);
}

std::size_t SizeOf(VARTYPE type) {
  switch (type) {
    case VT_I1:
    case VT_UI1:
      return 1;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL:
      return 2;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_R4:
    case VT_ERROR:
      return 4;
    case VT_I8:
    case VT_UI8:
    case VT_R8:
    case VT_CY:
    case VT_DATE:
      return 8;
    case VT_BSTR:
    case VT_DISPATCH:
    case VT_UNKNOWN:
      return sizeof(void*);
    default:
      return 0;
  }
}

// Stores a value of exactly this type in a caller's variable and releases the previous value.
void Store(VariantValue value, void* variable, VARTYPE type) {
  VARIANT old{};
  old.vt = type;
  std::copy_n(static_cast<const char*>(variable), SizeOf(type), reinterpret_cast<char*>(&old.byref));
  const VARIANT given = value.Detach();
  std::copy_n(reinterpret_cast<const char*>(&given.byref), SizeOf(type), static_cast<char*>(variable));
  VariantClear(&old);
}

}  // namespace

struct PreparedCall::Parameter {
  Parameter(ITypeInfo& information, ELEMDESC& element) : flags(element.paramdesc.wParamFlags) {
    const TYPEDESC& declared = element.tdesc;
    type = PlainType(information, declared);
    if (declared.vt == VT_PTR) {
      const TYPEDESC& target = *declared.lptdesc;
      // A pointer to an interface is an object; any other pointer, including a pointer to an object, is a
      // reference.
      type = PlainType(information, target.vt == VT_PTR ? *target.lptdesc : target);
      const bool isObject = target.vt == VT_USERDEFINED && type == VT_DISPATCH;
      byReference = !isObject;
    }
    if ((flags & PARAMFLAG_FHASDEFAULT) != 0) defaultValue = &element.paramdesc.pparamdescex->varDefaultValue;
  }

  bool IsOptional() const { return (flags & (PARAMFLAG_FOPT | PARAMFLAG_FHASDEFAULT)) != 0; }

  USHORT flags;
  VARTYPE type = VT_EMPTY;
  bool byReference = false;
  const VARIANT* defaultValue = nullptr;
};

PreparedCall::PreparedCall(ITypeInfo& information, DISPID member, WORD flags, LCID localeId,
                           const DISPPARAMS& arguments)
    : localeId_(localeId) {
  const Function function = CalledFunction(information, member, flags);
  invokeFlags_ = static_cast<WORD>(function->invkind);
  const bool isPut = (invokeFlags_ & puts) != 0;
  const auto count = static_cast<std::size_t>(function->cParams);
  const std::vector<Supplied> supplied = Assign(arguments, count, isPut);

  for (std::size_t index = 0; index < count; ++index) {
    const Parameter parameter(information, function->lprgelemdescParam[index]);
    values_.push_back(Prepare(parameter, supplied[index]));
  }
  for (auto value = values_.rbegin(); value != values_.rend(); ++value) borrowed_.push_back(value->Get());
  prepared_.rgvarg = borrowed_.data();
  prepared_.cArgs = static_cast<UINT>(borrowed_.size());
  prepared_.rgdispidNamedArgs = isPut ? &putValue_ : nullptr;
  prepared_.cNamedArgs = isPut ? 1 : 0;
}

// Assigns arguments to parameters. Arguments are in reverse order, named ones first; a parameter's name is
// its position, and the value of an assignment is the last parameter.
std::vector<PreparedCall::Supplied> PreparedCall::Assign(const DISPPARAMS& arguments,
                                                         std::size_t parameterCount, bool isPut) {
  if (arguments.cArgs > parameterCount) throw CallFault{DISP_E_BADPARAMCOUNT};
  if (arguments.cNamedArgs > arguments.cArgs) throw CallFault{DISP_E_BADPARAMCOUNT};
  std::vector<Supplied> supplied(parameterCount);
  const auto give = [&](std::size_t parameter, UINT index) {
    if (parameter >= parameterCount || supplied[parameter].value != nullptr)
      throw CallFault{DISP_E_PARAMNOTFOUND, index};
    supplied[parameter] = {&arguments.rgvarg[index], index};
  };

  for (UINT index = arguments.cNamedArgs; index < arguments.cArgs; ++index)
    give(arguments.cArgs - 1 - index, index);
  for (UINT index = 0; index < arguments.cNamedArgs; ++index) {
    const DISPID name = arguments.rgdispidNamedArgs[index];
    const bool isPutValue = isPut && name == DISPID_PROPERTYPUT;
    if (!isPutValue && name < 0) throw CallFault{DISP_E_PARAMNOTFOUND, index};
    give(isPutValue ? parameterCount - 1 : static_cast<std::size_t>(name), index);
  }
  return supplied;
}

VariantValue PreparedCall::Prepare(const Parameter& parameter, const Supplied& supplied) {
  if (!parameter.byReference) return ValueFor(parameter, supplied);
  Reference& reference = references_.emplace_back();
  reference.local = ValueFor(parameter, supplied);
  reference.supplied = supplied;
  VariantValue pointer;
  pointer.Get().vt = static_cast<VARTYPE>(VT_BYREF | parameter.type);
  if (parameter.type == VT_VARIANT)
    pointer.Get().pvarVal = &reference.local.Get();
  else
    pointer.Get().byref = &reference.local.Get().byref;
  return pointer;
}

VariantValue PreparedCall::ValueFor(const Parameter& parameter, const Supplied& supplied) const {
  if (!IsLeftOut(supplied.value)) return Converted(*supplied.value, parameter.type, supplied.index);
  if (!parameter.IsOptional()) {
    if (supplied.value == nullptr) throw CallFault{DISP_E_BADPARAMCOUNT};
    throw CallFault{DISP_E_PARAMNOTOPTIONAL, supplied.index};
  }
  if (parameter.defaultValue != nullptr)
    return Converted(*parameter.defaultValue, parameter.type, supplied.index);
  VariantValue absent;
  absent.Get().vt = parameter.type == VT_VARIANT ? VARTYPE{VT_ERROR} : parameter.type;
  if (parameter.type == VT_VARIANT) absent.Get().scode = DISP_E_PARAMNOTFOUND;
  return absent;
}

VariantValue PreparedCall::Converted(const VARIANT& source, VARTYPE type, UINT index) const {
  VariantValue value;
  const VARIANT* followed = Followed(source);
  HRESULT result = followed == nullptr || ((followed->vt & VT_BYREF) != 0 && followed->byref == nullptr)
                       ? DISP_E_TYPEMISMATCH
                       : VariantCopyInd(&value.Get(), const_cast<VARIANT*>(followed));
  if (SUCCEEDED(result) && type != VT_VARIANT && value.Type() != type) {
    const bool isNothing = value.IsObject() && value.Get().byref == nullptr;
    if (isNothing && (type == VT_DISPATCH || type == VT_UNKNOWN))
      value.Get().vt = type;
    else
      result = VariantChangeTypeEx(&value.Get(), &value.Get(), localeId_, VARIANT_ALPHABOOL, type);
  }
  if (FAILED(result)) {
    const bool telling = result == DISP_E_OVERFLOW || result == E_OUTOFMEMORY;
    throw CallFault{telling ? result : DISP_E_TYPEMISMATCH, index};
  }
  return value;
}

void PreparedCall::WriteBack() {
  for (Reference& reference : references_) {
    const VARIANT* followed =
        reference.supplied.value == nullptr ? nullptr : Followed(*reference.supplied.value);
    if (followed == nullptr) continue;
    const bool isTyped = (followed->vt & VT_BYREF) != 0;
    if (isTyped) {
      const auto type = static_cast<VARTYPE>(followed->vt & ~VT_BYREF);
      if (SizeOf(type) == 0 || followed->byref == nullptr) continue;
      Store(Converted(reference.local.Get(), type, reference.supplied.index), followed->byref, type);
    } else if (followed != reference.supplied.value) {
      // A caller's variable that holds a value: passed by reference so that it can be written to.
      VARIANT& variable = *const_cast<VARIANT*>(followed);
      VariantClear(&variable);
      variable = reference.local.Detach();
    }
  }
}

}  // namespace krnqb::com
