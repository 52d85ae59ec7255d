#include "plan_file/history/digest.h"

#include <gtest/gtest.h>

namespace krnqb::plan_file {
namespace {

TEST(DigestOf, IsTheSha256) {
  EXPECT_EQ(DigestOf(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
  EXPECT_EQ(DigestOf("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
  EXPECT_EQ(DigestOf(std::string(1'000'000, 'a')),
            "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
}

TEST(IsDigest, AcceptsOnly64LowerCaseHexadecimalDigits) {
  EXPECT_TRUE(IsDigest(DigestOf("abc")));
  EXPECT_FALSE(IsDigest(""));
  EXPECT_FALSE(IsDigest(std::string(63, 'a')));
  EXPECT_FALSE(IsDigest(std::string(65, 'a')));
  EXPECT_FALSE(IsDigest(std::string(64, 'A')));
  EXPECT_FALSE(IsDigest(std::string(64, 'g')));
}

}  // namespace
}  // namespace krnqb::plan_file
