#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <random>

#include "ledger/file.h"
#include "ledger/listing.h"
#include "ledger/small_import.h"
#include "temporary_folder.h"
#include "thrown_error.h"

namespace krnqb::ledger {
namespace {

int FlipCount() {
  return std::getenv("KRNQB_NIGHTLY") == nullptr ? 300 : 5'000;  // NOLINT(concurrency-mt-unsafe)
}

TEST(DamagedLedger, IsRefusedOrHasTheRightFigures) {
  const tests::TemporaryFolder folder;
  testing::WriteSmallLedger(folder / "l.kql");
  const std::string bytes = tests::ReadText(folder / "l.kql");
  const std::string expected = testing::Listing(LedgerFile::Open(folder / "l.kql"));
  std::mt19937 random(7);  // NOLINT(cert-msc51-cpp): the same flips in every run
  int refused = 0;
  for (int flip = 0; flip < FlipCount(); ++flip) {
    const std::size_t bit = std::uniform_int_distribution<std::size_t>(0, bytes.size() * 8 - 1)(random);
    std::string damaged = bytes;
    damaged[bit / 8] = static_cast<char>(static_cast<unsigned char>(damaged[bit / 8]) ^ (1U << (bit % 8)));
    tests::WriteText(folder / "l.kql", damaged);
    std::string listing;
    const auto error =
        tests::ErrorOf([&] { listing = testing::Listing(LedgerFile::Open(folder / "l.kql")); });
    if (error) {
      ++refused;
    } else {
      EXPECT_EQ(listing, expected) << "bit " << bit;
    }
  }
  EXPECT_GT(refused, FlipCount() / 2);
}

TEST(DamagedLedger, SaysWhatToDo) {
  const tests::TemporaryFolder folder;
  testing::WriteSmallLedger(folder / "l.kql");
  std::string bytes = tests::ReadText(folder / "l.kql");
  bytes[16'384 + 9'000] ^= 1;
  tests::WriteText(folder / "l.kql", bytes);
  const std::string file = (folder / "l.kql").string();
  EXPECT_EQ(tests::ThrownError([&] { testing::Listing(LedgerFile::Open(folder / "l.kql")); }).Description(),
            "The ledger " + file +
                " is damaged: page 2 does not match its checksum; run the import again with --ledger " +
                file);
  tests::WriteText(folder / "l.kql", bytes.substr(0, 16'384));
  EXPECT_TRUE(tests::ErrorOf([&] { LedgerFile::Open(folder / "l.kql"); }));
}

}  // namespace
}  // namespace krnqb::ledger
