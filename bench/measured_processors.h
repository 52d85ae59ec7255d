#pragma once

#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "bench/stopwatch.h"
#include "krnqb/request_processor.h"

namespace krnqb::bench {

/// What went through the processors.
struct Traffic {
  Elapsed insideProcessor;
  std::vector<std::string> requests;
  std::int64_t answerBytes = 0;
};

/// Passes everything on to the processors of another factory and counts it in `traffic`, which outlives them.
/// When `months` names any (as YYYY-MM), those are the only ones that have transactions: queries for another
/// month are asked for the same month of a year without any.
std::shared_ptr<RequestProcessorFactory> MeasuredProcessors(std::shared_ptr<RequestProcessorFactory> inner,
                                                            std::set<std::string> months, Traffic& traffic);

}  // namespace krnqb::bench
