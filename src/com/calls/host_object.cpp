#include "com/calls/host_object.h"

#include "com/calls/named_calls.h"
#include "com/values/error_mapping.h"
#include "com/values/text.h"

namespace krnqb::com {
namespace {

class HostTable final : public PlanTable {
 public:
  explicit HostTable(NamedCalls table) : table_(std::move(table)) {}

  std::string Serialize() override {
    VariantValue text = table_.Call(L"Serialize", {});
    Check(VariantChangeType(&text.Get(), &text.Get(), VARIANT_ALPHABOOL, VT_BSTR));
    return Utf8(TextOf(text.Get().bstrVal));
  }

 private:
  NamedCalls table_;
};

class HostData final : public PlanData {
 public:
  explicit HostData(NamedCalls data) : data_(std::move(data)) {}

  std::shared_ptr<PlanTable> tables(std::string_view id) override {
    const VariantValue identifier = VariantValue::OfText(id);
    return std::make_shared<HostTable>(NamedCalls(RequiredObject(data_.Get(L"tables", identifier.Get()))));
  }

  void Deserialize(std::string& document) override { data_.CallWithText(L"Deserialize", document); }

 private:
  NamedCalls data_;
};

}  // namespace

bool HostObject::OpenPlan(std::string_view planFile) {
  const VariantValue path = VariantValue::OfText(planFile);
  VariantValue opened = NamedCalls(RequiredObject(Value())).Call(L"OpenPlan", {&path.Get(), 1});
  Check(VariantChangeType(&opened.Get(), &opened.Get(), 0, VT_BOOL));
  return opened.Get().boolVal != VARIANT_FALSE;
}

std::shared_ptr<PlanData> HostObject::Data() {
  const VariantValue data = NamedCalls(RequiredObject(Value())).Get(L"Data");
  return std::make_shared<HostData>(NamedCalls(RequiredObject(data)));
}

VariantValue HostObject::Value() const {
  if (ComPointer<IDispatch> automation = Query<IDispatch>(object_.get()))
    return VariantValue::OfObject(std::move(automation));
  VariantValue value;
  value.Get().vt = VT_UNKNOWN;
  value.Get().punkVal = ComPointer<IUnknown>(object_).Detach();
  return value;
}

}  // namespace krnqb::com
