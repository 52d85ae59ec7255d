#pragma once

#include <optional>

#include "ui/dialog.h"
#include "ui/system_information.h"
#include "ui/toolkit.h"

namespace krnqb::ui {

/// The About box as it is designed, before title and version are known.
Form DesignedAboutForm();

/// The About box (frmAbout).
class AboutDialog final : public Dialog {
 public:
  /// With the application's title and version. Where there is no system to ask, the button that starts its
  /// information tool is left out. The toolkit outlives the dialog.
  AboutDialog(Toolkit& toolkit, std::optional<SystemInformation> system);

 private:
  void Pressed(std::string_view button) override;

  Toolkit& toolkit_;
  std::optional<SystemInformation> system_;
};

}  // namespace krnqb::ui
