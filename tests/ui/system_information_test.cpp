#include "ui/system_information.h"

#include <gtest/gtest.h>

#include "fakes/memory_files.h"
#include "fakes/memory_registry.h"

namespace krnqb::ui {
namespace {

const char* const toolKey = "SOFTWARE\\Microsoft\\Shared Tools\\MSINFO";
const char* const folderKey = "SOFTWARE\\Microsoft\\Shared Tools Location";

class RecordingStarter : public ProgramStarter {
 public:
  void Start(const std::string& path) override {
    started.push_back(path);
    if (refuses) throw Error(error_number::pathNotFound);
  }

  std::vector<std::string> started;
  bool refuses = false;
};

struct SystemInformationTest : testing::Test {
  SystemInformation System() const { return {registry, files, programs}; }

  std::shared_ptr<fakes::MemoryRegistry> registry = std::make_shared<fakes::MemoryRegistry>();
  std::shared_ptr<fakes::MemoryFiles> files = std::make_shared<fakes::MemoryFiles>();
  std::shared_ptr<RecordingStarter> programs = std::make_shared<RecordingStarter>();
};

TEST_F(SystemInformationTest, StartsTheToolThatTheRegistryNames) {
  registry->values[{toolKey, "PATH"}] = "C:\\Tools\\info.exe";
  registry->values[{folderKey, "MSINFO"}] = "C:\\Shared";
  files->files = {"C:\\Shared\\MSINFO32.EXE"};
  EXPECT_TRUE(StartSysInfo(System()));
  EXPECT_EQ(programs->started, std::vector<std::string>{"C:\\Tools\\info.exe"});
}

TEST_F(SystemInformationTest, OtherwiseStartsTheToolInTheSharedFolder) {
  registry->values[{folderKey, "MSINFO"}] = "C:\\Shared";
  files->files = {"C:\\Shared\\MSINFO32.EXE"};
  EXPECT_TRUE(StartSysInfo(System()));
  EXPECT_EQ(programs->started, std::vector<std::string>{"C:\\Shared\\MSINFO32.EXE"});
}

TEST_F(SystemInformationTest, StartsNothingIfTheSharedFolderHasNoTool) {
  registry->values[{folderKey, "MSINFO"}] = "C:\\Shared";
  EXPECT_FALSE(StartSysInfo(System()));
  EXPECT_TRUE(programs->started.empty());
}

TEST_F(SystemInformationTest, StartsNothingWhenTheRegistryNamesNothing) {
  EXPECT_FALSE(StartSysInfo(System()));
  EXPECT_TRUE(programs->started.empty());
}

TEST_F(SystemInformationTest, ReportsAToolThatCannotBeStarted) {
  registry->values[{toolKey, "PATH"}] = "C:\\Gone\\info.exe";
  programs->refuses = true;
  EXPECT_FALSE(StartSysInfo(System()));
}

}  // namespace
}  // namespace krnqb::ui
