#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>

namespace krnqb::tests {

/// Compares a text with a golden file, byte for byte. With KRNQB_REWRITE_GOLDENS set (script/rewrite-goldens)
/// the file is written instead and the test fails, so that no run that rewrites can pass for a run that
/// compares.
inline void ExpectGolden(const std::filesystem::path& file, std::string_view actual) {
  if (std::getenv("KRNQB_REWRITE_GOLDENS") != nullptr) {
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << actual;
    ADD_FAILURE() << "rewritten: " << file.filename();
    return;
  }
  std::ifstream input(file, std::ios::binary);
  ASSERT_TRUE(input) << "no golden file " << file << "; script/rewrite-goldens writes it";
  std::ostringstream expected;
  expected << input.rdbuf();
  EXPECT_EQ(actual, expected.str()) << file.filename();
}

}  // namespace krnqb::tests
