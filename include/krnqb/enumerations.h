#pragma once

#include <cstdint>

namespace krnqb {

// Enumerations of the automation interface: 32-bit and unscoped. A host may store any number in a property of
// these types, including values that are not named here.

/// The edition of the planning program that owns the plan.
enum QBKRNproduct : std::int32_t { QBKRN_ALD = 1, QBKRN_BRI = 2, QBKRN_COR = 3 };

enum QBKRN_SerializeOptions : std::int32_t { qbkrnsDefault = 0 };

enum QBKRN_DeserializeOptions : std::int32_t { qbkrndDefault = 0 };

/// The dialogs that `ShowDialog` can show.
enum QBKRN_Dialogs : std::int32_t {
  dlg_KRNtoQB = 1,
  dlg_QBtoKRN = 2,
  dlg_SelectQBcompany = 3,
  dlg_SelectKRNplan = 4
};

/// The monthly amounts that an import writes.
enum QBKRN_BalancesImport : std::int32_t {
  BalImport_None = 0,
  BalImport_Planned = 1,
  BalImport_Actual = 2,
  BalImport_All = 3
};

/// The page that the options dialog shows.
enum OptionsQBKRNEnum : std::int32_t { OptionsKRNtoQB = 1, OptionsQBtoKRN = 2 };

}  // namespace krnqb
