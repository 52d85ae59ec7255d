#pragma once

#include <string_view>

#include "ui/form.h"

namespace krnqb::ui {

/// One window while it is shown: what it holds, and what becomes of what a person does in it. A toolkit shows
/// `Shown`, passes on what a person does, shows `Shown` again, and takes the window away when it is no longer
/// open. What a person cannot do, on a control that is not usable or in a window that is closed, has no
/// effect.
class Dialog {
 public:
  virtual ~Dialog() = default;
  Dialog(const Dialog&) = delete;
  Dialog& operator=(const Dialog&) = delete;

  const Form& Shown() const noexcept { return form; }
  bool IsOpen() const noexcept { return open_; }

  void Press(std::string_view button);
  void Check(std::string_view checkBox, bool checked);
  /// Selects an entry of a drop-down list by its index; one that is not there has no effect.
  void Choose(std::string_view list, int index);
  /// Escape, or the window's own close button: presses the form's cancel button.
  void Dismiss() { Press(form.cancelButton); }

 protected:
  Dialog() = default;

  virtual void Pressed(std::string_view button) = 0;
  /// A check box has changed; its control says so already.
  virtual void Clicked(std::string_view /*checkBox*/) {}

  void Unload() noexcept { open_ = false; }

  Form form;

 private:
  bool open_ = true;
};

}  // namespace krnqb::ui
