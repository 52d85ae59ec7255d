#pragma once

#include <string_view>

#include "ui/form.h"

namespace krnqb::ui {

/// The state and behaviour of one window while it is shown. A toolkit displays `Shown`, passes on what the
/// user does, displays `Shown` again, and closes the window once it is no longer open. Actions on an unusable
/// control or in a closed window have no effect.
class Dialog {
 public:
  virtual ~Dialog() = default;
  Dialog(const Dialog&) = delete;
  Dialog& operator=(const Dialog&) = delete;

  const Form& Shown() const noexcept { return form; }
  bool IsOpen() const noexcept { return open_; }

  void Press(std::string_view button);
  void Check(std::string_view checkBox, bool checked);
  /// Selects an entry of a drop-down list; an invalid index has no effect.
  void Choose(std::string_view list, int index);
  /// Handles Escape and the window's close button: presses the form's cancel button.
  void Dismiss() { Press(form.cancelButton); }

 protected:
  Dialog() = default;

  virtual void Pressed(std::string_view button) = 0;
  /// Called after a check box has changed.
  virtual void Clicked(std::string_view /*checkBox*/) {}

  void Unload() noexcept { open_ = false; }

  Form form;

 private:
  bool open_ = true;
};

}  // namespace krnqb::ui
