#include <gtest/gtest.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

#include "files/descriptor.h"
#include "files/step_operations.h"
#include "plan_file/file.h"
#include "plan_file/fixture.h"

namespace krnqb::plan_file {
namespace {

using files::Moment;
using files::Step;
using files::StepOperations;

namespace fs = std::filesystem;

class PlanSave : public testing::Test {
 protected:
  PlanSave() : file(folder / "garden.kpf") { WriteText(file, SmallPlanText()); }

  static mode_t ModeOf(const fs::path& path) {
    struct stat status {};
    EXPECT_EQ(::stat(path.c_str(), &status), 0) << path;
    return status.st_mode & 07777;
  }

  std::vector<std::string> NamesInFolder() {
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder.Path())) {
      names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
  }

  TemporaryFolder folder;
  fs::path file;
};

TEST_F(PlanSave, OfAnUnchangedPlanNormalizesOnlyAttributeQuotes) {
  PlanFile::Open(file)->Save();
  std::string expected = SmallPlanText();
  for (char& character : expected) {
    if (character == '\'') character = '"';
  }
  EXPECT_EQ(ReadText(file), expected);
}

TEST_F(PlanSave, ChangesNothingBeforehand) {
  const auto plan = PlanFile::Open(file);
  MarkVersion(*plan, 1);
  EXPECT_EQ(ReadText(file), SmallPlanText());
  EXPECT_EQ(NamesInFolder(), (std::vector<std::string>{"garden.kpf"}));
}

TEST_F(PlanSave, WritesTheLoadedTablesAndKeepsThePreviousVersionAsBak) {
  const auto plan = PlanFile::Open(file);
  MarkVersion(*plan, 1);
  EXPECT_EQ(plan->Save(), folder / "garden.kpf.bak");
  EXPECT_FALSE(plan->Changed());
  EXPECT_EQ(WholeVersion(file), 1);
  EXPECT_EQ(ReadText(folder / "garden.kpf.bak"), SmallPlanText());
  EXPECT_EQ(NamesInFolder(), (std::vector<std::string>{"garden.kpf", "garden.kpf.bak"}));
}

TEST_F(PlanSave, KeepsTheHostsOtherContent) {
  const auto plan = PlanFile::Open(file);
  MarkVersion(*plan, 1);
  plan->Save();
  const std::string text = ReadText(file);
  for (const char* kept :
       {"<!-- Garden plan -->\n<plan start=\"2003-04\" product=\"ald\">", "<!-- planned -->",
        "<tableitem title=\"Expenses &amp; more\" id=", "<notes>keep me</notes>",
        "<block startrow=\"5\" id=\"db_income_range_cat3\">\n          <row>", "<![CDATA[R&D]]>",
        "</row><!-- closing -->\n        </block>"}) {
    EXPECT_NE(text.find(kept), std::string::npos) << kept << "\n" << text;
  }
}

TEST_F(PlanSave, WritesAPlanOfAnotherEncodingInUtf8) {
  const std::string utf8 =
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plan><tables><tableitem "
      "id=\"1\">Caf\u00E9</tableitem></tables></plan>\n";
  WriteText(file,
            "<?xml version='1.0' encoding='windows-1252'?><plan><tables><tableitem "
            "id='1'>Caf\xE9</tableitem></tables>"
            "</plan>");
  PlanFile::Open(file)->Save();
  EXPECT_EQ(ReadText(file), utf8);

  std::string utf16 = "\xFF\xFE";
  for (const char character :
       std::string_view("<plan><tables><tableitem id='1'>Caf\xE9</tableitem></tables></plan>")) {
    utf16 += {character, '\0'};
  }
  WriteText(file, utf16);
  PlanFile::Open(file)->Save();
  EXPECT_EQ(ReadText(file), utf8);
}

TEST_F(PlanSave, CanBeRepeatedAndKeepsThePreviousVersion) {
  const auto plan = PlanFile::Open(file);
  for (int version = 1; version <= 3; ++version) {
    MarkVersion(*plan, version);
    plan->Save();
  }
  EXPECT_EQ(WholeVersion(file), 3);
  EXPECT_EQ(WholeVersion(folder / "garden.kpf.bak"), 2);
}

TEST_F(PlanSave, KeepsThePermissions) {
  for (const mode_t mode : {0600U, 0640U, 0664U, 0606U}) {
    ASSERT_EQ(::chmod(file.c_str(), mode), 0);
    const auto plan = PlanFile::Open(file);
    MarkVersion(*plan, 1);
    plan->Save();
    EXPECT_EQ(ModeOf(file), mode);
    EXPECT_EQ(ModeOf(folder / "garden.kpf.bak"), mode);
  }
}

TEST_F(PlanSave, KeepsTheOwnerIfPermitted) {
  if (::chown(file.c_str(), 1234, 5678) != 0) GTEST_SKIP() << "only root can change the owner of a file";
  PlanFile::Open(file)->Save();
  struct stat status {};
  ASSERT_EQ(::stat(file.c_str(), &status), 0);
  EXPECT_EQ(status.st_uid, 1234U);
  EXPECT_EQ(status.st_gid, 5678U);
}

TEST_F(PlanSave, NeverMakesTheNewVersionMoreReadableThanTheOld) {
  ASSERT_EQ(::chmod(file.c_str(), 0600), 0);
  mode_t widest = 0;
  StepOperations operations([&](Step, Moment) -> std::error_code {
    if (fs::exists(folder / "garden.kpf.tmp")) widest |= ModeOf(folder / "garden.kpf.tmp");
    return {};
  });
  PlanFile::Open(file)->Save(operations);
  EXPECT_EQ(widest, 0600U);
}

TEST_F(PlanSave, ReplacesTheTargetOfASymbolicLink) {
  fs::create_directory(folder / "links");
  fs::create_symlink("../garden.kpf", folder / "links" / "plan.kpf");
  const auto plan = PlanFile::Open(folder / "links" / "plan.kpf");
  MarkVersion(*plan, 1);
  EXPECT_EQ(plan->Save(), folder / "garden.kpf.bak");
  EXPECT_TRUE(fs::is_symlink(folder / "links" / "plan.kpf"));
  EXPECT_FALSE(fs::is_symlink(file));
  EXPECT_EQ(WholeVersion(file), 1);
  EXPECT_EQ(std::distance(fs::directory_iterator(folder / "links"), fs::directory_iterator()), 1);
}

TEST_F(PlanSave, ReplacesTheTemporaryFileOfAKilledImport) {
  WriteText(folder / "garden.kpf.tmp", "half a pl");
  WriteText(folder / "garden.kpf.bak.tmp", "half a backup");
  const auto plan = PlanFile::Open(file);
  MarkVersion(*plan, 1);
  plan->Save();
  EXPECT_EQ(WholeVersion(file), 1);
  EXPECT_EQ(NamesInFolder(), (std::vector<std::string>{"garden.kpf", "garden.kpf.bak"}));
}

TEST_F(PlanSave, DoesNotFollowALinkWithTheTemporaryName) {
  WriteText(folder / "other", "precious");
  fs::create_symlink("other", folder / "garden.kpf.tmp");
  PlanFile::Open(file)->Save();
  EXPECT_EQ(ReadText(folder / "other"), "precious");
  EXPECT_FALSE(fs::is_symlink(file));
}

TEST_F(PlanSave, CopiesThePreviousVersionWithoutHardLinks) {
  class OneNameOnly : public files::SystemFileOperations {
    std::error_code AddName(const fs::path& /*file*/, const fs::path& /*name*/) override {
      return std::make_error_code(std::errc::operation_not_permitted);
    }
  } operations;
  ASSERT_EQ(::chmod(file.c_str(), 0640), 0);
  const auto plan = PlanFile::Open(file);
  MarkVersion(*plan, 1);
  plan->Save(operations);
  EXPECT_EQ(WholeVersion(file), 1);
  EXPECT_EQ(ReadText(folder / "garden.kpf.bak"), SmallPlanText());
  EXPECT_EQ(ModeOf(folder / "garden.kpf.bak"), 0640U);
  EXPECT_EQ(NamesInFolder(), (std::vector<std::string>{"garden.kpf", "garden.kpf.bak"}));
}

// Watches the events of one name in a folder.
class NameWatch {
 public:
  explicit NameWatch(fs::path watched) : watched_(std::move(watched)), queue_(::inotify_init1(IN_NONBLOCK)) {
    EXPECT_GE(::inotify_add_watch(queue_.Number(), watched_.parent_path().c_str(), reported), 0);
  }

  std::vector<std::uint32_t> Events() {
    alignas(inotify_event) std::array<char, 65536> events{};
    const ssize_t length = ::read(queue_.Number(), events.data(), events.size());
    std::vector<std::uint32_t> ofName;
    for (ssize_t at = 0; at < length;) {
      const auto* event = reinterpret_cast<const inotify_event*>(events.data() + at);
      if (event->name == watched_.filename().string()) ofName.push_back(event->mask);
      at += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
    }
    return ofName;
  }

 private:
  static constexpr std::uint32_t reported = IN_CREATE | IN_DELETE | IN_MODIFY | IN_MOVED_FROM | IN_MOVED_TO;

  fs::path watched_;
  files::FileDescriptor queue_;
};

TEST_F(PlanSave, NeitherRemovesThePlanNorWritesInPlace) {
  const auto plan = PlanFile::Open(file);
  MarkVersion(*plan, 1);
  NameWatch watch(file);
  plan->Save();
  EXPECT_EQ(watch.Events(), (std::vector<std::uint32_t>{IN_MOVED_TO}));
}

TEST_F(PlanSave, ReplacesAnEarlierBakAtomically) {
  const auto plan = PlanFile::Open(file);
  plan->Save();
  NameWatch watch(folder / "garden.kpf.bak");
  plan->Save();
  EXPECT_EQ(watch.Events(), (std::vector<std::uint32_t>{IN_MOVED_TO}));
}

TEST_F(PlanSave, SyncsTheContentsBeforeTheRenameAndTheFolderAfterIt) {
  std::vector<Step> steps;
  StepOperations operations([&](Step step, Moment moment) -> std::error_code {
    if (moment == Moment::Before) steps.push_back(step);
    return {};
  });
  PlanFile::Open(file)->Save(operations);
  EXPECT_EQ(steps,
            (std::vector<Step>{Step::CheckWritable, Step::CreateTemporary, Step::KeepOwnerAndMode,
                               Step::Write, Step::Sync, Step::KeepPrevious, Step::Rename, Step::SyncFolder}));
}

}  // namespace
}  // namespace krnqb::plan_file
