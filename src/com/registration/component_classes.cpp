#include "com/registration/component_classes.h"

#include <krn6_qb2002.h>

#include <array>

namespace krnqb::com {
namespace {

// Created on first use: other static objects are made of these.
const std::array<ComponentClass, 2>& Classes() noexcept {
  static const std::array classes{
      ComponentClass{__uuidof(::QBDataExchange), program_name::exchange, L"KRN6_QB2002.QBDataExchange"},
      ComponentClass{__uuidof(::cSubtotals), program_name::subtotals, L"KRN6_QB2002.cSubtotals"},
  };
  return classes;
}

}  // namespace

const ComponentClass& ExchangeClass() noexcept {
  return Classes()[0];
}

const ComponentClass& SubtotalsClass() noexcept {
  return Classes()[1];
}

std::span<const ComponentClass> ComponentClasses() noexcept {
  return Classes();
}

}  // namespace krnqb::com
