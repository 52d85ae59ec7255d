#include "krnqb/subtotals.h"

#include <cmath>

#include "krnqb/error.h"

namespace krnqb {
namespace {

std::size_t SlotOf(std::int16_t index) {
  if (index < 1 || index > cSubtotals::slotCount) throw Error(error_number::subscriptOutOfRange);
  return static_cast<std::size_t>(index - 1);
}

}  // namespace

double cSubtotals::SubTotal(std::int16_t Index) const {
  return slots_[SlotOf(Index)];
}

void cSubtotals::SubTotal(std::int16_t Index, double amount) {
  slots_[SlotOf(Index)] = amount;
}

void cSubtotals::AddToSubTotal(std::int16_t Index, double amount) {
  double& slot = slots_[SlotOf(Index)];
  const double sum = slot + amount;
  if (!std::isfinite(sum)) throw Error(error_number::overflow);
  slot = sum;
}

double cSubtotals::Total() const noexcept {
  double total = 0;
  for (const double slot : slots_) total += slot;
  return std::isfinite(total) ? total : 0;
}

}  // namespace krnqb
