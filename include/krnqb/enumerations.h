#pragma once

#include <cstdint>

namespace krnqb {

// Enumerations of the automation interface: 32-bit and unscoped. A host may store any number in a property of
// these types, including values that are not named here.

/// The edition of the planning program that owns the plan.
enum QBKRNproduct : std::int32_t {
  QBKRN_ALD = 1,  ///< imports all expense accounts; past performance by years
  QBKRN_BRI = 2,  ///< imports the selected expense accounts; no past performance
  QBKRN_COR = 3   ///< imports all expense accounts; past performance by years and months
};

/// The options of `KRNSerialize`, which are ignored.
enum QBKRN_SerializeOptions : std::int32_t {
  qbkrnsDefault = 0  ///< the only option
};

/// The options of `KRNDeserialize` and `QbSerialize`, which are ignored.
enum QBKRN_DeserializeOptions : std::int32_t {
  qbkrndDefault = 0  ///< the only option
};

/// The dialogs that `ShowDialog` can show.
enum QBKRN_Dialogs : std::int32_t {
  dlg_KRNtoQB = 1,          ///< the options of an export
  dlg_QBtoKRN = 2,          ///< the options of an import, and the import itself
  dlg_SelectQBcompany = 3,  ///< asks for a company file
  dlg_SelectKRNplan = 4     ///< asks for a plan file
};

/// The monthly amounts that an import writes.
enum QBKRN_BalancesImport : std::int32_t {
  BalImport_None = 0,     ///< none: accounts become rows without amounts
  BalImport_Planned = 1,  ///< growth formulas in the planned tables
  BalImport_Actual = 2,   ///< amounts in the actual tables
  BalImport_All = 3       ///< both
};

/// The page that the options dialog shows.
enum OptionsQBKRNEnum : std::int32_t {
  OptionsKRNtoQB = 1,  ///< exporting
  OptionsQBtoKRN = 2   ///< importing
};

}  // namespace krnqb
