#pragma once

#include <algorithm>
#include <vector>

#include "fakes/recording_observer.h"

namespace krnqb::fakes {

/// Returns the findings of one kind of warning that were reported, in order, each once.
inline std::vector<Finding> FindingsOf(const RecordingObserver& observer, WarningCode code) {
  std::vector<Finding> findings;
  for (const Notice& notice : observer.notices) {
    if (!notice.finding || notice.finding->code != code) continue;
    if (std::find(findings.begin(), findings.end(), *notice.finding) == findings.end())
      findings.push_back(*notice.finding);
  }
  return findings;
}

}  // namespace krnqb::fakes
