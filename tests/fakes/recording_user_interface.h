#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "krnqb/outside_world.h"

namespace krnqb::fakes {

/// Keeps the messages and dialogs that were shown, and returns `chosenPath` from every dialog.
class RecordingUserInterface : public UserInterface {
 public:
  void ShowMessage(std::string_view text) override { messages.emplace_back(text); }

  Variant ShowDialog(QBDataExchange& component, QBKRN_Dialogs dialog) override {
    dialogs.push_back(dialog);
    caller = &component;
    return Variant(chosenPath);
  }

  std::vector<std::string> messages;
  std::vector<QBKRN_Dialogs> dialogs;
  QBDataExchange* caller = nullptr;
  std::string chosenPath = "C:\\Plans\\Nursery.kpf";
};

}  // namespace krnqb::fakes
