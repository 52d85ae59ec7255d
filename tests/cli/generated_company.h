#pragma once

#include <cstdint>
#include <string>

#include "sample_company/generator.h"

namespace krnqb::cli::tests {

/// Generates a small company of processor version 2.0; every seed gives another one. `most` is about how many
/// transactions it has at most.
inline void GenerateSmallCompany(const std::string& file, std::uint64_t seed, std::int64_t most) {
  sample_company::GeneratorSettings settings;
  settings.accounts = 43 + static_cast<std::int64_t>(seed % 50);
  settings.items = 16 + static_cast<std::int64_t>(seed % 20);
  settings.customers = 3 + static_cast<std::int64_t>(seed % 7);
  settings.transactions = 60 + static_cast<std::int64_t>(seed % 5) * (most - 60) / 4;
  settings.seed = seed;
  settings.processorVersion = "2.0";
  sample_company::GenerateCompany(file, settings);
}

/// Returns the sample plan that a seed's company is imported into: one of the three products.
inline const char* PlanOfSeed(std::uint64_t seed) {
  if (seed % 3 == 0) return "cor.kpf";
  return seed % 3 == 1 ? "ald.kpf" : "bri.kpf";
}

}  // namespace krnqb::cli::tests
