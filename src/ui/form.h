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
  Page  ///< holds the controls that name it as theirs
};

struct ListEntry {
  std::string text;
  std::int16_t data = 0;
};

/// A control as it is to be shown now.
struct Control {
  std::string name;    ///< unique in its form
  int identifier = 0;  ///< where controls have numbers: unique in its form, see controls.h
  ControlKind kind = ControlKind::Label;
  std::string text;  ///< "&" stands before the letter that works from the keyboard
  std::string accessibleName;
  std::string page;  ///< the page that it stands on; empty: the window itself
  int row = 0;       ///< on its page or window, from the top; controls of one row stand side by side
  bool visible = true;
  bool enabled = true;
  bool checked = false;            ///< of a check box
  std::vector<ListEntry> entries;  ///< of a drop-down list
  int selected = -1;               ///< index into the entries; -1 for none
  int percent = 0;                 ///< of a progress bar, 0 to 100
};

/// A window as it is to be shown now. The controls stand in tab order.
struct Form {
  std::string name;
  std::string caption;
  std::string defaultButton;  ///< what Enter presses; may be empty
  std::string cancelButton;   ///< what Escape and the window's own close button press
  std::vector<Control> controls;

  /// The control of that name; error 5 when there is none.
  Control& At(std::string_view controlName);
  const Control& At(std::string_view controlName) const;
  bool Has(std::string_view controlName) const noexcept;
  /// Whether a person can use the control: it is there, enabled, and visible with the page that it stands on.
  bool IsUsable(std::string_view controlName) const noexcept;
};

/// A control that is spoken as its caption reads.
Control MakeControl(ControlKind kind, const ControlId& id, std::string_view text = {});

/// A caption without the marks of its keyboard letter and without a colon at its end.
std::string SpokenText(std::string_view caption);

}  // namespace krnqb::ui
