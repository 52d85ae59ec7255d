#include "ui/file_dialog.h"

#include "ui/texts.h"

namespace krnqb::ui {
namespace {

FileDialogSettings Settings(std::string_view title, std::string_view extension, std::string_view fileName,
                            std::string_view filter) {
  return {.title = std::string(title),
          .defaultExtension = std::string(extension),
          .initialFileName = std::string(fileName),
          .filters = ReadFilters(filter),
          .filterIndex = 1};
}

}  // namespace

std::optional<FileDialogSettings> SettingsOf(QBKRN_Dialogs dialog) {
  switch (dialog) {
    case dlg_SelectQBcompany:
      return Settings(text::selectCompany, text::companyExtension, text::anyCompany, text::companyFilter);
    case dlg_SelectKRNplan:
      return Settings(text::selectPlan, text::planExtension, text::anyPlan, text::planFilter);
    default:
      return std::nullopt;
  }
}

std::vector<FileFilter> ReadFilters(std::string_view text) {
  std::vector<FileFilter> filters;
  for (auto bar = text.find('|'); bar != std::string_view::npos; bar = text.find('|')) {
    const std::string_view description = text.substr(0, bar);
    text.remove_prefix(bar + 1);
    const std::string_view pattern = text.substr(0, text.find('|'));
    filters.push_back({std::string(description), std::string(pattern)});
    text.remove_prefix(pattern.size() == text.size() ? pattern.size() : pattern.size() + 1);
  }
  return filters;
}

}  // namespace krnqb::ui
