#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "ui/controls.h"

namespace krnqb::ui {

enum class ControlKind : std::uint8_t {
  Button,
  CheckBox,
  DropDownList,
  Label,
  Divider,  ///< two lines, see divider.h
  Picture,
  ProgressBar,
  Page  ///< contains the controls that name it as their page
};

struct ListEntry {
  std::string text;
  std::int16_t data = 0;
};

/// The current state of a control.
struct Control {
  std::string name;    ///< unique within the form
  int identifier = 0;  ///< for toolkits that number controls; unique within the form, see controls.h
  ControlKind kind = ControlKind::Label;
  std::string text;  ///< "&" precedes the access key
  std::string accessibleName;
  std::string page;  ///< the page that contains it; empty: the window itself
  int row = 0;       ///< from the top of its page or window; controls of the same row are side by side
  bool visible = true;
  bool enabled = true;
  bool checked = false;            ///< of a check box
  std::vector<ListEntry> entries;  ///< of a drop-down list
  int selected = -1;               ///< index into the entries; -1 if nothing is selected
  int percent = 0;                 ///< of a progress bar, 0 to 100
};

/// The current state of a window; controls are in tab order.
struct Form {
  std::string name;
  std::string caption;
  std::string defaultButton;  ///< what Enter presses; may be empty
  std::string cancelButton;   ///< what Escape and the window's close button press
  std::vector<Control> controls;

  /// Returns the control with this name; throws Error 5 if it does not exist.
  Control& At(std::string_view controlName);
  const Control& At(std::string_view controlName) const;
  bool Has(std::string_view controlName) const noexcept;
  /// Returns whether the user can use the control: it exists, is enabled, and both it and its page are
  /// visible.
  bool IsUsable(std::string_view controlName) const noexcept;
};

/// Creates a control whose accessible name is its caption.
Control MakeControl(ControlKind kind, const ControlId& id, std::string_view text = {});

/// Returns a caption without access-key marks and without a final colon.
std::string SpokenText(std::string_view caption);

}  // namespace krnqb::ui
