#pragma once

namespace krnqb::testing {

// The numbers by which programs outside identify the controls.
inline constexpr int importButton = 1;
inline constexpr int cancelButton = 2;
inline constexpr int helpButton = 1003;
inline constexpr int importPage = 1010;
inline constexpr int incomeBox = 1011;
inline constexpr int expenseBox = 1012;
inline constexpr int divider = 1013;
inline constexpr int balancesLabel = 1014;
inline constexpr int balances = 1015;
inline constexpr int exportPage = 1020;
inline constexpr int firstExportBox = 1021;
inline constexpr int lastExportBox = 1024;
inline constexpr int progressBar = 1030;
inline constexpr int progressText = 1031;
inline constexpr int aboutIcon = 1101;
inline constexpr int aboutTitle = 1102;
inline constexpr int aboutVersion = 1103;
inline constexpr int aboutDescription = 1104;
inline constexpr int aboutDisclaimer = 1105;
inline constexpr int aboutOk = 2;
inline constexpr int aboutSystemInformation = 1107;

}  // namespace krnqb::testing
