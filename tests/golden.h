#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>

namespace krnqb::tests {

/// Compares a text with a golden file, byte for byte. If KRNQB_REWRITE_GOLDENS is set
/// (script/rewrite-goldens), writes the file instead and fails the test, so that a rewriting run cannot be
/// mistaken for a passing one.
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
