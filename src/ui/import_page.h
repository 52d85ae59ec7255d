#pragma once

#include <cstdint>
#include <functional>

#include "ui/form.h"

namespace krnqb::ui {

/// The options dialog's page that selects what to import (OptionsQBtoKRN). Changes its controls in the
/// dialog's form, which must outlive it.
class ImportPage {
 public:
  /// Adds the page and its controls to the form. Both boxes start unchecked; the list of balances starts with
  /// "None" selected and is disabled.
  explicit ImportPage(Form& form);

  bool IncludeIncomeAccounts() const;
  bool IncludeExpenseAccounts() const;
  /// Returns the selected balances: 0 to 3, as in QBKRN_BalancesImport.
  std::int16_t BalancesImport() const;

  /// Does nothing.
  void ClearAll() const noexcept {}

  /// Handles a click on either box: enables the list of balances if any account type is included, and raises
  /// the page's event.
  void Clicked();

  /// The page's event: whether any account type is included.
  std::function<void(bool included)> onIncluded;

 private:
  Form& form_;
};

}  // namespace krnqb::ui
