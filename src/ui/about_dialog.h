#pragma once

#include <optional>

#include "ui/dialog.h"
#include "ui/system_information.h"
#include "ui/toolkit.h"

namespace krnqb::ui {

/// Returns the About box as designed, before the title and the version are filled in.
Form DesignedAboutForm();

/// The About box (frmAbout).
class AboutDialog final : public Dialog {
 public:
  /// Shows the application's title and version. Without `system` the System Info button is left out. The
  /// toolkit must outlive the dialog.
  AboutDialog(Toolkit& toolkit, std::optional<SystemInformation> system);

 private:
  void Pressed(std::string_view button) override;

  Toolkit& toolkit_;
  std::optional<SystemInformation> system_;
};

}  // namespace krnqb::ui
