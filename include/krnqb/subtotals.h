#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "krnqb/keyed_collection.h"
#include "krnqb/variant.h"

namespace krnqb {

/// One account's (or one line's) amounts by month: 14 doubles that are 0 at the start. Slots 1 to 12 are the
/// twelve months of the import period in order; slots 13 and 14 are two more, which `Total` includes. Amounts
/// keep the sign that the accounting program gives them and are never rounded.
class cSubtotals : public Object {
 public:
  static constexpr std::int16_t slotCount = 14;
  static constexpr std::int16_t monthCount = 12;

  cSubtotals() = default;
  explicit cSubtotals(std::string_view descriptionText) : description_(descriptionText) {}

  /// The account's name, which is also its key in its collection.
  const std::string& Description() const noexcept { return description_; }
  void Description(std::string_view text) { description_ = text; }

  /// The amount in slot `Index`, 1 to 14; error 9 outside.
  double SubTotal(std::int16_t Index) const;
  void SubTotal(std::int16_t Index, double amount);

  /// Adds to slot `Index`, 1 to 14. Error 9 outside; error 6 when the sum leaves the range of a double, and
  /// the slot is unchanged then.
  void AddToSubTotal(std::int16_t Index, double amount);

  /// Slots 1 to 14 added in order; 0 when the sum leaves the range of a double or is not a number.
  double Total() const noexcept;

 private:
  std::string description_;
  std::array<double, slotCount> slots_{};
};

/// Subtotals by name, as one import accumulates them.
using SubtotalCollection = KeyedCollection<cSubtotals>;

}  // namespace krnqb
