#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "ui/toolkit.h"

namespace krnqb::fakes {

/// A toolkit without a screen: a test sets the user's actions and checks what was shown.
class ScriptedToolkit : public ui::Toolkit {
 public:
  using Person = std::function<void(ui::Dialog&)>;

  void ShowModal(ui::Dialog& dialog) override {
    shown.push_back(dialog.Shown());
    person(dialog);
    stillOpen = dialog.IsOpen();
  }

  bool FollowsTasks() const noexcept override { return followsTasks; }

  void ShowNow(const ui::Dialog& dialog) override {
    shownNow.push_back(dialog.Shown());
    if (meanwhile) meanwhile();
  }

  void ShowMessage(std::string_view text) override { messages.emplace_back(text); }

  std::optional<std::string> AskForFile(const ui::FileDialogSettings& settings) override {
    asked.push_back(settings);
    return chosenPath;
  }

  Person person = [](ui::Dialog& dialog) { dialog.Dismiss(); };
  bool followsTasks = false;
  std::function<void()> meanwhile;  // called by each `ShowNow`
  std::optional<std::string> chosenPath;

  std::vector<ui::Form> shown;     // each dialog at the time of `ShowModal`
  std::vector<ui::Form> shownNow;  // the dialog at the time of each `ShowNow`
  std::vector<ui::FileDialogSettings> asked;
  std::vector<std::string> messages;
  bool stillOpen = false;  // whether the last dialog was open after the user's actions
};

}  // namespace krnqb::fakes
