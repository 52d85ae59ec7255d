#include "ui/about_dialog.h"

#include <utility>

#include "ui/application.h"
#include "ui/controls.h"
#include "ui/texts.h"

namespace krnqb::ui {

Form DesignedAboutForm() {
  Form form;
  form.name = aboutForm;
  form.caption = text::designedAboutCaption;
  form.defaultButton = control::okButton.name;
  form.cancelButton = control::okButton.name;
  int row = 0;
  const auto add = [&form, &row](ControlKind kind, const ControlId& id, std::string_view text) -> Control& {
    form.controls.push_back(MakeControl(kind, id, text));
    form.controls.back().row = row++;
    return form.controls.back();
  };
  add(ControlKind::Picture, control::icon, {}).accessibleName = text::iconSpoken;
  add(ControlKind::Label, control::title, text::designedTitle);
  add(ControlKind::Label, control::version, text::designedVersion);
  add(ControlKind::Label, control::description, text::description);
  add(ControlKind::Label, control::disclaimer, {}).accessibleName = text::disclaimerSpoken;
  add(ControlKind::Button, control::okButton, text::okButton);
  --row;
  add(ControlKind::Button, control::systemInformation, text::systemInformationButton);
  return form;
}

AboutDialog::AboutDialog(Toolkit& toolkit, std::optional<SystemInformation> system)
    : toolkit_(toolkit), system_(std::move(system)) {
  form = DesignedAboutForm();
  const std::string title(ApplicationTitle());
  form.caption = std::string(text::aboutCaption) + title;
  form.At(control::title.name).text = title;
  form.At(control::title.name).accessibleName = title;
  const std::string version = std::string(text::version) + std::string(ApplicationVersion());
  form.At(control::version.name).text = version;
  form.At(control::version.name).accessibleName = version;
  if (!system_) {
    std::erase_if(form.controls,
                  [](const Control& control) { return control.name == control::systemInformation.name; });
  }
}

void AboutDialog::Pressed(std::string_view button) {
  if (button == control::okButton.name) {
    Unload();
  } else if (system_ && !StartSysInfo(*system_)) {
    toolkit_.ShowMessage(text::systemInformationUnavailable);
  }
}

}  // namespace krnqb::ui
