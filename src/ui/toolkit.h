#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "ui/dialog.h"
#include "ui/file_dialog.h"

namespace krnqb::ui {

/// Shows the dialogs on a screen; contains none of their rules. Texts and paths are UTF-8. Every operation
/// may throw Error.
class Toolkit {
 public:
  virtual ~Toolkit() = default;

  /// Shows the dialog; returns when it is no longer open. Rethrows what the dialog throws.
  virtual void ShowModal(Dialog& dialog) = 0;

  /// Returns whether windows can have a status line, and a Cancel button that works while an import runs:
  /// only then may a dialog have them.
  virtual bool FollowsTasks() const noexcept { return false; }

  /// Updates a visible dialog to its current state before returning. Discards what the user does meanwhile,
  /// except, if the toolkit follows tasks, in a dialog whose cancel button is enabled.
  virtual void ShowNow(const Dialog& dialog) = 0;

  /// Shows a message with an OK button; returns when it is closed.
  virtual void ShowMessage(std::string_view text) = 0;

  /// Asks for one existing file; returns its full path, or nothing if the user cancels.
  virtual std::optional<std::string> AskForFile(const FileDialogSettings& settings) = 0;
};

}  // namespace krnqb::ui
