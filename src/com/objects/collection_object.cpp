#include "com/objects/collection_object.h"

#include <algorithm>

#include "com/objects/enumerator.h"
#include "com/values/text.h"
#include "krnqb/keyed_collection.h"

namespace krnqb::com {
namespace {

struct HeldValue {
  VariantValue value;
  VARIANT Give() const { return VariantValue::CopyOf(value.Get()).Detach(); }
};

using ValueEnumerator = Enumerator<IEnumVARIANT, VARIANT, HeldValue>;

bool IsGiven(const VARIANT& argument) noexcept {
  return !(argument.vt == VT_ERROR && argument.scode == DISP_E_PARAMNOTFOUND);
}

std::string FoldedKeyOf(const VARIANT& value) {
  const VariantValue copy = VariantValue::CopyOf(value);
  if (copy.Type() != VT_BSTR) throw Error(error_number::typeMismatch);
  return FoldedKey(Utf8(TextOf(copy.Get().bstrVal)));
}

}  // namespace

CollectionObject::CollectionObject(const Collection& source) : AutomationObject(L"KRN6_QB2002.Collection") {
  for (const Variant& item : source) {
    Entry& entry = entries_.emplace_back();
    Put(item, *entry.value.Receive());
  }
}

STDMETHODIMP CollectionObject::get_Count(long* result) noexcept {
  return Give(result, [&] { return static_cast<std::int32_t>(entries_.size()); });
}

STDMETHODIMP CollectionObject::get_Item(VARIANT Index, VARIANT* result) noexcept {
  return Give(result, [&] { return VariantValue::CopyOf(entries_[PositionOf(Index)].value.Get()); });
}

// Takes a snapshot: later additions and removals do not affect the enumeration.
STDMETHODIMP CollectionObject::_NewEnum(IUnknown** result) noexcept {
  return Give(result, [&] {
    auto values = std::make_shared<std::vector<HeldValue>>();
    for (const Entry& entry : entries_) values->push_back({VariantValue::CopyOf(entry.value.Get())});
    return MakeObject<ValueEnumerator>(std::move(values));
  });
}

STDMETHODIMP CollectionObject::Add(VARIANT Item, VARIANT Key, VARIANT Before, VARIANT After) noexcept {
  return Do([&] {
    Entry added{std::nullopt, VariantValue::CopyOf(Item)};
    if (IsGiven(Key)) added.key = FoldedKeyOf(Key);
    const bool isTaken = added.key && std::any_of(entries_.begin(), entries_.end(),
                                                  [&](const Entry& entry) { return entry.key == added.key; });
    if (isTaken) throw Error(error_number::keyAlreadyPresent);
    const auto place = static_cast<std::ptrdiff_t>(PlaceForNew(Before, After));
    entries_.insert(entries_.begin() + place, std::move(added));
  });
}

STDMETHODIMP CollectionObject::Remove(VARIANT Index) noexcept {
  return Do([&] {
    const auto place = entries_.begin() + static_cast<std::ptrdiff_t>(PositionOf(Index));
    // Releasing a value may call back into this object, so the list must be consistent first.
    const Entry removed = std::move(*place);
    entries_.erase(place);
  });
}

std::size_t CollectionObject::PlaceForNew(const VARIANT& before, const VARIANT& after) const {
  if (IsGiven(before) && IsGiven(after)) throw Error(error_number::invalidProcedureCall);
  if (IsGiven(before)) return PositionOf(before);
  if (IsGiven(after)) return PositionOf(after) + 1;
  return entries_.size();
}

std::size_t CollectionObject::PositionOf(const VARIANT& index) const {
  VariantValue copy = VariantValue::CopyOf(index);
  if (copy.Type() == VT_BSTR) {
    const std::string key = FoldedKeyOf(copy.Get());
    const auto found =
        std::find_if(entries_.begin(), entries_.end(), [&](const Entry& entry) { return entry.key == key; });
    if (found == entries_.end()) throw Error(error_number::invalidProcedureCall);
    return static_cast<std::size_t>(found - entries_.begin());
  }
  Check(VariantChangeType(&copy.Get(), &copy.Get(), 0, VT_I4));
  const long position = copy.Get().lVal;
  if (position < 1 || static_cast<std::size_t>(position) > entries_.size())
    throw Error(error_number::subscriptOutOfRange);
  return static_cast<std::size_t>(position) - 1;
}

ComPointer<IDispatch> MakeCollectionObject(const Collection& source) {
  return ComPointer<IDispatch>(MakeObject<CollectionObject>(source).get());
}

std::vector<VariantValue> ValuesOf(IDispatch& collection) {
  DISPPARAMS none{};
  VariantValue enumeration;
  EXCEPINFO exception{};
  const HRESULT result =
      collection.Invoke(DISPID_NEWENUM, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD | DISPATCH_PROPERTYGET,
                        &none, enumeration.Receive(), &exception, nullptr);
  if (FAILED(result)) throw ErrorOf(result, exception);
  const auto values = Query<IEnumVARIANT>(enumeration.IsObject() ? enumeration.Get().punkVal : nullptr);
  if (!values) throw Error(error_number::memberNotSupported);
  std::vector<VariantValue> listed;
  for (VariantValue value; values->Next(1, value.Receive(), nullptr) == S_OK;)
    listed.push_back(std::move(value));
  return listed;
}

}  // namespace krnqb::com
