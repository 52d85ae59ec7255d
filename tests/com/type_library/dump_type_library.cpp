// usage: dump_type_library FILE
//
// Prints everything in a file's type library that hosts bind to: identifiers, members, dispids, vtable
// positions, types, parameter names, flags and defaults.
#include <fmt/format.h>
#include <ole2.h>

#include <array>
#include <cstdio>
#include <string>
#include <vector>

#include "com/values/com_pointer.h"
#include "com/values/error_mapping.h"
#include "com/values/text.h"
#include "com/values/variant_value.h"

namespace krnqb::com {
namespace {

struct Flag {
  unsigned bit;
  const char* name;
};

std::string FlagNames(unsigned flags, const std::vector<Flag>& known) {
  std::string names;
  for (const Flag& flag : known) {
    if ((flags & flag.bit) == 0) continue;
    names += names.empty() ? flag.name : std::string(" ") + flag.name;
    flags &= ~flag.bit;
  }
  if (flags != 0) names += fmt::format(" {:#x}", flags);
  return names.empty() ? "-" : names;
}

std::string TypeFlags(unsigned flags) {
  return FlagNames(flags, {{TYPEFLAG_FAPPOBJECT, "appobject"},
                           {TYPEFLAG_FCANCREATE, "creatable"},
                           {TYPEFLAG_FLICENSED, "licensed"},
                           {TYPEFLAG_FPREDECLID, "predeclid"},
                           {TYPEFLAG_FHIDDEN, "hidden"},
                           {TYPEFLAG_FCONTROL, "control"},
                           {TYPEFLAG_FDUAL, "dual"},
                           {TYPEFLAG_FNONEXTENSIBLE, "nonextensible"},
                           {TYPEFLAG_FOLEAUTOMATION, "oleautomation"},
                           {TYPEFLAG_FRESTRICTED, "restricted"},
                           {TYPEFLAG_FREPLACEABLE, "replaceable"},
                           {TYPEFLAG_FDISPATCHABLE, "dispatchable"}});
}

std::string ParameterFlags(unsigned flags) {
  return FlagNames(flags, {{PARAMFLAG_FIN, "in"},
                           {PARAMFLAG_FOUT, "out"},
                           {PARAMFLAG_FRETVAL, "retval"},
                           {PARAMFLAG_FOPT, "optional"},
                           {PARAMFLAG_FHASDEFAULT, "default"}});
}

std::string ImplementationFlags(unsigned flags) {
  return FlagNames(flags, {{IMPLTYPEFLAG_FDEFAULT, "default"}, {IMPLTYPEFLAG_FSOURCE, "source"}});
}

std::string IdentifierText(const GUID& identifier) {
  std::array<wchar_t, 40> text{};
  StringFromGUID2(identifier, text.data(), static_cast<int>(text.size()));
  return Utf8(std::wstring_view(text.data()));
}

struct Names {
  std::string name;
  std::string helpText;
};

Names NamesOf(ITypeInfo& information, MEMBERID member) {
  Bstr name;
  Bstr helpText;
  Check(information.GetDocumentation(member, name.Receive(), helpText.Receive(), nullptr, nullptr));
  return {Utf8(TextOf(name.get())), Utf8(TextOf(helpText.get()))};
}

std::string TypeText(ITypeInfo& information, const TYPEDESC& type) {
  switch (type.vt) {
    case VT_PTR:
      return TypeText(information, *type.lptdesc) + "*";
    case VT_USERDEFINED: {
      ComPointer<ITypeInfo> referred;
      Check(information.GetRefTypeInfo(type.hreftype, referred.Receive()));
      return NamesOf(*referred, MEMBERID_NIL).name;
    }
    case VT_I2:
      return "Integer";
    case VT_I4:
      return "Long";
    case VT_BOOL:
      return "Boolean";
    case VT_R8:
      return "Double";
    case VT_BSTR:
      return "String";
    case VT_VARIANT:
      return "Variant";
    case VT_DISPATCH:
      return "Object";
    case VT_UNKNOWN:
      return "IUnknown";
    case VT_HRESULT:
      return "HRESULT";
    case VT_VOID:
      return "void";
    default:
      return fmt::format("type {}", type.vt);
  }
}

std::string DefaultText(const VARIANT& value) {
  if (value.vt == VT_BSTR) return fmt::format(" = \"{}\"", Utf8(TextOf(value.bstrVal)));
  VariantValue text = VariantValue::CopyOf(value);
  Check(VariantChangeType(&text.Get(), &text.Get(), 0, VT_BSTR));
  return " = " + Utf8(TextOf(text.Get().bstrVal));
}

void PrintFunction(ITypeInfo& information, UINT index) {
  FUNCDESC* function = nullptr;
  Check(information.GetFuncDesc(index, &function));
  const std::string kind =
      FlagNames(static_cast<unsigned>(function->invkind), {{INVOKE_FUNC, "method"},
                                                           {INVOKE_PROPERTYGET, "get"},
                                                           {INVOKE_PROPERTYPUT, "let"},
                                                           {INVOKE_PROPERTYPUTREF, "set"}});
  std::vector<BSTR> names(static_cast<std::size_t>(function->cParams) + 1);
  UINT named = 0;
  Check(information.GetNames(function->memid, names.data(), static_cast<UINT>(names.size()), &named));
  const Names documentation = NamesOf(information, function->memid);
  // Vtable positions are counted in methods, so that both architectures print the same.
  fmt::print("  {} {} dispid {} place {} flags {:#x} returns {} optional {} \"{}\"\n", kind,
             documentation.name, function->memid, function->oVft / static_cast<SHORT>(sizeof(void*)),
             function->wFuncFlags, TypeText(information, function->elemdescFunc.tdesc), function->cParamsOpt,
             documentation.helpText);
  const bool isPut = (function->invkind & (INVOKE_PROPERTYPUT | INVOKE_PROPERTYPUTREF)) != 0;
  for (std::size_t parameter = 0; parameter + 1 < names.size(); ++parameter) {
    const ELEMDESC& element = function->lprgelemdescParam[parameter];
    const USHORT flags = element.paramdesc.wParamFlags;
    const bool hasDefault = (flags & PARAMFLAG_FHASDEFAULT) != 0;
    // The value of an assignment has no name.
    const bool isValue = isPut && parameter + 2 == names.size();
    fmt::print("    {} [{}] {}{}\n", isValue ? "=" : Utf8(TextOf(names[parameter + 1])),
               ParameterFlags(flags), TypeText(information, element.tdesc),
               hasDefault ? DefaultText(element.paramdesc.pparamdescex->varDefaultValue) : "");
  }
  for (UINT name = 0; name < named; ++name) SysFreeString(names[name]);
  information.ReleaseFuncDesc(function);
}

void PrintConstant(ITypeInfo& information, UINT index) {
  VARDESC* variable = nullptr;
  Check(information.GetVarDesc(index, &variable));
  fmt::print("  {}{}\n", NamesOf(information, variable->memid).name, DefaultText(*variable->lpvarValue));
  information.ReleaseVarDesc(variable);
}

void PrintImplemented(ITypeInfo& information, UINT index) {
  HREFTYPE reference = 0;
  INT flags = 0;
  ComPointer<ITypeInfo> implemented;
  Check(information.GetRefTypeOfImplType(index, &reference));
  Check(information.GetImplTypeFlags(index, &flags));
  Check(information.GetRefTypeInfo(reference, implemented.Receive()));
  fmt::print("  of {} [{}]\n", NamesOf(*implemented, MEMBERID_NIL).name,
             ImplementationFlags(static_cast<unsigned>(flags)));
}

void PrintMembers(ITypeInfo& information, const TYPEATTR& attributes) {
  for (UINT index = 0; index < attributes.cImplTypes; ++index) PrintImplemented(information, index);
  for (UINT index = 0; index < attributes.cVars; ++index) PrintConstant(information, index);
  for (UINT index = 0; index < attributes.cFuncs; ++index) PrintFunction(information, index);
}

// The vtable side of a dual interface; the library lists its dispatch side.
ComPointer<ITypeInfo> VtableSide(ITypeInfo& information) {
  HREFTYPE reference = 0;
  ComPointer<ITypeInfo> side;
  Check(information.GetRefTypeOfImplType(static_cast<UINT>(-1), &reference));
  Check(information.GetRefTypeInfo(reference, side.Receive()));
  return side;
}

void PrintType(ITypeInfo& information) {
  constexpr std::array kinds{"enum", "record", "module", "interface", "dispinterface", "coclass", "alias"};
  TYPEATTR* attributes = nullptr;
  Check(information.GetTypeAttr(&attributes));
  const Names documentation = NamesOf(information, MEMBERID_NIL);
  fmt::print("\n{} {} {} [{}] version {}.{} \"{}\"\n",
             kinds.at(static_cast<std::size_t>(attributes->typekind)), documentation.name,
             IdentifierText(attributes->guid), TypeFlags(attributes->wTypeFlags), attributes->wMajorVerNum,
             attributes->wMinorVerNum, documentation.helpText);
  if ((attributes->wTypeFlags & TYPEFLAG_FDUAL) != 0 && attributes->typekind == TKIND_DISPATCH) {
    const ComPointer<ITypeInfo> side = VtableSide(information);
    TYPEATTR* sideAttributes = nullptr;
    Check(side->GetTypeAttr(&sideAttributes));
    fmt::print("  vtable side [{}]\n", TypeFlags(sideAttributes->wTypeFlags));
    PrintMembers(*side, *sideAttributes);
    side->ReleaseTypeAttr(sideAttributes);
  } else {
    PrintMembers(information, *attributes);
  }
  information.ReleaseTypeAttr(attributes);
}

void PrintLibrary(const wchar_t* file) {
  ComPointer<ITypeLib> library;
  Check(LoadTypeLibEx(file, REGKIND_NONE, library.Receive()));
  TLIBATTR* attributes = nullptr;
  Check(library->GetLibAttr(&attributes));
  Bstr name;
  Bstr helpText;
  Check(library->GetDocumentation(-1, name.Receive(), helpText.Receive(), nullptr, nullptr));
  fmt::print("library {} {} version {}.{} language {} \"{}\"\n", Utf8(TextOf(name.get())),
             IdentifierText(attributes->guid), attributes->wMajorVerNum, attributes->wMinorVerNum,
             attributes->lcid, Utf8(TextOf(helpText.get())));
  library->ReleaseTLibAttr(attributes);
  for (UINT index = 0; index < library->GetTypeInfoCount(); ++index) {
    ComPointer<ITypeInfo> information;
    Check(library->GetTypeInfo(index, information.Receive()));
    PrintType(*information);
  }
  fmt::print("\nend of the type library\n");
}

}  // namespace
}  // namespace krnqb::com

extern "C" int wmain(int count, wchar_t** arguments) {
  if (count != 2) {
    std::fputs("usage: dump_type_library FILE\n", stderr);
    return 2;
  }
  try {
    krnqb::com::PrintLibrary(arguments[1]);
    return 0;
  } catch (const krnqb::Error& error) {
    std::fprintf(stderr, "dump_type_library: %s\n", error.what());
    return 1;
  }
}
