#include "files/identity.h"

#include <fcntl.h>
#include <gtest/gtest.h>

#include "files/descriptor.h"
#include "temporary_folder.h"

namespace krnqb::files {
namespace {

using tests::TemporaryFolder;
using tests::WriteText;

namespace fs = std::filesystem;

struct Pair {
  const char* first;
  const char* second;
  bool same;
};

class Identities : public testing::TestWithParam<Pair> {
 protected:
  Identities() {
    fs::create_directory(folder / "real");
    fs::create_directory(folder / "other");
    fs::create_directory_symlink("real", folder / "linked");
    WriteText(folder / "real/a", "a");
    WriteText(folder / "real/b", "a");
    fs::create_hard_link(folder / "real/a", folder / "hard");
    fs::create_symlink("real/a", folder / "soft");
    fs::create_symlink("soft", folder / "softer");
    fs::create_symlink("real/new", folder / "dangling");
    fs::create_symlink(folder / "real/new", folder / "other/absolute");
    fs::create_symlink("../dangling", folder / "other/twice");
    fs::create_symlink("loop", folder / "loop");
  }

  const TemporaryFolder folder;
};

TEST_P(Identities, AreEqualForPathsToOneFile) {
  const auto first = IdentityOf(folder / GetParam().first);
  const auto second = IdentityOf(folder / GetParam().second);
  EXPECT_EQ(first && first == second, GetParam().same) << GetParam().first << ' ' << GetParam().second;
}

INSTANTIATE_TEST_SUITE_P(
    Paths, Identities,
    testing::Values(Pair{"real/a", "real/a", true}, Pair{"real/a", "other/../real/./a", true},
                    Pair{"real/a", "linked/a", true}, Pair{"real/a", "hard", true},
                    Pair{"real/a", "soft", true}, Pair{"hard", "softer", true},
                    Pair{"real/a", "real/b", false},
                    // Files that do not exist yet.
                    Pair{"real/new", "linked/new", true}, Pair{"real/new", "dangling", true},
                    Pair{"real/new", "other/absolute", true}, Pair{"real/new", "other/twice", true},
                    Pair{"real/new", "other/new", false}, Pair{"real/new", "real/newer", false},
                    Pair{"real/new", "real/a", false},
                    // Files that cannot be created.
                    Pair{"none/a", "none/a", false}, Pair{"loop", "real/a", false}));

TEST(FileIdentities, TreatDevicesAsDifferent) {
  EXPECT_FALSE(IdentityOf(fs::path("/dev/null")));
  const FileDescriptor null = FileDescriptor::Open("/dev/null", O_RDONLY);
  EXPECT_FALSE(IdentityOf(null.Number()));
}

TEST(FileIdentities, AreKnownOfOpenFiles) {
  const TemporaryFolder folder;
  WriteText(folder / "a", "a");
  const FileDescriptor opened = FileDescriptor::Open(folder / "a", O_RDONLY);
  EXPECT_TRUE(IdentityOf(opened.Number()));
  EXPECT_EQ(IdentityOf(opened.Number()), IdentityOf(folder / "a"));
  EXPECT_FALSE(IdentityOf(-1));
}

}  // namespace
}  // namespace krnqb::files
