#pragma once

#include <istream>
#include <string>
#include <string_view>

#include "company/file.h"

namespace krnqb::cli {

/// Returns whether a document that begins with these bytes is the recording of an exchange rather than a
/// qbXML document.
bool IsRecording(std::string_view beginning) noexcept;

/// Loads the records in the answers of a recording, all of them or none. Passes over reports, which have no
/// records, and refusals. Throws Error as `CompanyFile::Load` does; the description has the number of the
/// answer.
company::LoadSummary LoadRecording(company::CompanyFile& company, const std::string& name,
                                   std::istream& recording, company::UnknownKinds unknownKinds);

}  // namespace krnqb::cli
