#pragma once

#include "ui/form.h"

namespace krnqb::ui {

/// The options dialog's page for the other direction (OptionsKRNtoQB): four check boxes that have no effect.
/// Changes its controls in the dialog's form, which must outlive it.
class ExportPage {
 public:
  explicit ExportPage(Form& form);

  /// Unchecks every box, from the first to the last.
  void ClearAll();

 private:
  Form& form_;
};

}  // namespace krnqb::ui
