#pragma once

#include <string_view>

namespace krnqb::ui::text {

// Every text of the dialogs, verbatim. "&" precedes the access key.

inline constexpr std::string_view applicationTitle = "KRN6_QB2002";

// The options dialog.
inline constexpr std::string_view importCaption = "Import From Quickbooks";
inline constexpr std::string_view exportCaption = "Export Into Quickbooks";
inline constexpr std::string_view importButton = "&Import";
inline constexpr std::string_view cancelButton = "&Cancel";
inline constexpr std::string_view helpButton = "&Help";

inline constexpr std::string_view includeIncomeAccounts = "Income Sales Accounts";
inline constexpr std::string_view includeExpenseAccounts = "Include Expense Accounts";
inline constexpr std::string_view accountBalances = "Import Account Balances:";
inline constexpr std::string_view noBalances = "None";
inline constexpr std::string_view plannedBalances = "Planned";
inline constexpr std::string_view actualBalances = "Actual";
inline constexpr std::string_view allBalances = "Both";

inline constexpr std::string_view exportIncomeSubAccounts = "Include Income Sub-Accounts";
inline constexpr std::string_view exportActualIncome =
    "Export Actual values for Income Accounts to QuickBooks budget";
inline constexpr std::string_view exportPlannedExpenses =
    "Export Planned values for Expense Accounts to QuickBooks budget";
inline constexpr std::string_view exportExpenseSubAccounts = "Include Expense Sub-Accounts";

// While the user's Cancel stops an import.
inline constexpr std::string_view stopping = "Cancelling the import; nothing will be written.";

// The About box: the texts as designed, and those that replace some of them when it loads.
inline constexpr std::string_view designedAboutCaption = "About MyApp";
inline constexpr std::string_view designedTitle = "KRN5_QB2002 Data Exchange component";
inline constexpr std::string_view designedVersion = "Version 1.0";
inline constexpr std::string_view aboutCaption = "About ";
inline constexpr std::string_view version = "Version ";
inline constexpr std::string_view description =
    "This component performs data exchabge between Inutuit's QuickBooks 2002 and Korrin Software's Korrin "
    "Planner Pro 2002.";
inline constexpr std::string_view okButton = "OK";
inline constexpr std::string_view systemInformationButton = "&System Info...";
inline constexpr std::string_view systemInformationUnavailable =
    "System Information Is Unavailable At This Time";

// The open-file dialogs. A filter is a description, a vertical bar and a pattern.
inline constexpr std::string_view selectCompany = "Select QuickBooks Company";
inline constexpr std::string_view companyExtension = "qbw";
inline constexpr std::string_view anyCompany = "*.qbw";
inline constexpr std::string_view companyFilter = "QuickBooks Company (*.qbw)|*.qbw";
inline constexpr std::string_view selectPlan = "Select Business Plan";
inline constexpr std::string_view planExtension = "kpf";
inline constexpr std::string_view anyPlan = "*.kpf";
inline constexpr std::string_view planFilter = "Business Plan (*.kpf)|*.kpf";

// Accessible names of controls without a caption.
inline constexpr std::string_view importPageSpoken = "Import options";
inline constexpr std::string_view exportPageSpoken = "Export options";
inline constexpr std::string_view dividerSpoken = "Separator";
inline constexpr std::string_view progressBarSpoken = "Import progress";
inline constexpr std::string_view progressTextSpoken = "What the import is doing";
inline constexpr std::string_view iconSpoken = "Icon";
inline constexpr std::string_view disclaimerSpoken = "Disclaimer";

}  // namespace krnqb::ui::text
