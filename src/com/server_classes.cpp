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
    ServerClass{ExchangeClass(), Create<ExchangeObject, _QBDataExchange>},
    ServerClass{SubtotalsClass(), Create<SubtotalsObject, _cSubtotals>},
};

}  // namespace

std::span<const ServerClass> ServerClasses() noexcept {
  return classes;
}

}  // namespace krnqb::com
