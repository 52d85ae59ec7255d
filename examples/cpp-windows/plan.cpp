#include "plan.h"

#include "automation_object.h"
#include "errors.h"

namespace {

using Arguments = std::vector<_variant_t>;

// A run-time error, here "Subscript out of range", is 0x800A0000 plus its number.
constexpr HRESULT subscriptOutOfRange = static_cast<HRESULT>(0x800A0009);

NamedObject NewDocument() {
  IDispatchPtr created;
  Check(created.CreateInstance(L"MSXML2.DOMDocument.6.0"));
  NamedObject document(created);
  document.Let(L"async", false);
  document.Let(L"preserveWhiteSpace", true);
  document.Call(L"setProperty", {L"SelectionLanguage", L"XPath"});
  return document;
}

NamedObject Select(const NamedObject& node, const _variant_t& path) {
  const IDispatchPtr found(node.Call(L"selectSingleNode", {path}));
  if (found == nullptr) throw _com_error(subscriptOutOfRange);
  return NamedObject(found);
}

void ReplaceIn(const NamedObject& table, const NamedObject& changed, const wchar_t* name) {
  const _variant_t copy = Select(changed, name).Call(L"cloneNode", {true});
  table.Call(L"replaceChild", {copy, Select(table, name).Object()});
}

}  // namespace

Plan::Plan() : document_(NewDocument()) {}

IDispatchPtr Plan::Object() {
  return AutomationObject::Make({
      {L"OpenPlan", [this](const Arguments& arguments) { return Open(arguments.at(0)); }},
      {L"Data", [this](const Arguments&) { return _variant_t(Tables().GetInterfacePtr()); }},
  });
}

void Plan::Save() const {
  document_.Call(L"save", {file_});
}

_variant_t Plan::Open(const _variant_t& file) {
  file_ = file;
  return document_.Call(L"load", {file});
}

IDispatchPtr Plan::Tables() {
  return AutomationObject::Make({
      {L"tables",
       [this](const Arguments& arguments) { return _variant_t(Table(arguments.at(0)).GetInterfacePtr()); }},
      {L"Deserialize",
       [this](const Arguments& arguments) {
         Take(arguments.at(0));
         return _variant_t();
       }},
  });
}

IDispatchPtr Plan::Table(const _variant_t& id) {
  return AutomationObject::Make(
      {{L"Serialize", [table = Find(id)](const Arguments&) { return table.Get(L"xml"); }}});
}

// The changed tables come in one document.
void Plan::Take(const _variant_t& changedTables) {
  const NamedObject changed = NewDocument();
  if (!static_cast<bool>(changed.Call(L"loadXML", {changedTables}))) return;
  const NamedObject tables{IDispatchPtr(changed.Call(L"selectNodes", {L"//tableitem"}))};
  const long count = tables.Get(L"length");
  for (long index = 0; index < count; ++index) {
    const NamedObject table{IDispatchPtr(tables.Call(L"item", {index}))};
    const NamedObject own = Find(table.Call(L"getAttribute", {L"id"}));
    ReplaceIn(own, table, L"lastsavedid");
    ReplaceIn(own, table, L"tableblocks");
  }
}

NamedObject Plan::Find(const _variant_t& id) const {
  return Select(document_, L"/plan/tables/tableitem[@id='" + _bstr_t(id) + L"']");
}
