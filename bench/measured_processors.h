#pragma once

#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "bench/stopwatch.h"
#include "krnqb/request_processor.h"

namespace krnqb::bench {

/// The traffic through the processors.
struct Traffic {
  Elapsed insideProcessor;
  std::vector<std::string> requests;
  std::int64_t answerBytes = 0;
  std::int64_t largestAnswer = 0;
};

/// Forwards everything to the processors of another factory and counts it in `traffic`, which must outlive
/// them. If `months` is not empty, only those months (YYYY-MM) have transactions: queries for another month
/// are sent for the same month of a year without transactions.
std::shared_ptr<RequestProcessorFactory> MeasuredProcessors(std::shared_ptr<RequestProcessorFactory> inner,
                                                            std::set<std::string> months, Traffic& traffic);

}  // namespace krnqb::bench
