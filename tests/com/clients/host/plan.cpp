#include "host/plan.h"

#include "test_processor/texts.h"

namespace krnqb::testing {
namespace {

using State = std::shared_ptr<PlanState>;

constexpr HRESULT subscriptOutOfRange = static_cast<HRESULT>(0x800A0009);

const VARIANT* Followed(const VARIANT* argument) {
  while (argument->vt == (VT_BYREF | VT_VARIANT)) argument = argument->pvarVal;
  return argument;
}

std::wstring TextIn(const VARIANT* argument) {
  const VARIANT* value = Followed(argument);
  const BSTR text = value->vt == VT_BSTR                ? value->bstrVal
                    : value->vt == (VT_BYREF | VT_BSTR) ? *value->pbstrVal
                                                        : nullptr;
  return text == nullptr ? std::wstring() : std::wstring(text, SysStringLen(text));
}

// A host may modify a text passed by reference; this must have no effect.
void LeaveText(VARIANT* argument, const wchar_t* text) {
  if (argument->vt == (VT_BYREF | VT_VARIANT)) {
    VariantClear(argument->pvarVal);
    argument->pvarVal->vt = VT_BSTR;
    argument->pvarVal->bstrVal = SysAllocString(text);
  } else if (argument->vt == (VT_BYREF | VT_BSTR)) {
    SysReAllocString(argument->pbstrVal, text);
  }
}

NamedObject::Function Member(const State& state, const std::string& name, NamedObject::Function body) {
  return [state, name, body = std::move(body)](const HostCall& call) -> HRESULT {
    state->calls.push_back(name);
    if (state->before) {
      if (const HRESULT refused = state->before(name, call); FAILED(refused)) return refused;
    }
    const auto begun = std::chrono::steady_clock::now();
    const HRESULT result = body(call);
    state->time += std::chrono::steady_clock::now() - begun;
    return result;
  };
}

Held<NamedObject> NewTable(const State& state, const std::string& id, WORD flags) {
  auto table = NamedObject::Make();
  table->Add(L"Serialize", flags, Member(state, "Serialize", [state, id](const HostCall& call) {
               return GiveText(call, Utf16(state->tables.Table(id).Xml()));
             }));
  return table;
}

HRESULT GiveTable(const State& state, const HostCall& call, WORD flags) {
  if (call.arguments.size() != 1) return DISP_E_BADPARAMCOUNT;
  const std::string id = Utf8(std::wstring_view(TextIn(call.arguments[0])));
  if (!state->tables.Table(id)) return subscriptOutOfRange;
  return GiveObject(call, NewTable(state, id, flags).Get());
}

void AddTables(const State& state, NamedObject& data, MemberKind kind) {
  const WORD flags = kind == MemberKind::Properties ? DISPATCH_PROPERTYGET : DISPATCH_METHOD;
  const auto give =
      Member(state, "tables", [state, flags](const HostCall& call) { return GiveTable(state, call, flags); });
  if (kind != MemberKind::Collection) {
    data.Add(L"tables", flags, give);
    return;
  }
  // A collection object whose default member takes the id.
  auto collection = NamedObject::Make();
  collection->Add(L"", DISPATCH_PROPERTYGET | DISPATCH_METHOD, give);
  data.Add(L"tables", DISPATCH_PROPERTYGET, [collection](const HostCall& call) -> HRESULT {
    return call.arguments.empty() ? GiveObject(call, collection.Get()) : DISP_E_BADPARAMCOUNT;
  });
}

HRESULT TakeTables(const State& state, const HostCall& call) {
  if (call.arguments.size() != 1) return DISP_E_BADPARAMCOUNT;
  state->textTypes.push_back(call.arguments[0]->vt);
  const HRESULT taken = state->tables.Take(Utf8(std::wstring_view(TextIn(call.arguments[0]))));
  LeaveText(call.arguments[0], L"left by the host");
  return FAILED(taken) ? taken : GiveText(call, L"a result that nobody reads");
}

}  // namespace

Held<IDispatch> NewHostPlan(const State& state, MemberKind kind) {
  auto data = NamedObject::Make();
  AddTables(state, *data.Get(), kind);
  data->Add(L"Deserialize", DISPATCH_METHOD,
            Member(state, "Deserialize", [state](const HostCall& call) { return TakeTables(state, call); }));

  auto plan = NamedObject::Make();
  plan->Add(L"Data", kind == MemberKind::Methods ? DISPATCH_METHOD : DISPATCH_PROPERTYGET,
            Member(state, "Data", [data](const HostCall& call) { return GiveObject(call, data.Get()); }));
  plan->Add(L"OpenPlan", DISPATCH_METHOD, Member(state, "OpenPlan", [state](const HostCall& call) {
              state->openedPlan = TextIn(call.arguments.at(0));
              if (call.result != nullptr) {
                call.result->vt = VT_BOOL;
                call.result->boolVal = state->openedPlan.empty() ? VARIANT_FALSE : VARIANT_TRUE;
              }
              return S_OK;
            }));
  return plan.As<IDispatch>();
}

}  // namespace krnqb::testing
