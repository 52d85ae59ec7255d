#include "qbxml/processor_creation.h"

#include <gtest/gtest.h>

namespace krnqb {
namespace {

std::int32_t Result(std::uint32_t bits) {
  return static_cast<std::int32_t>(bits);
}

TEST(CreationError, IsError429ForAMissingClassOrProgram) {
  for (const std::uint32_t bits : {0x80040154U, 0x80040111U, 0x80040155U, 0x8007007EU, 0x80070002U}) {
    const Error error = CreationError(Error(Result(bits), "the system's text"), Result(bits));
    EXPECT_EQ(error.Number(), 429) << bits;
    EXPECT_EQ(error.Description(), "ActiveX component can't create object") << bits;
  }
}

TEST(CreationError, KeepsNumberAndDescriptionOfAnyOtherFailure) {
  for (const std::uint32_t bits : {0x80080005U, 0x80070005U, 0x80004005U, 0x80040153U, 0x80070003U}) {
    const Error error = CreationError(Error(Result(bits), "the system's text"), Result(bits));
    EXPECT_EQ(error.Number(), Result(bits));
    EXPECT_EQ(error.Description(), "the system's text");
  }
}

}  // namespace
}  // namespace krnqb
