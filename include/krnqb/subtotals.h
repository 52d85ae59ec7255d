#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "krnqb/keyed_collection.h"
#include "krnqb/variant.h"

namespace krnqb {

/// The amounts of one account, or of one account type in past performance: 14 doubles, initially 0. Slots 1
/// to 12 are the months of the import period in order; slots 13 and 14 are additional and included in
/// `Total`. In past performance the slots are its 14 periods. Amounts are not rounded and have the sign that
/// they have in QuickBooks.
class cSubtotals : public Object {
 public:
  static constexpr std::int16_t slotCount = 14;   ///< the number of slots
  static constexpr std::int16_t monthCount = 12;  ///< the number of slots that are months

  cSubtotals() = default;
  /// Creates a record of zeros with a description.
  explicit cSubtotals(std::string_view descriptionText) : description_(descriptionText) {}

  /// The account's name, which is also its key in the collection.
  const std::string& Description() const noexcept { return description_; }
  void Description(std::string_view text) { description_ = text; }

  /// Returns or replaces the amount in slot `Index`, 1 to 14; throws Error 9 if the index is out of range.
  double SubTotal(std::int16_t Index) const;
  void SubTotal(std::int16_t Index, double amount);

  /// Adds to slot `Index`, 1 to 14. Throws Error 9 if the index is out of range, and Error 6, leaving the
  /// slot unchanged, if the sum exceeds the range of a double.
  void AddToSubTotal(std::int16_t Index, double amount);

  /// Returns the sum of slots 1 to 14, added in order, or 0 if the sum exceeds the range of a double or is
  /// not a number.
  double Total() const noexcept;

 private:
  std::string description_;
  std::array<double, slotCount> slots_{};
};

/// Subtotals by name, in the order in which the names were added.
using SubtotalCollection = KeyedCollection<cSubtotals>;

}  // namespace krnqb
