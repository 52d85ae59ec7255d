#include "cli/import/expense_selection.h"

#include <fmt/format.h>

#include <algorithm>

#include "cli/console/failure.h"
#include "cli/console/nearest_names.h"
#include "cli/import/failure.h"
#include "krnqb/keyed_collection.h"

namespace krnqb::cli {
namespace {

constexpr std::string_view selectingFailed = "selecting expense accounts failed";
constexpr const char* selectedText = "True";
constexpr const char* noneSelected = "no-expense-selected";

std::string NameOf(const XmlElement& account) {
  const XmlElement name = account.Child("name");
  return name ? name.Text() : std::string();
}

// No two account names differ only in case, so the comparison is case-insensitive.
bool SameName(std::string_view typed, std::string_view name) {
  return FoldedKey(typed) == FoldedKey(name);
}

bool Contains(const std::vector<std::string>& names, std::string_view name) {
  return std::any_of(names.begin(), names.end(),
                     [&](const std::string& other) { return SameName(other, name); });
}

void CheckNames(const std::vector<std::string>& typed, const std::vector<std::string>& known) {
  std::vector<std::string> unknown;
  std::vector<std::string> nearest;
  for (const std::string& name : typed) {
    if (Contains(known, name)) continue;
    unknown.push_back(name);
    for (const std::string& near : NearestNames(name, known)) {
      if (!Contains(nearest, near)) nearest.push_back(near);
    }
  }
  if (unknown.empty()) return;
  throw CommandFailure(
      selectingFailed,
      fmt::format("the company has no top-level expense account {}", AlternativesText(unknown)),
      nearest.empty() ? std::string("krnqb accounts expense lists the company's accounts")
                      : fmt::format("did you mean {}?", AlternativesText(nearest)));
}

}  // namespace

std::optional<ImportWarning> SelectExpenses(QBDataExchange& exchange, const ImportCommand& options) {
  const XmlElement selection = exchange.SelectedExpenses();
  RequireNoError(exchange);
  if (!selection && options.acceptIncomplete && options.selectedExpenses.empty()) return std::nullopt;
  if (!selection) {
    throw CommandFailure(selectingFailed,
                         "the accounts or the plan's contribution margin table cannot be read",
                         "fix the cause and run the import again; nothing was written");
  }

  CheckNames(options.selectedExpenses, SelectionNames(selection, SelectionPart::All));
  for (XmlElement& account : selection.Children()) {
    if (options.selectAllExpenses || Contains(options.selectedExpenses, NameOf(account))) {
      account.SetAttribute("selected", selectedText);
    }
  }
  exchange.SelectedExpenses(selection);
  if (!SelectionNames(selection, SelectionPart::Selected).empty()) return std::nullopt;
  return ImportWarning{noneSelected,
                       "no expense account is selected: give --select-expense NAME or --select-all-expenses"};
}

std::optional<ImportWarning> ReadSelectedExpenses(QBDataExchange& exchange) {
  const XmlElement selection = exchange.SelectedExpenses();
  RequireNoError(exchange);
  if (!SelectionNames(selection, SelectionPart::Selected).empty()) return std::nullopt;
  return ImportWarning{noneSelected, "no expense account is in the plan, so the dialog will import none"};
}

std::vector<std::string> SelectionNames(const XmlElement& selection, SelectionPart part) {
  std::vector<std::string> names;
  for (const XmlElement& account : selection.Children()) {
    if (part == SelectionPart::All || account.Attribute("selected") == selectedText)
      names.push_back(NameOf(account));
  }
  return names;
}

}  // namespace krnqb::cli
