#pragma once

#include <cstdint>
#include <functional>

#include "ui/form.h"

namespace krnqb::ui {

/// The page of the options dialog that says what to import (OptionsQBtoKRN). Works on its controls in the
/// dialog's form, which outlives it.
class ImportPage {
 public:
  /// Adds the page and its controls to the form. Both boxes are unchecked, and the balances, of which "None"
  /// is selected, cannot be chosen.
  explicit ImportPage(Form& form);

  bool IncludeIncomeAccounts() const;
  bool IncludeExpenseAccounts() const;
  /// The data of the selected balances: 0 to 3, as in QBKRN_BalancesImport.
  std::int16_t BalancesImport() const;

  /// Leaves everything as it is.
  void ClearAll() const noexcept {}

  /// One of the boxes was clicked: lets the balances be chosen exactly when some account type is included,
  /// and raises the page's event.
  void Clicked();

  /// The page's event: whether some account type is included now.
  std::function<void(bool included)> onIncluded;

 private:
  Form& form_;
};

}  // namespace krnqb::ui
