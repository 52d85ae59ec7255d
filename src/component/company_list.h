#pragma once

#include "krnqb/outside_world.h"

namespace krnqb {

/// Where the QuickBooks program lies.
struct QuickBooksFolder {
  std::string path;       ///< without a separator at its end
  std::string separator;  ///< between folder and file, as the folder's platform has it
};

/// The folder that the world names, else the one in which the registry finds the program. Error 5 when
/// neither tells a folder.
QuickBooksFolder FindQuickBooksFolder(const OutsideWorld& world);

/// The company files of that folder as the document that hosts read, see `QBDataExchange::QBCompanies`. None
/// when a path breaks the document; the observer, which is there, is told of each such path. Error 5 without
/// a folder, 76 when it cannot be read. The world has its files.
XmlElement CompanyList(const OutsideWorld& world);

}  // namespace krnqb
