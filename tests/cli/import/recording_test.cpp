#include <gtest/gtest.h>

#include "cli/import/recording_editor.h"
#include "qbxml/request_catalogue.h"

namespace krnqb::cli {
namespace {

using tests::ProgramRun;
using tests::ReadText;
using tests::RecordingLines;
using tests::RunProgram;
using tests::Workplace;
using tests::WriteText;
using Words = std::vector<std::string>;

TEST(ImportRecording, HoldsTheWholeExchangeInOrder) {
  const Workplace place;
  const std::string company = place.Nursery();
  const ProgramRun run = RunProgram(
      place.ImportArguments("ald.kpf", {"--expenses", "--income", "--record", place / "exchange.jsonl"}));
  ASSERT_EQ(run.code, 0) << run.err;
  const auto lines = RecordingLines(place / "exchange.jsonl");
  ASSERT_GE(lines.size(), 1U);
  EXPECT_EQ(lines[0].dump(),
            R"({"exchange":1,"company":")" + company +
                R"(","major":1,"minor":1,"import":{"start":"2002-01","product":"ald","amounts":"none",)"
                R"("expenses":true,"income":true,"past_performance":false}})");
  Words requests;
  for (std::size_t index = 1; index < lines.size(); ++index) requests.push_back(lines[index].at("request"));
  // Only the import's own requests: opening the company sends none.
  EXPECT_EQ(requests, (Words{BuildRequest(101, {}, {}), BuildRequest(100, {}, {}), BuildRequest(100, {}, {}),
                             BuildRequest(4, {}, {}), BuildRequest(1, {}, {})}));
}

TEST(ImportRecording, LeavesOutTheCompanyCheckWhenTheFiscalMonthIsGiven) {
  const Workplace place;
  place.Nursery();
  RunProgram(place.ImportArguments(
      "ald.kpf", {"--income", "--fiscal-month", "April", "--record", place / "exchange.jsonl"}));
  for (const auto& line : RecordingLines(place / "exchange.jsonl")) {
    EXPECT_EQ(line.value("request", "").find("CompanyQueryRq"), std::string::npos);
  }
}

struct RoundTrip {
  std::string plan;
  std::string processorVersion;
};

void PrintTo(const RoundTrip& trip, std::ostream* out) {
  *out << trip.plan << ", processor " << trip.processorVersion;
}

class RoundTrips : public testing::TestWithParam<RoundTrip> {};

TEST_P(RoundTrips, ProduceTheSamePlanByteForByte) {
  const Workplace place;
  place.NurseryYear(GetParam().processorVersion);
  const std::string plan = place / GetParam().plan;
  const std::string replayed = place / "replayed.kpf";
  WriteText(replayed, ReadText(plan));
  Words contents{"--expenses", "--income", "--balances", "all", "--growth-income", "5", "--quiet"};
  contents.push_back(GetParam().plan == "bri.kpf" ? "--select-all-expenses" : "--past-performance");
  Words recording = place.ImportArguments(GetParam().plan, contents);
  recording.insert(recording.end(), {"--record", place / "exchange.jsonl"});
  ASSERT_EQ(RunProgram(recording).code, 0);
  Words replaying{"import", "--plan", replayed, "--replay", place / "exchange.jsonl"};
  replaying.insert(replaying.end(), contents.begin(), contents.end());
  // The real clock makes the save stamps differ; nothing else may differ.
  const ProgramRun run = RunProgram(replaying, {.clock = nullptr, .errorIsTerminal = false});
  ASSERT_EQ(run.code, 0) << run.err;
  EXPECT_NE(ReadText(replayed), ReadText(plan + ".bak"));
  EXPECT_EQ(tests::WithoutStamps(ReadText(replayed)), tests::WithoutStamps(ReadText(plan)));
}

INSTANTIATE_TEST_SUITE_P(ProductsAndPaths, RoundTrips,
                         testing::Values(RoundTrip{"ald.kpf", "1.1"}, RoundTrip{"bri.kpf", "1.1"},
                                         RoundTrip{"cor.kpf", "1.1"}, RoundTrip{"ald.kpf", "2.0"},
                                         RoundTrip{"bri.kpf", "2.0"}, RoundTrip{"cor.kpf", "2.0"}));

TEST(ImportRecording, CanBeRecordedFromAReplay) {
  const Workplace place;
  place.Nursery();
  const Words first =
      place.ImportArguments("ald.kpf", {"--income", "--dry-run", "--record", place / "first.jsonl"});
  ASSERT_EQ(RunProgram(first).code, 0);
  const ProgramRun run = RunProgram({"import", "--replay", place / "first.jsonl", "--plan", place / "ald.kpf",
                                     "--income", "--dry-run", "--record", place / "second.jsonl"});
  ASSERT_EQ(run.code, 0) << run.err;
  EXPECT_EQ(ReadText(place / "second.jsonl"), ReadText(place / "first.jsonl"));
}

TEST(ImportRecording, NamesTheRecordingInTheAnnouncement) {
  const Workplace place;
  place.Nursery();
  RunProgram(
      place.ImportArguments("ald.kpf", {"--income", "--dry-run", "--record", place / "exchange.jsonl"}));
  const ProgramRun run =
      RunProgram({"import", "--replay", place / "exchange.jsonl", "--plan", place / "ald.kpf", "--income"});
  EXPECT_EQ(run.code, 0);
  EXPECT_EQ(run.out.find("Importing income accounts from the recording " + (place / "exchange.jsonl") + ", "),
            0U)
      << run.out;
}

TEST(ImportRecording, IsReadableByItsOwnerAlone) {
  const Workplace place;
  place.Nursery();
  const std::string journal = place / "left-out.jsonl";
  const std::string recording = place / "exchange.jsonl";
  ASSERT_EQ(RunProgram(place.ImportArguments(
                           "ald.kpf", {"--income", "--dry-run", "--record", recording, "--journal", journal}))
                .code,
            0);
  for (const std::string& file : {recording, journal}) {
    EXPECT_EQ(std::filesystem::status(file).permissions(), std::filesystem::perms(0600)) << file;
  }
}

TEST(ImportRecording, ReportsAFileThatCannotBeReplayed) {
  const Workplace place;
  const auto replay = [&](const std::string& file) {
    const ProgramRun run = RunProgram({"import", "--replay", file, "--plan", place / "ald.kpf", "--income"});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.out, "");
    return run.err;
  };
  EXPECT_EQ(replay(place / "none.jsonl"),
            "krnqb: opening the recording failed: " + (place / "none.jsonl") +
                ": No such file or directory; check the path and its permissions\n");
  WriteText(place / "other.jsonl",
            "{\"exchange\":1,\"company\":\"c\",\"major\":1,\"minor\":1}\n{\"request\":\"r\"}\n");
  const std::string message = replay(place / "other.jsonl");
  EXPECT_EQ(message.find("krnqb: opening the recording failed: " + (place / "other.jsonl") + ", line 2: "),
            0U)
      << message;
  constexpr std::string_view advice = "; check the path, or record the exchange again with --record\n";
  EXPECT_TRUE(message.ends_with(advice)) << message;
  WriteText(place / "letter.txt", "Dear reader,\n");
  EXPECT_EQ(replay(place / "letter.txt"), "krnqb: opening the recording failed: " + (place / "letter.txt") +
                                              " is not a recording: line 1 is not JSON" +
                                              std::string(advice));
}

TEST(ImportRecording, IsNeitherAFolderNorADevice) {
  const Workplace place;
  for (const auto& [file, reason] :
       {std::pair<std::string, std::string>{place.Folder().string(), "Is a directory"},
        std::pair<std::string, std::string>{"/dev/zero", "it is a device"}}) {
    const ProgramRun run = RunProgram({"import", "--replay", file, "--plan", place / "ald.kpf", "--income"});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.err, "krnqb: opening the recording failed: " + file + ": " + reason +
                           "; check the path and its permissions\n");
  }
}

TEST(ImportRecording, ReportsAFileThatCannotBeWritten) {
  const Workplace place;
  place.Nursery();
  const std::string before = ReadText(place / "ald.kpf");
  const ProgramRun folder =
      RunProgram(place.ImportArguments("ald.kpf", {"--income", "--record", place / "no/folder.jsonl"}));
  EXPECT_EQ(folder.code, 1);
  EXPECT_EQ(folder.err,
            "krnqb: recording failed: " + (place / "no/folder.jsonl") +
                ": No such file or directory; check the path and the permissions of its folder\n");
  const ProgramRun full = RunProgram(place.ImportArguments("ald.kpf", {"--income", "--record", "/dev/full"}));
  EXPECT_EQ(full.code, 1);
  EXPECT_EQ(full.err,
            "krnqb: recording failed: /dev/full could not be written completely: No space left on device; "
            "free some "
            "disk space and try again, or import without --record\n");
  EXPECT_EQ(ReadText(place / "ald.kpf"), before);
}

TEST(ImportRecording, NeverReplacesAFileThatTheImportNeeds) {
  const Workplace place;
  const std::string company = place.Nursery();
  const std::string before = ReadText(place / "ald.kpf");
  for (const std::string& option : {"--plan " + (place / "ald.kpf"), "--company " + company}) {
    const std::string file = option.substr(option.find(' ') + 1);
    const ProgramRun run = RunProgram(place.ImportArguments("ald.kpf", {"--income", "--record", file}));
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(run.err, "krnqb: wrong usage: --record " + file + " and " + option +
                           " are the same file; give another file\n");
  }
  EXPECT_EQ(ReadText(place / "ald.kpf"), before);
  EXPECT_EQ(RunProgram({"company", "info", company}).code, 0);
}

}  // namespace
}  // namespace krnqb::cli
