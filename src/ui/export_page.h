#pragma once

#include "ui/form.h"

namespace krnqb::ui {

/// The page of the options dialog for the other direction (OptionsKRNtoQB): four boxes that nothing reads.
/// Works on its controls in the dialog's form, which outlives it.
class ExportPage {
 public:
  explicit ExportPage(Form& form);

  /// Unchecks every box, from the first to the last.
  void ClearAll();

 private:
  Form& form_;
};

}  // namespace krnqb::ui
