#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <cstdlib>
#include <random>

#include "company/crafted_files.h"
#include "company/testing.h"
#include "files/descriptor.h"
#include "sample_company/generator.h"

namespace krnqb::company {
namespace {

// A company in which every page is read: its figures come from all tables and indexes.
void GenerateSmallCompany(const std::filesystem::path& file, std::string_view processorVersion) {
  sample_company::GeneratorSettings settings;
  settings.accounts = 60;
  settings.items = 20;
  settings.customers = 5;
  settings.transactions = 150;
  settings.processorVersion = processorVersion;
  sample_company::GenerateCompany(file, settings);
}

// Inverts bits of a file in place.
class FileBits {
 public:
  explicit FileBits(const std::filesystem::path& file)
      : file_(files::FileDescriptor::Open(file, O_RDWR)), count_(std::filesystem::file_size(file) * 8) {}

  std::uint64_t Count() const noexcept { return count_; }

  void Flip(std::uint64_t bit) const {
    const auto place = static_cast<off_t>(bit / 8);
    unsigned char byte = 0;
    ASSERT_EQ(::pread(file_.Number(), &byte, 1, place), 1);
    byte = static_cast<unsigned char>(byte ^ (1U << (bit % 8)));
    ASSERT_EQ(::pwrite(file_.Number(), &byte, 1, place), 1);
  }

 private:
  files::FileDescriptor file_;
  std::uint64_t count_;
};

struct Reading {
  std::string figures;  // empty if refused
  std::string refusal;
};

Reading Read(const std::filesystem::path& file) {
  try {
    const CompanyFile company = CompanyFile::Open(file, FileAccess::ReadOnly);
    company.Info();
    return {testing::Figures(company), {}};
  } catch (const Error& error) {
    return {{}, error.Description()};
  }
}

// Half of the flips are made in each version. The everyday suite makes 300; KRNQB_FLIPS sets another number.
int FlipCount() {
  const char* const wanted =
      std::getenv("KRNQB_FLIPS");                   // NOLINT(concurrency-mt-unsafe): there is one thread
  if (wanted != nullptr) return std::atoi(wanted);  // NOLINT(cert-err34-c): 0 makes the test fail
  return std::getenv("KRNQB_NIGHTLY") == nullptr ? 300 : 5'000;  // NOLINT(concurrency-mt-unsafe)
}

TEST(FlippedBits, AreRefusedOrChangeNoFigure) {
  const int flips = FlipCount();
  ASSERT_GT(flips, 0);
  int refused = 0;
  int unchanged = 0;
  int wrong = 0;
  for (const std::string_view version : {"1.1", "2.0"}) {
    const tests::TemporaryFolder folder;
    const std::filesystem::path file = folder / "company.qbw";
    GenerateSmallCompany(file, version);
    const std::string figures = Read(file).figures;
    ASSERT_GT(figures.size(), 10'000U);
    const FileBits bits(file);
    std::mt19937_64 random(20'030'115);
    for (int flip = 0; flip < flips / 2; ++flip) {
      const std::uint64_t bit = random() % bits.Count();
      bits.Flip(bit);
      const Reading reading = Read(file);
      bits.Flip(bit);
      if (!reading.refusal.empty()) {
        ++refused;
      } else if (reading.figures == figures) {
        ++unchanged;
      } else {
        if (++wrong <= 10) ADD_FAILURE() << "version " << version << ", bit " << bit;
      }
    }
    ASSERT_EQ(Read(file).figures, figures);
  }
  EXPECT_EQ(wrong, 0);
  EXPECT_GT(refused, unchanged);
  fmt::print("{} flips: {} refused, {} without effect, {} wrong\n", refused + unchanged + wrong, refused,
             unchanged, wrong);
}

TEST(FlippedBits, AreReportedWithFileAndPage) {
  const tests::TemporaryFolder folder;
  const std::filesystem::path file = folder / "company.qbw";
  GenerateSmallCompany(file, "1.1");
  FileBits(file).Flip(std::uint64_t{5000} * 8);
  EXPECT_EQ(Read(file).refusal,
            fmt::format("The company file {0} is damaged: page 1 does not match its checksum; restore a copy "
                        "of the file (krnqb company check {0} lists all damage)",
                        file.string()));
}

}  // namespace
}  // namespace krnqb::company
