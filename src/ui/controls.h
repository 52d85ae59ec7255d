#pragma once

#include <string_view>

namespace krnqb::ui {

/// A control's name and number; toolkits use one or the other to find it. Neither may ever change: programs
/// that automate the dialogs rely on them.
struct ControlId {
  std::string_view name;
  int number = 0;
};

namespace control {

// The options dialog, frmOptions. A member of a control array has its index in its name. Import and Cancel
// have the numbers that Windows assigns to Enter and Escape.
inline constexpr ControlId importButton{"cmdButton0", 1};
inline constexpr ControlId cancelButton{"cmdButton2", 2};
inline constexpr ControlId helpButton{"cmdButton3", 1003};
inline constexpr ControlId importPage{"OptionsQBtoKRN1", 1010};
inline constexpr ControlId includeIncomeAccounts{"chkIncludeIncomeAccounts", 1011};
inline constexpr ControlId includeExpenseAccounts{"chkIncludeExpenseAccounts", 1012};
inline constexpr ControlId divider{"Divider1", 1013};
inline constexpr ControlId balancesLabel{"Label1", 1014};
inline constexpr ControlId balances{"Combo1", 1015};
inline constexpr ControlId exportPage{"OptionsKRNtoQB1", 1020};
inline constexpr ControlId exportIncomeSubAccounts{"chkImport0", 1021};
inline constexpr ControlId exportActualIncome{"chkImport1", 1022};
inline constexpr ControlId exportPlannedExpenses{"chkImport2", 1023};
inline constexpr ControlId exportExpenseSubAccounts{"chkImport3", 1024};
inline constexpr ControlId progressBar{"progressBar", 1030};
inline constexpr ControlId progressText{"progressText", 1031};
inline constexpr ControlId statusLine{"statusLine", 1032};

// The About box, frmAbout. Both Enter and Escape press its one button.
inline constexpr ControlId icon{"picIcon", 1101};
inline constexpr ControlId title{"lblTitle", 1102};
inline constexpr ControlId version{"lblVersion", 1103};
inline constexpr ControlId description{"lblDescription", 1104};
inline constexpr ControlId disclaimer{"lblDisclaimer", 1105};
inline constexpr ControlId okButton{"cmdOK", 2};
inline constexpr ControlId systemInformation{"cmdSysInfo", 1107};

}  // namespace control

// The lines of a divider, for toolkits that draw each as a control.
inline constexpr std::string_view dividerTopLine = "LineTop";
inline constexpr std::string_view dividerBottomLine = "LineBottom";

inline constexpr std::string_view optionsForm = "frmOptions";
inline constexpr std::string_view aboutForm = "frmAbout";
inline constexpr std::string_view fileDialog = "CommonDialog1";

}  // namespace krnqb::ui
