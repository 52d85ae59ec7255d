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

/// The settings of an open-file dialog.
struct FileDialogSettings {
  std::string title;
  std::string defaultExtension;  ///< appended to a name typed without an extension; no dot
  std::string initialFileName;
  std::vector<FileFilter> filters;
  int filterIndex = 1;  ///< the initially selected filter, counted from 1
};

/// Returns the settings of `dlg_SelectQBcompany` or `dlg_SelectKRNplan`; nothing for other dialogs.
std::optional<FileDialogSettings> SettingsOf(QBKRN_Dialogs dialog);

/// Parses filters written as "description|pattern|description|pattern...". A description without a pattern is
/// dropped.
std::vector<FileFilter> ReadFilters(std::string_view text);

}  // namespace krnqb::ui
