#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "ui/dialog.h"
#include "ui/file_dialog.h"

namespace krnqb::ui {

/// What shows the dialogs on a screen: it holds no rule of theirs. Texts and paths are UTF-8. Every operation
/// may throw Error.
class Toolkit {
 public:
  virtual ~Toolkit() = default;

  /// Shows the dialog and returns when it is no longer open. What the dialog throws comes out of it.
  virtual void ShowModal(Dialog& dialog) = 0;

  /// Shows what a dialog that is being shown holds now, before it returns. What a person does meanwhile is
  /// lost.
  virtual void ShowNow(const Dialog& dialog) = 0;

  /// A message with an OK button; returns when it has been closed.
  virtual void ShowMessage(std::string_view text) = 0;

  /// Asks for one file that is there, and gives its full path; nothing when a person cancels.
  virtual std::optional<std::string> AskForFile(const FileDialogSettings& settings) = 0;
};

}  // namespace krnqb::ui
