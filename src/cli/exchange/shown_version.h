#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "krnqb/request_processor.h"

namespace krnqb::cli {

/// What is learned of QuickBooks only while an import runs.
struct SessionFacts {
  std::string companyPath;        ///< of the open company; empty until the session is open
  std::int16_t majorVersion = 0;  ///< that the component was shown: 1 or 2; 0 until it has asked
};

/// Returns processors that forward every call to those of `inner` and note what passes by in `facts`. The
/// component imports from transactions when it is shown major version 1, and from reports when it is shown 2.
/// These two versions are shown as they are. In place of any other, 2.0 is shown if the last answer about the
/// program lists qbXML 2.0, and 1.1 if it does not.
std::shared_ptr<RequestProcessorFactory> ProcessorsWithShownVersion(
    std::shared_ptr<RequestProcessorFactory> inner, std::shared_ptr<SessionFacts> facts);

/// Returns whether an answer about the program lists a qbXML version.
bool ListsVersion(const std::string& hostAnswer, const std::string& version);

/// Returns whether a request asks for the program and its versions.
bool AsksForHost(std::string_view request) noexcept;

}  // namespace krnqb::cli
