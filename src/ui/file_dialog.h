#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "krnqb/enumerations.h"

namespace krnqb::ui {

struct FileFilter {
  std::string description;
  std::string pattern;
};

/// What an open-file dialog is set up with.
struct FileDialogSettings {
  std::string title;
  std::string defaultExtension;  ///< for a name typed without one; no dot
  std::string initialFileName;
  std::vector<FileFilter> filters;
  int filterIndex = 1;  ///< which filter is chosen at first, counted from 1
};

/// The settings of `dlg_SelectQBcompany` and `dlg_SelectKRNplan`; nothing for other dialogs.
std::optional<FileDialogSettings> SettingsOf(QBKRN_Dialogs dialog);

/// The filters of a text "description|pattern|description|pattern...". A description without a pattern is
/// left out.
std::vector<FileFilter> ReadFilters(std::string_view text);

}  // namespace krnqb::ui
