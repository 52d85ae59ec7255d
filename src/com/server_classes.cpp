#include "com/server_classes.h"

#include <array>

#include "com/exchange_object.h"
#include "com/subtotals_object.h"

namespace krnqb::com {
namespace {

template <typename Object, typename Interface>
ComPointer<IUnknown> Create() {
  const ComPointer<Object> made = MakeObject<Object>();
  return ComPointer<IUnknown>(static_cast<Interface*>(made.get()));
}

const std::array classes{
    ServerClass{__uuidof(::QBDataExchange), program_name::exchange, L"KRN6_QB2002.QBDataExchange",
                Create<ExchangeObject, _QBDataExchange>},
    ServerClass{__uuidof(::cSubtotals), program_name::subtotals, L"KRN6_QB2002.cSubtotals",
                Create<SubtotalsObject, _cSubtotals>},
};

}  // namespace

std::span<const ServerClass> ServerClasses() noexcept {
  return classes;
}

}  // namespace krnqb::com
