#pragma once

#include "krnqb/outside_world.h"

namespace krnqb {

/// The folder that contains the QuickBooks program.
struct QuickBooksFolder {
  std::string path;       ///< without a trailing separator
  std::string separator;  ///< between folder and file name, on the folder's platform
};

/// Returns the folder that `world` names, otherwise the folder of the program that is registered in the
/// registry. Throws Error 5 if there is neither.
QuickBooksFolder FindQuickBooksFolder(const OutsideWorld& world);

/// Returns the company files of that folder as the document described at `QBDataExchange::QBCompanies`, or an
/// empty element if the document cannot represent a path; each such path is reported to the observer. Throws
/// Error 5 if the folder is unknown and Error 76 if it cannot be read. The world's observer and files must
/// not be null.
XmlElement CompanyList(const OutsideWorld& world);

}  // namespace krnqb
